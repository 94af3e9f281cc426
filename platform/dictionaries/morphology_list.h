#pragma once

#include <common_utilities/either.h>
#include <dictionaries/api_error.h>

#include <QHash>
#include <QString>
#include <stop_token>
#include <string>

namespace tessaly::dictionary {

/// The server's list of morphology data: address by language code. Entries that are neither are left out with
/// a warning. One request that blocks, for a shorter time than others; it ends within a moment when a stop is
/// requested. Any thread.
Either<ApiError, QHash<QString, QString>>
listMorphology(const std::string& baseUrl, const std::string& apiKey, const std::stop_token& stop);

} // namespace tessaly::dictionary
