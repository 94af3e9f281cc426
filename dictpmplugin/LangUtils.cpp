#include "LangUtils.h"

#include <common_utilities/log_line.h>

#include <cstdlib>
#include <map>
#include <set>
#include <utility>

namespace tessaly::dictionary::langutils {

namespace {

const std::map<std::pair<std::string, std::string>, std::string>& territoryNames() {
    static const std::map<std::pair<std::string, std::string>, std::string> names = {
        {{"zh", "tw"}, "Chinese (Traditional)"},
        {{"zh", "cn"}, "Chinese (Simplified)"},
        {{"zh", "sg"}, "Chinese (Simplified, Singapore)"},
    };
    return names;
}

const std::map<std::string, std::string>& languageNames() {
    static const std::map<std::string, std::string> names = {
        {"en", "English"},   {"de", "German"},    {"fr", "French"},
        {"es", "Spanish"},   {"it", "Italian"},   {"pt", "Portuguese"},
        {"ru", "Russian"},   {"zh", "Chinese"},   {"ja", "Japanese"},
        {"ko", "Korean"},    {"ar", "Arabic"},    {"hi", "Hindi"},
        {"bn", "Bengali"},   {"pa", "Punjabi"},   {"ur", "Urdu"},
        {"fa", "Persian"},   {"tr", "Turkish"},   {"vi", "Vietnamese"},
        {"ms", "Malay"},     {"th", "Thai"},      {"nl", "Dutch"},
        {"pl", "Polish"},    {"sv", "Swedish"},   {"no", "Norwegian"},
        {"da", "Danish"},    {"fi", "Finnish"},   {"el", "Greek"},
        {"he", "Hebrew"},    {"hu", "Hungarian"}, {"cs", "Czech"},
        {"ro", "Romanian"},  {"bg", "Bulgarian"}, {"sr", "Serbian"},
        {"hr", "Croatian"},  {"sk", "Slovak"},    {"lt", "Lithuanian"},
        {"lv", "Latvian"},   {"et", "Estonian"},  {"id", "Indonesian"},
        {"tl", "Tagalog"},   {"uk", "Ukrainian"}, {"ca", "Catalan"},
        {"is", "Icelandic"}, {"ga", "Irish"},     {"mt", "Maltese"},
        {"sl", "Slovenian"}, {"hy", "Armenian"},  {"az", "Azerbaijan"}, // the country's name, on purpose
    };
    return names;
}

const std::string* findName(const Locale& locale) {
    if (locale.region) {
        const auto name = territoryNames().find({locale.language, *locale.region});
        if (name != territoryNames().end())
            return &name->second;
    }
    const auto name = languageNames().find(locale.language);
    return name == languageNames().end() ? nullptr : &name->second;
}

} // namespace

std::string localeDisplayText(const Locale& locale) {
    if (const std::string* const name = findName(locale))
        return *name;
    LogLine(log::cb::error) << "Can not find display text for locale: " << locale;
    std::abort();
}

bool hasDisplayText(const boost::optional<Locale>& locale) {
    if (!locale || locale->language.empty())
        return false;
    if (findName(*locale))
        return true;
    // Rows ask again with every repaint; one line a code is enough. A list for each thread needs no lock.
    thread_local std::set<std::string> warned;
    if (warned.insert(locale->language).second)
        LogLine(log::cb::warn) << "No display text for language " << *locale;
    return false;
}

std::string displayTextOr(const boost::optional<Locale>& locale, const std::string& fallback) {
    return hasDisplayText(locale) ? localeDisplayText(*locale) : fallback;
}

} // namespace tessaly::dictionary::langutils
