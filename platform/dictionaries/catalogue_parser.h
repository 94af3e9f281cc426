#pragma once

#include <common_utilities/either.h>
#include <dictionaries/api_error.h>
#include <dictionaries/dictionary_info.h>
#include <dictionaries/export.h>

#include <string>
#include <vector>

namespace tessaly::dictionary {

/// More than anybody offers, and no more than an interface can sort and show.
constexpr std::size_t mostCatalogueRecords = 20'000;

/// The records of the server's catalogue: the first 20,000 of them, or fewer if their texts exceed 8 MiB. A
/// body that isn't a JSON array is ApiError::ParseError. An entry that isn't a record, or repeats a number,
/// is left out with a warning; texts longer than a screen can bear are cut. Exported for tests only.
TESSALY_DICTIONARIES_API Either<ApiError, std::vector<DictionaryInfo>>
parseCatalogue(const std::string& body);

} // namespace tessaly::dictionary
