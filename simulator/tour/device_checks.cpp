#include "device_checks.h"

#include "step_log.h"

#include <dictionaries/dictionary_file.h>
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

} // namespace tessaly::tour
