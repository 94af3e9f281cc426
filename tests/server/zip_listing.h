#pragma once

#include <archive.h>
#include <archive_entry.h>

#include <QByteArray>
#include <QList>
#include <QString>

struct ZipEntry {
    QString name;
    QByteArray content;
    bool isLink = false;
};

/// The entries of a zip in their order; empty if it is damaged anywhere.
inline QList<ZipEntry> listZip(const QByteArray& zip) {
    QList<ZipEntry> entries;
    archive* reader = archive_read_new();
    archive_read_support_format_zip(reader);
    archive_entry* entry = nullptr;
    int result = archive_read_open_memory(reader, zip.constData(), static_cast<std::size_t>(zip.size()));
    while (result == ARCHIVE_OK && (result = archive_read_next_header(reader, &entry)) == ARCHIVE_OK) {
        ZipEntry read{QString::fromUtf8(archive_entry_pathname_utf8(entry)),
                      {},
                      archive_entry_filetype(entry) == AE_IFLNK};
        QByteArray piece(65536, Qt::Uninitialized);
        la_ssize_t count = 0;
        while ((count = archive_read_data(reader, piece.data(), static_cast<std::size_t>(piece.size()))) > 0)
            read.content.append(piece.constData(), count);
        if (count < 0)
            result = ARCHIVE_FATAL;
        entries << read;
    }
    archive_read_free(reader);
    return result == ARCHIVE_EOF ? entries : QList<ZipEntry>();
}
