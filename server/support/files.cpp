#include "support/files.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace tessaly::server {

Failure::Failure(const char* action, const QFileDevice& file)
    : Failure(QStringLiteral("cannot %1 %2: %3")
                  .arg(QLatin1String(action), file.fileName(), file.errorString())) {}

void makeDirectory(const QString& path) {
    if (!QDir().mkpath(path))
        throw Failure(QStringLiteral("cannot create the directory %1").arg(path));
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure("read", file);
    return file.readAll();
}

void replaceFile(const QString& path, const QByteArray& content) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        throw Failure("write", file);
}

void removeOthers(const QString& directory, const QStringList& wanted) {
    QDir dir(directory);
    const QStringList present = dir.entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : present) {
        if (!wanted.contains(name))
            dir.remove(name);
    }
}

QString fileStamp(const QStringList& paths) {
    QStringList parts;
    for (const QString& path : paths) {
        const QFileInfo info(path);
        parts << QString::number(info.size()) << QString::number(info.lastModified().toMSecsSinceEpoch());
    }
    return parts.join(u':');
}

QByteArray sha256(const QByteArray& data) {
    return QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex();
}

QString fingerprint(const QStringList& texts) {
    return QString::fromLatin1(sha256(texts.join(u'\n').toUtf8()).left(16));
}

} // namespace tessaly::server
