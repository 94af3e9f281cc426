#pragma once

#include <utilities/export.h>
#include <vellum/vellum.h>

#include <boost/optional.hpp>
#include <memory>
#include <string>

namespace tessaly::utilities {

/// An open key-value file of the device, such as its settings:
///
///     CfgWrapper config("/mnt/ext1/system/config/global.cfg", 1);
///     WriteString(config.handle(), "dictionary", name.c_str());
///     const bool isSaved = config.saveAndClose();
///
/// Read as a whole when opened, closed without saving when destroyed. Two that write at the same time don't
/// see each other: the later one counts. One thread at a time.
class TESSALY_UTILITIES_API CfgWrapper {
public:
    /// `path` is a device path; mode 0 reads, mode 1 reads and writes. An absent file is an empty one.
    CfgWrapper(const std::string& path, int mode);

    /// For the value functions of the system library. Null once closed.
    [[nodiscard]] vl_config* handle() const { return m_config.get(); }

    /// The value of a key, or nothing when it is absent or not a T (or closed). T is int or std::string.
    template<class T>
    [[nodiscard]] boost::optional<T> readIfExists(const std::string& key) const;

    /// False if the file could not be replaced; the old one is then still there.
    bool saveAndClose();
    void closeNoSave();

private:
    struct Close {
        void operator()(vl_config* config) const { CloseConfig(config); }
    };
    std::unique_ptr<vl_config, Close> m_config;
};

template<>
TESSALY_UTILITIES_API boost::optional<int> CfgWrapper::readIfExists(const std::string& key) const;
template<>
TESSALY_UTILITIES_API boost::optional<std::string> CfgWrapper::readIfExists(const std::string& key) const;

} // namespace tessaly::utilities
