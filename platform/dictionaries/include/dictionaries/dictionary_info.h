#pragma once

#include <dictionaries/export.h>
#include <dictionaries/vl_api.h>
#include <utilities/locale.h>

#include <boost/optional.hpp>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace tessaly::dictionary {

/// The catalogue record of one dictionary. Texts are UTF-8. A plain value.
struct TESSALY_DICTIONARIES_API DictionaryInfo {
    using Locale = utilities::Locale;

    std::int32_t databaseId = 0; ///< row in the local catalogue; 0 for a record that isn't from there
    std::int32_t serverId = 0;   ///< number on the dictionary server; 0 for a record that isn't from there
    std::string name;            ///< title
    std::string file;            ///< file name, without a folder
    std::int32_t version = 0;
    boost::optional<Locale> languageFrom;
    boost::optional<Locale> languageTo;
    std::string thumbnail; ///< address of the cover
    std::string description;
    std::string category;
    std::string provider;
    std::string publishDate; ///< as the server gives it; the catalogue doesn't store it
    std::string dictSet;

    /// Catalogue records whose dictionaries are installed, and installed dictionaries without a record.
    struct Separated;

    /// Matches by file name, each installed dictionary once, in the order of the records.
    static Separated separate(std::vector<DictionaryInfo> records, vl_api::DictionariesBimap installed);

    /// The records that aren't installed, in their order.
    static std::vector<DictionaryInfo> subtractLists(const std::vector<DictionaryInfo>& records,
                                                     const vl_api::DictionariesBimap& installed);

    using Equal = std::function<bool(const DictionaryInfo&, const DictionaryInfo&)>;
    using Combine = std::function<DictionaryInfo(const DictionaryInfo&, const DictionaryInfo&)>;
    /// Lays `source` over `target`: a target record equal to a source record becomes combine(target, source),
    /// one that has no equal stays, and source records without an equal follow in their order. Each
    /// dictionary comes out once, however often the lists held it. The time grows as the lists do: only
    /// records with the same server number are ever held to be equal, and `equal` is asked about those alone.
    static std::vector<DictionaryInfo> blitLists(std::vector<DictionaryInfo> target,
                                                 std::vector<DictionaryInfo> source, const Equal& equal,
                                                 const Combine& combine);

    [[nodiscard]] DictionaryInfo withDatabaseId(std::int32_t id) const;
};

struct DictionaryInfo::Separated {
    std::vector<DictionaryInfo> dictionaries;
    vl_api::DictionariesBimap vlDictionaries;
};

/// One readable line, for logs.
TESSALY_DICTIONARIES_API std::ostream& operator<<(std::ostream& out, const DictionaryInfo& info);

} // namespace tessaly::dictionary
