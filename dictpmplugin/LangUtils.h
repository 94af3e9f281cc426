#pragma once

#include <utilities/locale.h>

#include <boost/optional.hpp>
#include <string>

/// English names of dictionary languages, as the list shows and sorts them:
///
///     displayTextOr(record.languageFrom, "Other") // "Portuguese" for pt_BR
///
/// They are not translated, and codes are compared as they are, letter case included. Any thread.
namespace tessaly::dictionary::langutils {

using Locale = utilities::Locale;

/// The name of a language. Ends the process for a language outside the tables: ask hasDisplayText first.
std::string localeDisplayText(const Locale& locale);

/// Whether there is a language, and a name for it. Data from a server, a file or the database must pass this
/// before localeDisplayText. Logs a warning for a language outside the tables, once per code and thread.
bool hasDisplayText(const boost::optional<Locale>& locale);

/// The name of a language, or `fallback` when there is none.
std::string displayTextOr(const boost::optional<Locale>& locale, const std::string& fallback);

} // namespace tessaly::dictionary::langutils
