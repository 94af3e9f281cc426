#include <utilities/cfg_wrapper.h>

namespace tessaly::utilities {

CfgWrapper::CfgWrapper(const std::string& path, int mode)
    : m_config(OpenConfig(path.c_str(), mode)) {}

template<>
boost::optional<int> CfgWrapper::readIfExists(const std::string& key) const {
    if (!m_config)
        return boost::none;
    // A text that isn't a number reads as whatever the fallback is, so two fallbacks tell it from a 0.
    const int number = ReadInt(m_config.get(), key.c_str(), 0);
    if (number == 0 && ReadInt(m_config.get(), key.c_str(), 1) != 0)
        return boost::none;
    return number;
}

template<>
boost::optional<std::string> CfgWrapper::readIfExists(const std::string& key) const {
    if (!m_config || !HasKey(m_config.get(), key.c_str()))
        return boost::none;
    return ReadString(m_config.get(), key.c_str(), "");
}

bool CfgWrapper::saveAndClose() {
    const bool saved = m_config && SaveConfig(m_config.get());
    m_config.reset();
    return saved;
}

void CfgWrapper::closeNoSave() {
    m_config.reset();
}

} // namespace tessaly::utilities
