#pragma once

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QString>
#include <simulator/fixture/test_device.h>

namespace tessaly::tests {

/// What the status file says; -1000 for a key that isn't there.
struct Status {
    int code = 0;
    int progress = 0;
};

/// A device with the real installer on it.
class InstallerDevice {
public:
    [[nodiscard]] QString packagePath() const { return path("/mnt/ext1/Downloads/dicts_1.tsi"); }
    [[nodiscard]] QString dictionary(const QString& name) const {
        return path("/mnt/ext1/system/dictionaries/") + name;
    }
    [[nodiscard]] QString path(const char* devicePath) const { return m_device.path(devicePath); }

    /// Starts the installer on the package; its log comes from stderr.
    void start(QProcess& process, const QString& packageName = QStringLiteral("/dicts_1.tsi")) const;
    /// The exit status of a whole run.
    int run(const QString& packageName = QStringLiteral("/dicts_1.tsi"), QByteArray* log = nullptr) const;

    [[nodiscard]] Status status() const;

    /// All files and folders, hidden ones too, where the installer writes, with their content.
    [[nodiscard]] QMap<QString, QByteArray> content() const;

private:
    fixture::TestDevice m_device;
};

} // namespace tessaly::tests
