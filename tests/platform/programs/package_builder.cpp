#include "package_builder.h"

#include "support/zip_writer.h"

#include <tests/support/files.h>

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtEndian>
#include <sqlite3.h>
#include <stdexcept>

namespace tessaly::tests {

namespace {

void pack(server::ZipWriter& zip, const QString& name, QByteArray content) {
    QBuffer source(&content);
    QBuffer packed;
    source.open(QIODevice::ReadOnly);
    packed.open(QIODevice::ReadWrite);
    const server::Compressed compressed = server::compress(source, packed);
    packed.seek(0);
    zip.addCompressed(name, compressed, packed);
}

/// The archive's directory says where its files are, its end where the directory is.
void moveOffsets(QByteArray& package, quint32 by) {
    const auto move = [by](char* offset) {
        qToLittleEndian(qFromLittleEndian<quint32>(offset) + by, offset);
    };
    char* const end = package.data() + package.size() - 22;
    char* record = package.data() + qFromLittleEndian<quint32>(end + 16);
    while (record < end) {
        move(record + 42);
        record += 46 + qFromLittleEndian<quint16>(record + 28) + qFromLittleEndian<quint16>(record + 30) +
                  qFromLittleEndian<quint16>(record + 32);
    }
    move(end + 16);
}

QByteArray littleEndian(quint32 number) {
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

} // namespace

QByteArray makeDatabase(const QByteArray& sql) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("database"));
    sqlite3* handle = nullptr;
    sqlite3_open(path.toUtf8().constData(), &handle);
    const int result = sqlite3_exec(handle, sql.constData(), nullptr, nullptr, nullptr);
    sqlite3_close(handle);
    if (result != SQLITE_OK)
        throw std::runtime_error("can not make a database");
    return readFile(path);
}

QByteArray makeDictionary(const QString& title, int entries, const std::function<QString()>& definition) {
    QByteArray sql =
        "BEGIN; CREATE TABLE metadata (key TEXT PRIMARY KEY, value TEXT NOT NULL);"
        "CREATE TABLE entries (headword TEXT NOT NULL, definition TEXT NOT NULL, folded TEXT NOT NULL);"
        "CREATE INDEX entries_folded ON entries (folded);"
        "INSERT INTO metadata VALUES ('title', '" +
        title.toUtf8() + "');";
    for (int i = 0; i < entries; ++i) {
        const QByteArray word = "word" + QByteArray::number(i);
        sql +=
            "INSERT INTO entries VALUES ('" + word + "', '" + definition().toUtf8() + "', '" + word + "');";
    }
    return makeDatabase(sql + "COMMIT;");
}

void PackageBuilder::add(const QString& name, const QByteArray& content) {
    const QByteArray sha256 = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
    entries.append({name, content});
    listed.append(QJsonObject{{QStringLiteral("name"), name},
                              {QStringLiteral("size"), content.size()},
                              {QStringLiteral("sha256"), QString::fromLatin1(sha256)}});
}

void PackageBuilder::addBomb(quint32 size) {
    add(QStringLiteral("bomb.tsdict"), QByteArray(size, '\0'));
    relist(QStringLiteral("size"), 1000);
    bombSize = size;
}

void PackageBuilder::relist(const QString& key, const QJsonValue& value) {
    QJsonObject file = listed.last().toObject();
    file[key] = value;
    listed.replace(listed.size() - 1, file);
}

QByteArray PackageBuilder::build() const {
    if (bytes)
        return *bytes;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("package"));
    server::ZipWriter zip(path);
    const QJsonObject object{{QStringLiteral("package_id"), 7}, {QStringLiteral("files"), listed}};
    const QByteArray text = manifest.value_or(QJsonDocument(object).toJson());
    if (!text.isNull())
        pack(zip, QStringLiteral("manifest.json"), text);
    for (const auto& [name, content, isLink] : entries)
        isLink ? zip.addSymlink(name, QString::fromUtf8(content)) : pack(zip, name, content);
    zip.commit();
    QByteArray package = readFile(path);
    if (bombSize > 0)
        package.replace(littleEndian(bombSize), littleEndian(1000));
    return package;
}

void PackageBuilder::write(const QString& hostPath) const {
    QByteArray package = build();
    if (hole > 0)
        moveOffsets(package, hole);
    QFile file(hostPath);
    if (!file.open(QIODevice::WriteOnly) || !file.seek(hole) || file.write(package) != package.size())
        throw std::runtime_error("can not write a package");
}

} // namespace tessaly::tests
