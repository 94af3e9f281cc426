#pragma once

#include <QCryptographicHash>
#include <QSaveFile>

#include <stop_token>

namespace tessaly::server {

/// A content as a zip holds it: how to check it, and the number of bytes before and after compression.
struct Compressed {
    quint32 crc = 0;
    qint64 size = 0;
    qint64 packedSize = 0;
    QByteArray sha256; ///< of the content, hexadecimal
};

/// Compresses what is left in `content` to the end of `target`, as raw deflate data. Throws Failure, also
/// when asked to stop.
Compressed compress(QIODevice& content, QIODevice& target, const std::stop_token& stop = {});

/// Writes a zip file entry by entry, from contents that may have been compressed before: that takes ten times
/// as long as everything else. Everything throws Failure. The file appears as a whole, at commit(). Names are
/// written as given, whatever a reader may think of them. Up to 4 GB.
class ZipWriter {
public:
    explicit ZipWriter(const QString& path);

    void addData(const QString& name, const QByteArray& data);
    void addFile(const QString& name, const QString& path);
    void addSymlink(const QString& name, const QString& target);
    /// `packed` is read from its position on.
    void addCompressed(const QString& name, const Compressed& content, QIODevice& packed);

    void commit();

    // Of the whole zip, once committed.
    qint64 size() const { return m_size; }
    QByteArray sha256() const { return m_hash.result().toHex(); }

private:
    void addStored(const QString& name, const QByteArray& data, quint16 mode);
    void addHeaders(const QString& name, quint16 method, const Compressed& content, quint16 mode);
    void write(const QByteArray& data);

    QSaveFile m_file;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
    qint64 m_size = 0;
    QByteArray m_directory; ///< the zip's own, which comes last
    quint16 m_count = 0;
};

} // namespace tessaly::server
