#include <dictionaries/dictionary_info.h>

#include <algorithm>
#include <ostream>
#include <unordered_set>
#include <utility>

namespace tessaly::dictionary {

namespace {

using Records = std::vector<DictionaryInfo>;

bool containsEqual(const Records& records, const DictionaryInfo& record, const DictionaryInfo::Equal& equal) {
    return std::any_of(records.begin(), records.end(),
                       [&](const DictionaryInfo& other) { return equal(other, record); });
}

Records withoutRepetitions(Records records, const DictionaryInfo::Equal& equal) {
    Records result;
    result.reserve(records.size());
    for (DictionaryInfo& record : records) {
        if (!containsEqual(result, record, equal))
            result.push_back(std::move(record));
    }
    return result;
}

/// Position of a record equal to `record`, or the size of the list. Lists mostly agree in their order, so the
/// search begins at the position where it is expected.
std::size_t findEqual(const Records& records, const DictionaryInfo& record, std::size_t expected,
                      const DictionaryInfo::Equal& equal) {
    const auto isEqual = [&](const DictionaryInfo& other) { return equal(record, other); };
    const auto start = records.begin() + std::ptrdiff_t(expected);
    auto found = std::find_if(start, records.end(), isEqual);
    if (found == records.end()) {
        found = std::find_if(records.begin(), start, isEqual);
        if (found == start)
            return records.size();
    }
    return std::size_t(found - records.begin());
}

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

Records DictionaryInfo::blitLists(Records target, Records source, const Equal& equal,
                                  const Combine& combine) {
    const Records news = withoutRepetitions(std::move(source), equal);
    std::vector<bool> used(news.size(), false);
    Records result;
    Records unmatched;
    std::size_t expected = 0;
    for (DictionaryInfo& record : target) {
        const std::size_t match = findEqual(news, record, expected, equal);
        if (match < news.size()) {
            if (!used[match])
                result.push_back(combine(record, news[match]));
            used[match] = true;
            expected = match + 1;
        } else if (!containsEqual(unmatched, record, equal)) {
            unmatched.push_back(record);
            result.push_back(std::move(record));
        }
    }
    for (std::size_t i = 0; i < news.size(); ++i) {
        if (!used[i])
            result.push_back(news[i]);
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
