#include "dictionary_row.h"

#include "LangUtils.h"

#include <common_utilities/log_line.h>
#include <dictionaries/dictionary_file.h>

#include <algorithm>
#include <iterator>

namespace tessaly::dictionary {

namespace {

DictionaryInfo describe(const vl_api::Dictionary& dictionary) {
    DictionaryInfo info;
    info.name = dictionary.name;
    info.file = dictionary.file;
    info.category = dictionary.name; // tells it from others where the file doesn't
    const auto opened = open(dictionary.absolutePath());
    if (opened.isLeft()) {
        LogLine(log::cb::warn) << "Failed to open dictionary to get metadata: " << opened.getLeft();
        return info;
    }
    if (const auto& metadata = opened.getRight().metadata()) {
        info.version = metadata->version;
        info.languageFrom = metadata->languageFrom;
        info.languageTo = metadata->languageTo;
        info.thumbnail = metadata->thumbnail;
        info.description = metadata->description;
        info.category = metadata->category;
        info.provider = metadata->provider;
        info.publishDate = metadata->publishDate;
        info.dictSet = metadata->dictSet;
    }
    return info;
}

template<auto field>
QVariant text(const DictionaryRow& row) {
    return QString::fromStdString(row.info.*field);
}

template<auto language>
QVariant nameOf(const DictionaryRow& row) {
    return row.languageName(language);
}

template<auto language>
QVariant codeOf(const DictionaryRow& row) {
    return row.languageCode(language);
}

template<auto flag>
QVariant mark(const DictionaryRow& row) {
    return row.*flag;
}

QVariant codeAndName(const DictionaryRow& row) {
    constexpr auto language = &DictionaryInfo::languageFrom;
    return QString(row.languageCode(language) + u'|' + row.languageName(language));
}

constexpr struct {
    int number;
    const char* name;
    QVariant (*value)(const DictionaryRow& row);
} roles[] = {
    {Qt::DisplayRole, "displayTitle",
     [](const DictionaryRow& row) -> QVariant { return row.displayTitle(); }},
    {257, "title", text<&DictionaryInfo::name>}, // Qt::UserRole itself is left out
    {258, "languageFrom", nameOf<&DictionaryInfo::languageFrom>},
    {259, "languageIsoFrom", codeOf<&DictionaryInfo::languageFrom>},
    {260, "languageFromPair", codeAndName},
    {261, "languageTo", nameOf<&DictionaryInfo::languageTo>},
    {262, "languageIsoTo", codeOf<&DictionaryInfo::languageTo>},
    {263, "provider", text<&DictionaryInfo::provider>},
    {264, "description", text<&DictionaryInfo::description>},
    {265, "hasDescription", text<&DictionaryInfo::description>}, // on purpose: asked only whether it is true
    {266, "version", [](const DictionaryRow& row) -> QVariant { return QString::number(row.info.version); }},
    {267, "coverUrl", text<&DictionaryInfo::thumbnail>},
    {268, "selectedToDownload", mark<&DictionaryRow::selectedToDownload>},
    {269, "installed", mark<&DictionaryRow::installed>},
    {270, "set", text<&DictionaryInfo::dictSet>},
    {271, "category", text<&DictionaryInfo::category>},
};

} // namespace

std::vector<DictionaryRow> DictionaryRow::vectorFromDictionaries(const std::vector<DictionaryInfo>& records,
                                                                 bool installed) {
    std::vector<DictionaryRow> rows;
    rows.reserve(records.size());
    for (const DictionaryInfo& record : records)
        rows.push_back({record, false, installed});
    return rows;
}

std::vector<DictionaryRow>
DictionaryRow::vectorFromVlDictionaries(const vl_api::DictionariesBimap& dictionaries, bool installed) {
    std::vector<DictionaryRow> rows;
    rows.reserve(dictionaries.size());
    for (const vl_api::Dictionary& dictionary : dictionaries)
        rows.push_back({describe(dictionary), false, installed});
    return rows;
}

QString DictionaryRow::languageName(Language language) const {
    return QString::fromStdString(langutils::displayTextOr(info.*language, "Other"));
}

QString DictionaryRow::languageCode(Language language) const {
    const auto& locale = info.*language;
    return locale ? QString::fromStdString(locale->stringify('_')) : QString();
}

QString DictionaryRow::displayTitle() const {
    if (!langutils::hasDisplayText(info.languageFrom) || !langutils::hasDisplayText(info.languageTo))
        return QString::fromStdString(info.name);
    return QStringLiteral("%1 → %2").arg(languageName(&DictionaryInfo::languageFrom),
                                         languageName(&DictionaryInfo::languageTo));
}

QVariant DictionaryRow::value(int role) const {
    const auto* const known = std::find_if(std::begin(roles), std::end(roles), [role](const auto& candidate) {
        return candidate.number == role;
    });
    return known == std::end(roles) ? QVariant() : known->value(*this);
}

QHash<int, QByteArray> DictionaryRow::roleNames() {
    QHash<int, QByteArray> names;
    for (const auto& role : roles)
        names.insert(role.number, role.name);
    return names;
}

} // namespace tessaly::dictionary
