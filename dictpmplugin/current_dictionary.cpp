#include "current_dictionary.h"

#include <vellum/vellum.h>

namespace tessaly::dictionary {

namespace {
constexpr auto settingsFile = "/mnt/ext1/system/config/global.cfg";
constexpr auto key = "dictionary";
constexpr auto logFile = "dictpmplugin/current_dictionary";
} // namespace

CurrentDictionary::CurrentDictionary(Access access)
    : m_config(settingsFile, int(access)) {}

std::string CurrentDictionary::name() const {
    return m_config.readIfExists<std::string>(key).value_or("");
}

bool CurrentDictionary::change(const std::string& name) {
    WriteString(m_config.handle(), key, name.c_str());
    if (m_config.saveAndClose())
        return true;
    ts_print_log2(2, logFile, __LINE__, __PRETTY_FUNCTION__, "can not write `%s`", settingsFile);
    return false;
}

bool CurrentDictionary::open(const vl_api::Dictionary& dictionary) {
    int opened = OpenDictionary(dictionary.name.c_str());
    ts_print_log2(4, logFile, __LINE__, __PRETTY_FUNCTION__, "============================ is_ok is: [%d]",
                  opened);
    if (!opened) {
        opened = OpenDictionary(dictionary.file.c_str());
        ts_print_log2(4, logFile, __LINE__, __PRETTY_FUNCTION__,
                      "2 ====================================== is_ok is: [%d]", opened);
    }
    if (!opened) {
        ts_print_log2(2, logFile, __LINE__, __PRETTY_FUNCTION__, "ERROR OPENING DICTIONARY `%s` NOT FOUND.",
                      dictionary.name.c_str());
    }
    return opened;
}

} // namespace tessaly::dictionary
