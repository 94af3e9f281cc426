#include "support/zip_writer.h"

#include "support/files.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>

#include <limits>
#include <memory>
#include <sys/stat.h>
#include <zlib.h>

namespace tessaly::server {

namespace {

constexpr qint64 pieceSize = 262144;

/// Numbers as a zip has them.
template<typename... Numbers>
QByteArray fields(Numbers... numbers) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    (stream << ... << numbers);
    return bytes;
}

} // namespace

Compressed compress(QIODevice& content, QIODevice& target, const std::stop_token& stop) {
    z_stream stream{};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    const std::unique_ptr<z_stream, int (*)(z_stream*)> end(&stream, deflateEnd);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray out(pieceSize, Qt::Uninitialized);
    Compressed result;
    for (bool isLast = false; !isLast;) {
        if (stop.stop_requested())
            throw Failure(QStringLiteral("stopped"));
        QByteArray in = content.read(pieceSize);
        isLast = in.isEmpty();
        hash.addData(in);
        stream.next_in = reinterpret_cast<Bytef*>(in.data());
        stream.avail_in = static_cast<uInt>(in.size());
        result.crc = static_cast<quint32>(crc32(result.crc, stream.next_in, stream.avail_in));
        result.size += in.size();
        do {
            stream.next_out = reinterpret_cast<Bytef*>(out.data());
            stream.avail_out = static_cast<uInt>(out.size());
            deflate(&stream, isLast ? Z_FINISH : Z_NO_FLUSH);
            const qint64 count = out.size() - stream.avail_out;
            if (target.write(out.constData(), count) != count)
                throw Failure(QStringLiteral("cannot write: %1").arg(target.errorString()));
            result.packedSize += count;
        } while (stream.avail_out == 0);
    }
    result.sha256 = hash.result().toHex();
    return result;
}

ZipWriter::ZipWriter(const QString& path)
    : m_file(path) {
    if (!m_file.open(QIODevice::WriteOnly))
        throw Failure("write", m_file);
}

void ZipWriter::addData(const QString& name, const QByteArray& data) {
    addStored(name, data, S_IFREG | 0644);
}

void ZipWriter::addSymlink(const QString& name, const QString& target) {
    addStored(name, target.toUtf8(), S_IFLNK | 0777);
}

void ZipWriter::addFile(const QString& name, const QString& path) {
    QFile file(path);
    QBuffer packed;
    if (!file.open(QIODevice::ReadOnly) || !packed.open(QIODevice::ReadWrite))
        throw Failure("read", file);
    const Compressed content = compress(file, packed);
    packed.seek(0);
    addCompressed(name, content, packed);
}

void ZipWriter::addCompressed(const QString& name, const Compressed& content, QIODevice& packed) {
    addHeaders(name, Z_DEFLATED, content, S_IFREG | 0644);
    for (qint64 left = content.packedSize; left > 0;) {
        const QByteArray piece = packed.read(std::min(left, pieceSize));
        if (piece.isEmpty())
            throw Failure(QStringLiteral("cannot read %1: %2").arg(name, packed.errorString()));
        write(piece);
        left -= piece.size();
    }
}

void ZipWriter::addStored(const QString& name, const QByteArray& data, quint16 mode) {
    const auto* bytes = reinterpret_cast<const Bytef*>(data.constData());
    const auto crc = quint32(crc32(0, bytes, uInt(data.size())));
    addHeaders(name, 0, {crc, data.size(), data.size(), {}}, mode);
    write(data);
}

void ZipWriter::addHeaders(const QString& name, quint16 method, const Compressed& content, quint16 mode) {
    constexpr quint16 version = 20;
    constexpr quint16 unixVersion = 0x314; // says that the mode is a Unix one
    constexpr quint16 namesAreUtf8 = 0x800;
    constexpr quint32 midnightOf1980 = 0x210000;
    constexpr quint16 none = 0;
    if (std::max(content.size, m_size + content.packedSize) > std::numeric_limits<quint32>::max())
        throw Failure(QStringLiteral("%1 is too big for a zip").arg(name));
    const QByteArray utf8 = name.toUtf8();
    const QByteArray common =
        fields(version, namesAreUtf8, method, midnightOf1980, content.crc, quint32(content.packedSize),
               quint32(content.size), quint16(utf8.size()), none);
    m_directory += fields(quint32(0x02014b50), unixVersion) + common +
                   fields(none, none, none, quint32(mode) << 16, quint32(m_size)) + utf8;
    ++m_count;
    write(fields(quint32(0x04034b50)) + common + utf8);
}

void ZipWriter::commit() {
    const auto start = quint32(m_size);
    constexpr quint16 disk = 0;
    write(m_directory);
    write(fields(quint32(0x06054b50), disk, disk, m_count, m_count, quint32(m_directory.size()), start,
                 quint16(0)));
    if (!m_file.commit())
        throw Failure("write", m_file);
}

void ZipWriter::write(const QByteArray& data) {
    if (m_file.write(data) != data.size())
        throw Failure("write", m_file);
    m_hash.addData(data);
    m_size += data.size();
}

} // namespace tessaly::server
