#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <archive.h>
#include <archive_entry.h>

struct ZipEntry {
    QString name;
    QByteArray content;
    bool isLink = false;
};

/// The entries of a zip in their order, up to the first damaged one.
inline QList<ZipEntry> listZip(const QByteArray& zip) {
    QList<ZipEntry> entries;
    archive* const reader = archive_read_new();
    archive_read_support_format_zip(reader);
    archive_read_open_memory(reader, zip.constData(), std::size_t(zip.size()));
    archive_entry* entry = nullptr;
    while (archive_read_next_header(reader, &entry) == ARCHIVE_OK) {
        const bool isLink = archive_entry_filetype(entry) == AE_IFLNK;
        QByteArray content(isLink ? 0 : qsizetype(archive_entry_size(entry)), '\0');
        if (archive_read_data(reader, content.data(), std::size_t(content.size())) != content.size())
            break;
        entries.append({QString::fromUtf8(archive_entry_pathname_utf8(entry)), content, isLink});
    }
    archive_read_free(reader);
    return entries;
}
