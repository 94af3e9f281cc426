#include "dictd/gzip_text.h"

#include "support/failure.h"

#include <QFile>

#include <zlib.h>

#include <algorithm>
#include <memory>

namespace tessaly::server {

namespace {

constexpr qsizetype maximumSize = 1 << 30;
constexpr qsizetype chunkSize = 1 << 20;

struct Close {
    void operator()(gzFile_s* file) const { gzclose(file); }
};

} // namespace

QByteArray readGzipText(const QString& path) {
    const std::unique_ptr<gzFile_s, Close> file(gzopen(QFile::encodeName(path).constData(), "rb"));
    if (!file)
        throw Failure(QStringLiteral("%1 can't be opened").arg(path));
    gzbuffer(file.get(), 1 << 17);

    QByteArray text;
    int count = 0;
    do {
        const qsizetype filled = text.size();
        if (filled > maximumSize)
            throw Failure(QStringLiteral("%1 is too big").arg(path));
        text.resize(filled + chunkSize);
        count = gzread(file.get(), text.data() + filled, static_cast<unsigned>(chunkSize));
        text.resize(filled + std::max(count, 0));
    } while (count == chunkSize);

    int error = Z_OK;
    const char* message = gzerror(file.get(), &error);
    if (count < 0 || error != Z_OK)
        throw Failure(QString::fromLocal8Bit(message)); // names the file
    // zlib hands out what is not compressed as it is.
    if (gzdirect(file.get()) != 0 && path.endsWith(u".dz"))
        throw Failure(QStringLiteral("%1 is not compressed data").arg(path));
    return text;
}

} // namespace tessaly::server
