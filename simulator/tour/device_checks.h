#pragma once

#include <QJsonArray>
#include <QMap>
#include <QString>
#include <string>

namespace tessaly::fixture {
class TestDevice;
}

namespace tessaly::tour {

/// The reader's dictionary as the settings have it, or empty.
std::string currentDictionary();
/// How many dictionaries there are, each of which opens; StepFailed otherwise.
int installedDictionaries();
/// The numbers of all of the server's dictionaries; StepFailed if it doesn't say.
QJsonArray numbersOffered();
/// How many of the server's dictionaries aren't installed; StepFailed if the server doesn't say.
int dictionariesToDownload();

/// What a user would miss or find too much after something failed: the dictionaries, the downloads, what the
/// installer leaves, and the reader's settings, each file with a checksum.
class DeviceSnapshot {
public:
    explicit DeviceSnapshot(const fixture::TestDevice& device);

    /// StepFailed naming a difference, unless the device is as it was.
    void requireSameNow(const fixture::TestDevice& device) const;

private:
    QMap<QString, QString> m_files;
};

} // namespace tessaly::tour
