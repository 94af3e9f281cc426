#include <dictionaries/dictionary_info.h>

#include <algorithm>
#include <memory_resource>
#include <optional>
#include <ostream>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace tessaly::dictionary {

namespace {

using Records = std::vector<DictionaryInfo>;

/// The records of a list without repetitions, in the list's order, found by their server numbers.
class DistinctRecords {
public:
    DistinctRecords(Records& records, const DictionaryInfo::Equal& equal)
        : m_equal(equal) {
        m_positions.reserve(records.size());
        m_records.reserve(records.size());
        for (DictionaryInfo& record : records) {
            if (find(record))
                continue;
            m_positions.emplace(record.serverId, m_records.size());
            m_records.push_back(&record);
        }
    }

    /// The position of the record that is equal, if there is one.
    [[nodiscard]] std::optional<std::size_t> find(const DictionaryInfo& record) const {
        const auto [begin, end] = m_positions.equal_range(record.serverId);
        const auto found = std::find_if(
            begin, end, [&](const auto& entry) { return m_equal(record, *m_records[entry.second]); });
        return found == end ? std::nullopt : std::optional(found->second);
    }
    [[nodiscard]] const std::vector<DictionaryInfo*>& records() const { return m_records; }

private:
    const DictionaryInfo::Equal& m_equal;
    std::vector<DictionaryInfo*> m_records;
    std::pmr::monotonic_buffer_resource m_memory; ///< nodes side by side: long lists are quicker
    std::pmr::unordered_multimap<std::int32_t, std::size_t> m_positions{&m_memory};
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
    const DistinctRecords known(target, equal);
    const DistinctRecords fresh(source, equal);
    std::vector<bool> isKnown(fresh.records().size());
    Records result;
    result.reserve(known.records().size() + fresh.records().size());
    for (DictionaryInfo* const record : known.records()) {
        if (const auto update = fresh.find(*record)) {
            isKnown[*update] = true;
            *record = combine(*record, *fresh.records()[*update]);
        }
        result.push_back(std::move(*record));
    }
    for (std::size_t i = 0; i < isKnown.size(); ++i) {
        if (!isKnown[i])
            result.push_back(std::move(*fresh.records()[i]));
    }
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
