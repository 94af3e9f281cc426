#include "dictionary_order.h"

#include "LangUtils.h"

namespace tessaly::dictionary {

bool comesBefore(const DictionaryInfo& a, const DictionaryInfo& b) {
    const auto isBefore = [&](boost::optional<utilities::Locale> DictionaryInfo::*language) {
        return langutils::displayTextOr(a.*language, "Other") <
               langutils::displayTextOr(b.*language, "Other");
    };
    return isBefore(a.languageFrom == b.languageFrom ? &DictionaryInfo::languageTo
                                                     : &DictionaryInfo::languageFrom);
}

} // namespace tessaly::dictionary
