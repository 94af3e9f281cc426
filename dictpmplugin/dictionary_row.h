#pragma once

#include <dictionaries/dictionary_info.h>
#include <dictionaries/vl_api.h>

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>
#include <vector>

namespace tessaly::dictionary {

/// One row of the list of dictionaries. A plain value.
struct DictionaryRow {
    DictionaryInfo info;
    bool selectedToDownload = false;
    bool installed = false; ///< what the builders were told; nothing in the product tells them true

    static std::vector<DictionaryRow> vectorFromDictionaries(const std::vector<DictionaryInfo>& records,
                                                             bool installed);
    /// Opens each dictionary for its metadata; one that can't be opened still gets a row, and a warning.
    static std::vector<DictionaryRow> vectorFromVlDictionaries(const vl_api::DictionariesBimap& dictionaries,
                                                               bool installed);

    using Language = boost::optional<utilities::Locale> DictionaryInfo::*;

    /// The English name of a language; "Other" without one.
    [[nodiscard]] QString languageName(Language language) const;
    /// "pt_BR"; empty without a language.
    [[nodiscard]] QString languageCode(Language language) const;
    /// "English → German", or the title when one of them has no name.
    [[nodiscard]] QString displayTitle() const;

    static QHash<int, QByteArray> roleNames();
    /// What a view sees; invalid for any other role.
    [[nodiscard]] QVariant value(int role) const;
};

} // namespace tessaly::dictionary
