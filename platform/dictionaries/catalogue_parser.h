#pragma once

#include <common_utilities/either.h>
#include <dictionaries/api_error.h>
#include <dictionaries/dictionary_info.h>
#include <dictionaries/export.h>

#include <string>
#include <vector>

namespace tessaly::dictionary {

/// The records of the server's catalogue. A body that isn't a JSON array is ApiError::ParseError. An entry
/// that isn't a record, or repeats a number, is left out with a warning. Exported for tests only.
TESSALY_DICTIONARIES_API Either<ApiError, std::vector<DictionaryInfo>>
parseCatalogue(const std::string& body);

} // namespace tessaly::dictionary
