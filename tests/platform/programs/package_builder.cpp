#include "package_builder.h"

#include <tests/support/files.h>

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtEndian>
#include <archive.h>
#include <archive_entry.h>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace tessaly::tests {

namespace {

void require(bool success, const char* what) {
    if (!success)
        throw std::runtime_error(what);
}

void pack(archive* handle, const PackageBuilder::Entry& entry) {
    const std::unique_ptr<archive_entry, void (*)(archive_entry*)> header(archive_entry_new(),
                                                                          archive_entry_free);
    archive_entry_set_pathname_utf8(header.get(), entry.name.toUtf8().constData());
    archive_entry_set_mode(header.get(), unsigned(entry.kind) | 0644);
    if (entry.kind == PackageBuilder::Kind::File)
        archive_entry_set_size(header.get(), entry.content.size());
    if (entry.kind == PackageBuilder::Kind::Link)
        archive_entry_set_symlink_utf8(header.get(), entry.content.constData());
    require(archive_write_header(handle, header.get()) == ARCHIVE_OK, "can not pack an entry");
    if (entry.kind == PackageBuilder::Kind::File)
        archive_write_data(handle, entry.content.constData(), std::size_t(entry.content.size()));
}

la_ssize_t append(archive*, void* target, const void* bytes, std::size_t count) {
    static_cast<QByteArray*>(target)->append(static_cast<const char*>(bytes), qsizetype(count));
    return la_ssize_t(count);
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
    require(result == SQLITE_OK, "can not make a database");
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
    const QJsonObject object{{QStringLiteral("package_id"), 7}, {QStringLiteral("files"), listed}};
    const QByteArray text = manifest.value_or(QJsonDocument(object).toJson());

    QByteArray package;
    const std::unique_ptr<archive, int (*)(archive*)> handle(archive_write_new(), archive_write_free);
    archive_write_set_format_zip(handle.get());
    archive_write_set_format_option(handle.get(), "zip", "hdrcharset", "UTF-8");
    archive_write_set_bytes_in_last_block(handle.get(), 1);
    archive_write_open(handle.get(), &package, nullptr, append, nullptr);
    if (!text.isNull())
        pack(handle.get(), {QStringLiteral("manifest.json"), text});
    for (const Entry& entry : entries)
        pack(handle.get(), entry);
    require(archive_write_close(handle.get()) == ARCHIVE_OK, "can not close the package");
    if (bombSize > 0)
        package.replace(littleEndian(bombSize), littleEndian(1000));
    return package;
}

void PackageBuilder::write(const QString& hostPath) const {
    writeFile(hostPath, build());
}

} // namespace tessaly::tests
