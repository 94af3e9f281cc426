#include "support/zip_writer.h"

#include "support/failure.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <archive.h>
#include <archive_entry.h>

#include <array>

namespace tessaly::server {

namespace {

struct FreeEntry {
    void operator()(archive_entry* entry) const { archive_entry_free(entry); }
};
using Entry = std::unique_ptr<archive_entry, FreeEntry>;

Entry makeEntry(const QString& name, unsigned int type, qint64 size) {
    Entry entry(archive_entry_new());
    archive_entry_set_pathname_utf8(entry.get(), name.toUtf8().constData());
    archive_entry_set_filetype(entry.get(), type);
    archive_entry_set_perm(entry.get(), 0644);
    archive_entry_set_size(entry.get(), size);
    return entry;
}

} // namespace

void ZipWriter::Free::operator()(archive* writer) const {
    archive_write_free(writer);
}

ZipWriter::ZipWriter(const QString& path)
    : m_path(path)
    , m_archive(archive_write_new()) {
    check(archive_write_set_format_zip(m_archive.get()));
    check(archive_write_set_options(m_archive.get(), "zip:compression=deflate,zip:compression-level=6"));
    check(archive_write_set_options(m_archive.get(), "zip:hdrcharset=UTF-8"));
    check(archive_write_open_filename(m_archive.get(), QFile::encodeName(path).constData()));
}

void ZipWriter::addData(const QString& name, const QByteArray& data) {
    check(archive_write_header(m_archive.get(), makeEntry(name, AE_IFREG, data.size()).get()));
    write(data.constData(), data.size());
}

void ZipWriter::addFile(const QString& name, const QString& path, std::optional<qint64> flippedByte) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
    const Entry entry = makeEntry(name, AE_IFREG, file.size());
    archive_entry_set_mtime(entry.get(), QFileInfo(file).lastModified().toSecsSinceEpoch(), 0);
    check(archive_write_header(m_archive.get(), entry.get()));

    std::array<char, 262144> buffer{};
    qint64 position = 0;
    while (position < file.size()) {
        const qint64 count = file.read(buffer.data(), buffer.size());
        if (count <= 0)
            throw Failure(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
        if (flippedByte && *flippedByte >= position && *flippedByte < position + count) {
            char& byte = buffer.at(static_cast<std::size_t>(*flippedByte - position));
            byte = static_cast<char>(~byte);
        }
        write(buffer.data(), count);
        position += count;
    }
}

void ZipWriter::addSymlink(const QString& name, const QString& target) {
    const Entry entry = makeEntry(name, AE_IFLNK, 0);
    archive_entry_set_symlink_utf8(entry.get(), target.toUtf8().constData());
    check(archive_write_header(m_archive.get(), entry.get()));
}

void ZipWriter::close() {
    check(archive_write_close(m_archive.get()));
}

void ZipWriter::check(int result) const {
    // A warning, such as a name that can't be written as it is, would make a package that nobody can use.
    if (result < ARCHIVE_OK)
        throw Failure(QStringLiteral("cannot write %1: %2")
                          .arg(m_path, QString::fromLocal8Bit(archive_error_string(m_archive.get()))));
}

void ZipWriter::write(const char* data, qint64 size) {
    if (archive_write_data(m_archive.get(), data, static_cast<std::size_t>(size)) != size)
        check(ARCHIVE_FATAL);
}

} // namespace tessaly::server
