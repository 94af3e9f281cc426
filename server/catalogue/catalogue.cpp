#include "catalogue/catalogue.h"

#include "catalogue/file_names.h"
#include "support/languages.h"
#include "support/server_state.h"

#include <QDebug>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace tessaly::server {

Catalogue::Catalogue(const QList<SourceInfo>& sources, ServerState& state, const QString& address,
                     bool allLanguages) {
    static const QRegularExpression form(QStringLiteral("/freedict-(([a-z]{3})-([a-z]{3}))\\.index$"));
    QSet<QString> taken;
    for (const SourceInfo& source : sources) {
        const QRegularExpressionMatch match = form.match(source.indexPath);
        if (!match.hasMatch())
            continue; // not from one language to another
        if (!source.error.isEmpty()) {
            qWarning().noquote() << "dictionary left out:" << source.error;
            continue;
        }
        DictionaryRecord record;
        record.languageFrom = shortLanguageCode(match.captured(2));
        record.languageTo = shortLanguageCode(match.captured(3));
        if (!allLanguages && !(isNamedLanguage(record.languageFrom) && isNamedLanguage(record.languageTo)))
            continue;
        const QString code = match.captured(1);
        record.name = source.info.title.isEmpty() ? code : source.info.title;
        record.file = uniqueFileName(record.name, code, taken);
        record.id = state.recordNumber(record.file);
        record.version = source.info.version;
        record.thumbnail = QStringLiteral("%1/v1/dictionaries/%2/cover.png").arg(address).arg(record.id);
        record.description = source.info.description;
        record.category = QStringLiteral("General");
        record.provider = source.info.provider;
        record.publishDate = source.info.publishDate;
        record.set =
            record.name.contains(u"WikDict") ? QStringLiteral("WikDict") : QStringLiteral("FreeDict");
        record.size = source.packageSize;
        record.indexPath = source.indexPath;
        record.sourceStamp = source.stamp;
        m_records << record;
    }
    state.save();
}

const DictionaryRecord* Catalogue::find(int id) const {
    const auto found = std::find_if(m_records.begin(), m_records.end(),
                                    [id](const DictionaryRecord& record) { return record.id == id; });
    return found == m_records.end() ? nullptr : &*found;
}

QJsonArray Catalogue::toJson() const {
    QJsonArray array;
    for (const DictionaryRecord& record : m_records)
        array << record.toJson();
    return array;
}

} // namespace tessaly::server
