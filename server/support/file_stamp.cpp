#include "support/file_stamp.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace tessaly::server {

QString fileStamp(const QStringList& paths) {
    QStringList parts;
    for (const QString& path : paths) {
        const QFileInfo info(path);
        parts << QString::number(info.size()) << QString::number(info.lastModified().toMSecsSinceEpoch());
    }
    return parts.join(u':');
}

QString fingerprint(const QStringList& texts) {
    const QByteArray all = texts.join(u'\n').toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(all, QCryptographicHash::Sha256).toHex().left(16));
}

void removeOthers(const QString& folder, const QStringList& wanted) {
    QDir dir(folder);
    const QStringList present = dir.entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : present) {
        if (!wanted.contains(name))
            dir.remove(name);
    }
}

} // namespace tessaly::server
