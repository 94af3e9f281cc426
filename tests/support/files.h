#pragma once

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>

/// Null if it can't be read.
inline QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Makes the folders on the way to it, too.
inline void writeFile(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        qFatal("can not write %s", qPrintable(path));
}

/// Content by name below the folder; hidden files too, and "folder" for folders.
inline QMap<QString, QByteArray> folderContent(const QString& folder) {
    QMap<QString, QByteArray> found;
    QDirIterator entry(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (entry.hasNext()) {
        const QString path = entry.next();
        found[QDir(folder).relativeFilePath(path)] = QFileInfo(path).isDir() ? "folder" : readFile(path);
    }
    return found;
}
