#include "current_dictionary.h"

#include <common_utilities/log_line.h>
#include <vellum/vellum.h>

namespace tessaly::dictionary {

namespace {
constexpr auto settingsFile = "/mnt/ext1/system/config/global.cfg";
constexpr auto key = "dictionary";
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
    LogLine(2) << "can not write `" << settingsFile << '`';
    return false;
}

bool CurrentDictionary::open(const vl_api::Dictionary& dictionary) {
    int opened = OpenDictionary(dictionary.name.c_str());
    LogLine(4) << "============================ is_ok is: [" << opened << ']';
    if (!opened) {
        opened = OpenDictionary(dictionary.file.c_str());
        LogLine(4) << "2 ====================================== is_ok is: [" << opened << ']';
    }
    if (!opened)
        LogLine(2) << "ERROR OPENING DICTIONARY `" << dictionary.name << "` NOT FOUND.";
    return opened;
}

} // namespace tessaly::dictionary
