#include <dictionaries/dictionary_info.h>

#include <algorithm>
#include <ostream>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace tessaly::dictionary {

namespace {

using Records = std::vector<DictionaryInfo>;

/// Records of which no two are equal, indexed by their server number. They must outlive it.
class DistinctRecords {
public:
    DistinctRecords(const DictionaryInfo::Equal& equal, std::size_t expected)
        : m_equal(equal) {
        m_byServerId.reserve(expected);
    }

    /// The record that is equal, or null.
    [[nodiscard]] const DictionaryInfo* find(const DictionaryInfo& record) const {
        const auto [begin, end] = m_byServerId.equal_range(record.serverId);
        const auto found =
            std::find_if(begin, end, [&](const auto& entry) { return m_equal(record, *entry.second); });
        return found == end ? nullptr : found->second;
    }

    /// False if an equal one is there already.
    bool add(const DictionaryInfo& record) {
        if (find(record))
            return false;
        m_byServerId.emplace(record.serverId, &record);
        return true;
    }

private:
    const DictionaryInfo::Equal& m_equal;
    std::unordered_multimap<std::int32_t, const DictionaryInfo*> m_byServerId;
};

std::string inOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return text;
}

std::ostream& writeLanguage(std::ostream& out, const boost::optional<DictionaryInfo::Locale>& language) {
    return language ? out << *language : out << "none";
}

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): the device's own library takes it so
DictionaryInfo::Separated DictionaryInfo::separate(Records records, vl_api::DictionariesBimap installed) {
    Separated result;
    std::unordered_set<std::string> recorded;
    for (DictionaryInfo& record : records) {
        if (installed.findByFileName(record.file) && recorded.insert(record.file).second)
            result.dictionaries.push_back(std::move(record));
    }
    for (const vl_api::Dictionary& dictionary : installed) {
        if (!recorded.contains(dictionary.file))
            result.vlDictionaries.insert(dictionary);
    }
    return result;
}

Records DictionaryInfo::subtractLists(const Records& records, const vl_api::DictionariesBimap& installed) {
    Records result;
    std::copy_if(records.begin(), records.end(), std::back_inserter(result),
                 [&](const DictionaryInfo& record) { return !installed.findByFileName(record.file); });
    return result;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the device's own library takes them so
Records DictionaryInfo::blitLists(Records target, Records source, const Equal& equal,
                                  const Combine& combine) {
    DistinctRecords fresh(equal, source.size());
    for (const DictionaryInfo& record : source)
        fresh.add(record);
    DistinctRecords known(equal, target.size());
    struct Kept {
        DictionaryInfo* record;
        const DictionaryInfo* update;
    };
    std::vector<Kept> kept;
    kept.reserve(target.size());
    for (DictionaryInfo& record : target) {
        if (known.add(record))
            kept.push_back({&record, fresh.find(record)});
    }
    std::vector<DictionaryInfo*> added;
    for (DictionaryInfo& record : source) {
        if (fresh.find(record) == &record && !known.find(record))
            added.push_back(&record);
    }

    // Only now may records be moved: until here they were compared.
    Records result;
    result.reserve(kept.size() + added.size());
    for (const Kept& entry : kept)
        result.push_back(entry.update ? combine(*entry.record, *entry.update) : std::move(*entry.record));
    for (DictionaryInfo* const record : added)
        result.push_back(std::move(*record));
    return result;
}

DictionaryInfo DictionaryInfo::withDatabaseId(std::int32_t id) const {
    DictionaryInfo copy = *this;
    copy.databaseId = id;
    return copy;
}

std::ostream& operator<<(std::ostream& out, const DictionaryInfo& info) {
    out << "{ databaseId: " << info.databaseId << ", serverId: " << info.serverId
        << ", name: " << inOneLine(info.name) << ", file: " << inOneLine(info.file)
        << ", version: " << info.version << ", languageFrom: ";
    writeLanguage(out, info.languageFrom) << ", languageTo: ";
    return writeLanguage(out, info.languageTo)
           << ", category: " << inOneLine(info.category) << ", provider: " << inOneLine(info.provider)
           << ", publishDate: " << inOneLine(info.publishDate) << ", set: " << inOneLine(info.dictSet)
           << " }";
}

} // namespace tessaly::dictionary
