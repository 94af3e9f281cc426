#include <utilities/locale.h>

#include <algorithm>

namespace tessaly::utilities::locale_parser {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isLetterOrDigit(char c) {
    return isLetter(c) || (c >= '0' && c <= '9');
}

bool isTag(const std::string& text, bool (*isAllowed)(char)) {
    return text.size() >= 2 && text.size() <= 8 && std::all_of(text.begin(), text.end(), isAllowed);
}

} // namespace

Either<Error, Locale> tagged_parse(const std::string& text, char separator) {
    if (text.empty())
        return Right<Locale>({});
    const auto end = text.find(separator);
    Locale locale{text.substr(0, end), boost::none};
    if (end != std::string::npos)
        locale.region = text.substr(end + 1);
    if (!isTag(locale.language, isLetter))
        return Left<Error>({{{"locale \"" + text + "\"", 0, "no language code"}}});
    if (locale.region && !isTag(*locale.region, isLetterOrDigit))
        return Left<Error>({{{"locale \"" + text + "\"", std::int32_t(end + 1), "no region code"}}});
    return Right<Locale>(locale);
}

} // namespace tessaly::utilities::locale_parser
