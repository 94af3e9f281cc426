#pragma once

#include <common_utilities/either.h>
#include <utilities/basic_locale.h>
#include <utilities/error.h>
#include <utilities/export.h>

namespace tessaly::utilities::locale_parser {

/// Parses "pt" or, with the separator '_', "pt_BR": a language of 2 to 8 ASCII letters and a region of 2 to 8
/// ASCII letters or digits; letter case is kept. An empty text is a locale with an empty language; anything
/// else an error.
TESSALY_UTILITIES_API Either<Error, Locale> tagged_parse(const std::string& text, char separator);

} // namespace tessaly::utilities::locale_parser
