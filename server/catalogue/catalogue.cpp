#include "catalogue/catalogue.h"

#include "catalogue/naming.h"
#include "dictd/dictd_dictionary.h"
#include "dictd/dictd_info.h"
#include "support/files.h"
#include "support/server_state.h"

#include <QBuffer>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>
#include <QtConcurrent>

#include <algorithm>

namespace tessaly::server {

namespace {

QJsonValue languageToJson(const QString& code) {
    if (code.isEmpty())
        return QJsonValue::Null;
    return QJsonObject{{QStringLiteral("code"), code}};
}

constexpr QRect page(0, 0, 300, 400);
constexpr QRect band(22, 34, 256, 34);
constexpr QRect from(22, 92, 256, 92);
constexpr QRect arrow(22, 184, 256, 20);
constexpr QRect to(22, 204, 256, 92);
constexpr QRect title(30, 308, 240, 62);

QFont font(int pixels, QFont::Weight weight = QFont::Normal) {
    QFont result(QStringLiteral("DejaVu Serif"));
    result.setStyleHint(QFont::Serif);
    result.setPixelSize(pixels);
    result.setWeight(weight);
    return result;
}

/// As big as the text can be in the box, up to `largest` pixels.
void drawFitting(QPainter& painter, const QRect& box, const QString& text, int largest,
                 QFont::Weight weight) {
    constexpr int flags = Qt::AlignCenter | Qt::TextWordWrap;
    for (int pixels = largest; pixels >= 10; --pixels) {
        painter.setFont(font(pixels, weight));
        if (box.contains(painter.boundingRect(box, flags, text)))
            break;
    }
    painter.drawText(box, flags, text);
}

void drawFrame(QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 4));
    painter.drawRect(page.adjusted(8, 8, -9, -9));
    painter.setPen(QPen(Qt::black, 1));
    painter.drawRect(page.adjusted(14, 14, -15, -15));
}

/// "ces-eng" of the path of an index.
QString codeOf(const QString& indexPath) {
    return QFileInfo(indexPath).baseName().section(u'-', 1);
}

/// The record as far as the dictionary itself says it; without a name if it is damaged.
DictionaryRecord readRecord(const QString& indexPath) {
    DictionaryRecord record;
    try {
        const DictdDictionary dictionary(indexPath);
        const DictdInfo info =
            parseDictdInfo(dictionary.about(QLatin1String("short")), dictionary.about(QLatin1String("info")));
        const QString code = codeOf(indexPath);
        const QString textPath = DictdDictionary::textPath(indexPath);
        record.name = info.title.isEmpty() ? code : info.title;
        record.version = info.version;
        record.languageFrom = shortLanguageCode(code.section(u'-', 0, 0));
        record.languageTo = shortLanguageCode(code.section(u'-', 1));
        record.description = info.description;
        record.provider = info.provider;
        record.publishDate = info.publishDate;
        record.set =
            record.name.contains(u"WikDict") ? QStringLiteral("WikDict") : QStringLiteral("FreeDict");
        // A package holds the texts about as well compressed as here and two indexes in place of one.
        // Packages of real dictionaries have been from 1.2 to 1.6 times the size of the source files.
        record.size = (QFileInfo(indexPath).size() + QFileInfo(textPath).size()) * 3 / 2;
        record.indexPath = indexPath;
        record.sourceStamp = fileStamp({indexPath, textPath});
    } catch (const Failure& failure) {
        qWarning().noquote() << "dictionary left out:" << failure.message();
    }
    return record;
}

} // namespace

QJsonObject DictionaryRecord::toJson() const {
    return {{QStringLiteral("id"), id},
            {QStringLiteral("name"), name},
            {QStringLiteral("file"), file},
            {QStringLiteral("version"), version},
            {QStringLiteral("language_from"), languageToJson(languageFrom)},
            {QStringLiteral("language_to"), languageToJson(languageTo)},
            {QStringLiteral("thumbnail"), thumbnail},
            {QStringLiteral("description"), description},
            {QStringLiteral("category"), category},
            {QStringLiteral("provider"), provider},
            {QStringLiteral("publish_date"), publishDate},
            {QStringLiteral("set"), set},
            {QStringLiteral("size"), size}};
}

QByteArray DictionaryRecord::cover() const {
    QImage image(page.size(), QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    drawFrame(painter);

    painter.fillRect(band, Qt::black);
    painter.setPen(Qt::white);
    QFont spaced = font(15, QFont::Bold);
    spaced.setLetterSpacing(QFont::AbsoluteSpacing, 4);
    painter.setFont(spaced);
    painter.drawText(band, Qt::AlignCenter, set.toUpper());

    painter.setPen(Qt::black);
    drawFitting(painter, from, languageFrom.toUpper(), 88, QFont::Bold);
    drawFitting(painter, to, languageTo.toUpper(), 88, QFont::Bold);
    drawFitting(painter, arrow, QStringLiteral("\u2193"), 20, QFont::Bold);
    drawFitting(painter, title, readableName(name), 22, QFont::Normal);
    painter.end();

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

Catalogue::Catalogue(const QString& directory, ServerState& state, const QString& url, bool allLanguages) {
    static const QRegularExpression isPair(QStringLiteral("^[a-z]{3}-[a-z]{3}$"));
    const QFileInfoList files =
        QDir(directory).entryInfoList({QStringLiteral("freedict-*.index")}, QDir::Files, QDir::Name);
    QStringList paths;
    for (const QFileInfo& file : files) {
        const QString code = codeOf(file.filePath());
        const bool isNamed = isNamedLanguage(shortLanguageCode(code.section(u'-', 0, 0))) &&
                             isNamedLanguage(shortLanguageCode(code.section(u'-', 1)));
        if (isPair.match(code).hasMatch() && (allLanguages || isNamed))
            paths << file.absoluteFilePath();
    }
    // A dictionary has to be read whole to know that it is sound.
    QSet<QString> takenNames;
    QHash<QString, QSet<QString>> takenCategories;
    for (DictionaryRecord& record : QtConcurrent::blockingMapped(paths, readRecord)) {
        if (record.name.isEmpty())
            continue;
        const QString code = codeOf(record.indexPath);
        record.file = uniqueFileName(record.name, code, takenNames);
        record.category =
            uniqueCategory(record.name, code, takenCategories[record.languageFrom + record.languageTo]);
        record.id = state.recordNumber(record.file);
        record.thumbnail = QStringLiteral("%1/v1/dictionaries/%2/cover.png").arg(url).arg(record.id);
        m_records << record;
    }
    state.save();
}

const DictionaryRecord* Catalogue::find(int id) const {
    const auto found = std::find_if(m_records.begin(), m_records.end(),
                                    [id](const DictionaryRecord& record) { return record.id == id; });
    return found == m_records.end() ? nullptr : &*found;
}

} // namespace tessaly::server
