#pragma once

#include <common_utilities/either.h>
#include <utilities/error.h>
#include <utilities/export.h>

#include <boost/optional.hpp>
#include <ostream>
#include <string>

namespace tessaly::utilities {

/// A language code and an optional region code, as they came. An empty code means that no language is known.
template<class Language, class Region>
struct basic_locale {
    Language language;
    Region region;

    /// "pt_BR" with the separator '_', or the language alone when there is no region.
    static std::string stringify(const Language& language, const Region& region, char separator) {
        return region ? language + separator + *region : language;
    }
    [[nodiscard]] std::string stringify(char separator) const {
        return stringify(language, region, separator);
    }

    friend bool operator==(const basic_locale& a, const basic_locale& b) {
        return a.language == b.language && a.region == b.region;
    }

    /// { lang: pt, region: BR }, with "none" for an absent region.
    friend std::ostream& operator<<(std::ostream& out, const basic_locale& locale) {
        out << "{ lang: " << locale.language << ", region: ";
        return (locale.region ? out << *locale.region : out << "none") << " }";
    }
};

using Locale = basic_locale<std::string, boost::optional<std::string>>;

namespace locale_parser {

/// Parses "pt" or, with the separator '_', "pt_BR": a language of 2 to 8 ASCII letters and a region of 2 to 8
/// ASCII letters or digits; letter case is kept. An empty text is a locale with an empty language; anything
/// else an error.
TESSALY_UTILITIES_API Either<Error, Locale> tagged_parse(const std::string& text, char separator);

} // namespace locale_parser

} // namespace tessaly::utilities
