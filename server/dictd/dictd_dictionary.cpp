#include "dictd/dictd_dictionary.h"

#include "support/files.h"

#include <QFile>

#include <memory>
#include <optional>
#include <zlib.h>

namespace tessaly::server {

namespace {

// Older files write "00-database-short", newer ones "00databaseshort".
constexpr QByteArrayView aboutPrefixes[] = {"00database", "00-database-"};

/// A number as the index writes it: most significant digit first, six bits each.
std::optional<qsizetype> parseNumber(QByteArrayView text) {
    constexpr QByteArrayView digits("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
    if (text.isEmpty() || text.size() > 8)
        return std::nullopt;
    qsizetype number = 0;
    for (const char character : text) {
        const qsizetype digit = digits.indexOf(character);
        if (digit < 0)
            return std::nullopt;
        number = number * 64 + digit;
    }
    return number;
}

QByteArrayView aboutName(QByteArrayView headword) {
    for (const QByteArrayView prefix : aboutPrefixes) {
        if (headword.startsWith(prefix))
            return headword.sliced(prefix.size());
    }
    return {};
}

/// The whole content of a text file, which gzip's own checksum vouches for if the name ends in ".dz".
QByteArray readText(const QString& path) {
    constexpr qsizetype maximumSize = 1 << 30;
    constexpr qsizetype chunkSize = 1 << 20;
    const std::unique_ptr<gzFile_s, int (*)(gzFile)> file(gzopen(QFile::encodeName(path).constData(), "rb"),
                                                          gzclose);
    if (!file)
        throw Failure(QStringLiteral("%1 can't be opened").arg(path));
    QByteArray text;
    int count = chunkSize;
    while (count == chunkSize) {
        const qsizetype filled = text.size();
        if (filled > maximumSize)
            throw Failure(QStringLiteral("%1 is too big").arg(path));
        text.resize(filled + chunkSize);
        count = gzread(file.get(), text.data() + filled, chunkSize);
        text.resize(filled + std::max(count, 0));
    }
    int error = Z_OK;
    const char* message = gzerror(file.get(), &error);
    if (count < 0 || error != Z_OK)
        throw Failure(QString::fromLocal8Bit(message)); // names the file
    // zlib hands out what is not compressed as it is.
    if (gzdirect(file.get()) != 0 && path.endsWith(u".dz"))
        throw Failure(QStringLiteral("%1 is not compressed data").arg(path));
    return text;
}

} // namespace

DictdDictionary::DictdDictionary(const QString& indexPath)
    : m_index(readFile(indexPath)) {
    const QString path = textPath(indexPath);
    if (path.isEmpty())
        throw Failure(QStringLiteral("%1 has no text file beside it").arg(indexPath));
    m_text = readText(path);

    const QByteArrayView index(m_index);
    qsizetype start = 0;
    for (int line = 1; start < index.size(); ++line) {
        const qsizetype end = index.indexOf('\n', start);
        if (end < 0 || !readLine(index.sliced(start, end - start)))
            throw Failure(QStringLiteral("%1: line %2 is wrong").arg(indexPath).arg(line));
        start = end + 1;
    }
    if (m_entries.empty())
        throw Failure(QStringLiteral("%1 has no words").arg(indexPath));
}

QString DictdDictionary::textPath(const QString& indexPath) {
    const QString base = indexPath.chopped(QLatin1String(".index").size());
    for (const QLatin1String suffix : {QLatin1String(".dict.dz"), QLatin1String(".dict")}) {
        if (QFile::exists(base + suffix))
            return base + suffix;
    }
    return {};
}

bool DictdDictionary::readLine(QByteArrayView line) {
    const qsizetype first = line.indexOf('\t');
    const qsizetype second = first < 0 ? -1 : line.indexOf('\t', first + 1);
    if (second < 0)
        return false;
    // A fourth column, the headword as it was before normalisation, is allowed and not needed.
    const qsizetype third = line.indexOf('\t', second + 1);
    const qsizetype end = third < 0 ? line.size() : third;
    const std::optional<qsizetype> offset = parseNumber(line.sliced(first + 1, second - first - 1));
    const std::optional<qsizetype> length = parseNumber(line.sliced(second + 1, end - second - 1));
    if (!offset || !length || *offset > m_text.size() || *length > m_text.size() - *offset)
        return false;
    const DictdEntry entry{line.first(first), *offset, *length};
    if (!aboutName(entry.headword).isEmpty())
        m_about.push_back(entry);
    else if (!entry.headword.isEmpty())
        m_entries.push_back(entry);
    return true;
}

QString DictdDictionary::text(const DictdEntry& entry) const {
    return QString::fromUtf8(QByteArrayView(m_text).sliced(entry.offset, entry.length));
}

QString DictdDictionary::about(QLatin1String name) const {
    for (const DictdEntry& entry : m_about) {
        if (aboutName(entry.headword) != QByteArrayView(name.data(), name.size()))
            continue;
        QString content = text(entry);
        if (content.startsWith(QString::fromUtf8(entry.headword)))
            content.remove(0, content.indexOf(u'\n') + 1);
        return content.trimmed();
    }
    return {};
}

} // namespace tessaly::server
