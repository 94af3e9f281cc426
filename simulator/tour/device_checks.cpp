#include "device_checks.h"

#include "step_log.h"

#include <dictionaries/dictionary_file.h>
#include <dictionaries/routes.h>
#include <dictionaries/vl_api.h>
#include <utilities/cfg_wrapper.h>

namespace tessaly::tour {

std::string currentDictionary() {
    return utilities::CfgWrapper("/mnt/ext1/system/config/global.cfg", 0)
        .readIfExists<std::string>("dictionary")
        .value_or("");
}

int installedDictionaries() {
    const auto dictionaries = vl_api::enumDictionaries();
    for (const auto& entry : dictionaries)
        require(dictionary::open(entry.absolutePath()).isRight(),
                QStringLiteral("%1 doesn't open").arg(QString::fromStdString(entry.absolutePath())));
    return int(dictionaries.size());
}

int dictionariesToDownload() {
    const auto offered = dictionary::Routes::listDictionaries(dictionary::default_base_url());
    require(offered.isRight(), QStringLiteral("the server lists no dictionaries"));
    return int(
        dictionary::DictionaryInfo::subtractLists(offered.getRight(), vl_api::enumDictionaries()).size());
}

} // namespace tessaly::tour
