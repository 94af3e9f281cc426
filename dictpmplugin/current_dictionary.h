#pragma once

#include <utilities/cfg_wrapper.h>

#include <string>

namespace tessaly::dictionary {

/// The reader's setting of which dictionary it uses, open for as long as the object lives. One thread.
class CurrentDictionary {
public:
    enum class Access { Read = 0, ReadWrite = 1 };
    explicit CurrentDictionary(Access access);

    /// The dictionary's name; empty when none is chosen.
    [[nodiscard]] std::string name() const;
    /// False, with the old setting in place, when it could not be written; that is logged. Closes.
    bool change(const std::string& name);
    void closeNoSave() { m_config.closeNoSave(); }

private:
    utilities::CfgWrapper m_config;
};

} // namespace tessaly::dictionary
