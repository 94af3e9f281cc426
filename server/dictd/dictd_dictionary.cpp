#include "dictd/dictd_dictionary.h"

#include "dictd/gzip_text.h"
#include "support/failure.h"

#include <QFile>

#include <array>
#include <optional>

namespace tessaly::server {

namespace {

// Older files write "00-database-short", newer ones "00databaseshort".
constexpr QByteArrayView aboutPrefixes[] = {"00database", "00-database-"};

constexpr std::array<signed char, 256> makeDigits() {
    std::array<signed char, 256> digits{};
    digits.fill(-1);
    signed char value = 0;
    for (const char digit :
         std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"))
        digits[static_cast<unsigned char>(digit)] = value++;
    return digits;
}

/// A number as the index writes it: most significant digit first, six bits each.
std::optional<qsizetype> parseNumber(QByteArrayView text) {
    static constexpr std::array<signed char, 256> digits = makeDigits();
    if (text.isEmpty() || text.size() > 8)
        return std::nullopt;
    qsizetype number = 0;
    for (const char character : text) {
        const signed char digit = digits[static_cast<unsigned char>(character)];
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

} // namespace

DictdDictionary::DictdDictionary(const QString& indexPath) {
    QFile file(indexPath);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("%1: %2").arg(indexPath, file.errorString()));
    m_index = file.readAll();
    const QString path = textPath(indexPath);
    if (path.isEmpty())
        throw Failure(QStringLiteral("%1 has no text file beside it").arg(indexPath));
    m_text = readGzipText(path);

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
    for (const QLatin1String ending : {QLatin1String(".dict.dz"), QLatin1String(".dict")}) {
        if (QFile::exists(base + ending))
            return base + ending;
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
