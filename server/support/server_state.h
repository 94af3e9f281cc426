#pragma once

#include <QHash>
#include <QString>

namespace tessaly::server {

/// What has to stay the same from start to start: the port, each dictionary's record number and which package
/// numbers are spent. One JSON file, replaced in one step at every change. For one thread.
class ServerState {
public:
    /// Reads the file if there is one; throws Failure if it is damaged, since new numbers would make devices
    /// take one dictionary for another.
    explicit ServerState(const QString& path);

    quint16 port() const { return m_port; }
    void setPort(quint16 port);

    /// The record number of the dictionary with this file name, assigned at the first call. Call save() after
    /// a series of these.
    int recordNumber(const QString& fileName);

    /// A package number that was never given out. Saves.
    int takePackageNumber();

    /// Throws Failure.
    void save() const;

private:
    QString m_path;
    quint16 m_port = 0;
    int m_nextRecord = 1;
    int m_nextPackage = 1;
    QHash<QString, int> m_records;
};

} // namespace tessaly::server
