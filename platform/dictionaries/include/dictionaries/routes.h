#pragma once

#include <common_utilities/either.h>
#include <dictionaries/api_error.h>
#include <dictionaries/dictionary_info.h>
#include <dictionaries/export.h>

#include <stop_token>
#include <string>
#include <vector>

namespace tessaly::dictionary {

/// URL of the dictionary server, without a trailing slash: what the device's configuration says.
TESSALY_DICTIONARIES_API std::string default_base_url();

/// The client of the dictionary server. Each call is one request that blocks, bounded in time and in the size
/// of its response; failures are values. Nothing is tried again, and nothing is kept between calls:
///
///     const auto task = Routes::requestDictionariesDownload("12,40", default_base_url());
///     if (task.isRight())
///         url = Routes::getDictionariesDownloadUrl(task.getRight(), default_base_url());
///
/// Any thread.
namespace Routes {

/// The whole catalogue. A record that isn't one is dropped with a warning. What one call brought answers the
/// next within a minute, if the server says that it is still the same: it crosses the network once.
TESSALY_DICTIONARIES_API Either<ApiError, std::vector<DictionaryInfo>>
listDictionaries(const std::string& baseUrl);

/// Asks for one package of the dictionaries with these server numbers ("12,40"); the package's task number.
TESSALY_DICTIONARIES_API Either<ApiError, long long>
requestDictionariesDownload(const std::string& ids, const std::string& baseUrl,
                            const std::stop_token& stop = {});

/// Where the package can be fetched; ApiError::Wait while it is still being built. The URL carries the
/// announced size and the manifest's checksum in its fragment, where the downloader finds them.
TESSALY_DICTIONARIES_API Either<ApiError, std::string>
getDictionariesDownloadUrl(long long taskId, const std::string& baseUrl, const std::stop_token& stop = {});

/// Reports that a package was installed; what the server says to that.
TESSALY_DICTIONARIES_API Either<ApiError, std::string> sendSuccessInstall(const std::string& taskId,
                                                                          const std::string& baseUrl);

} // namespace Routes

} // namespace tessaly::dictionary
