#pragma once

#include <QJsonObject>
#include <QString>

namespace tessaly::server {

/// What has to stay the same from start to start: the port, each dictionary's record number and which package
/// numbers are spent. One JSON file, replaced in one step at every change. For one thread.
class ServerState {
public:
    /// Reads the file if there is one; throws Failure if it is damaged, since new numbers would make devices
    /// take one dictionary for another.
    explicit ServerState(const QString& path);

    quint16 port() const { return static_cast<quint16>(m_state.value(QLatin1String("port")).toInt()); }
    void setPort(quint16 port);

    /// The record number of the dictionary with this file name, assigned at the first call. Call save() after
    /// a series of these.
    int recordNumber(const QString& fileName);

    /// A package number that was never given out. Saves.
    int takePackageNumber() {
        const int number = takeNumber(QLatin1String("next_package"));
        save();
        return number;
    }

    /// Throws Failure.
    void save() const;

private:
    int takeNumber(QLatin1String counter);

    const QString m_path;
    QJsonObject m_state;
};

} // namespace tessaly::server
