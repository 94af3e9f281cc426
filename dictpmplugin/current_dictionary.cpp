#include "current_dictionary.h"

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
    ts_print_log2(2, "dictpmplugin/current_dictionary", __LINE__, __PRETTY_FUNCTION__, "can not write `%s`",
                  settingsFile);
    return false;
}

} // namespace tessaly::dictionary
