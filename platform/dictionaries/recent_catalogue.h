#pragma once

#include <dictionaries/dictionary_info.h>

#include <optional>
#include <string>
#include <vector>

namespace tessaly::dictionary {

/// The catalogue that the server sent last, for the next request to ask whether it is still the same: the
/// interface wants it twice within a moment, and on a slow link it takes a minute.
///
///     const auto recent = RecentCatalogue::take(url); // its ETag goes along with the request
///     ...                                             // 304: recent->records; 200: what came
///     RecentCatalogue::keep({url, etag, records});
///
/// What is kept serves one request, and lasts a minute where a Qt application runs: a device has other use
/// for its memory. Any thread.
struct RecentCatalogue {
    std::string url;
    std::string etag;
    std::vector<DictionaryInfo> records;

    static void keep(RecentCatalogue catalogue);
    static std::optional<RecentCatalogue> take(const std::string& url);
};

} // namespace tessaly::dictionary
