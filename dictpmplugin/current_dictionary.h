#pragma once

#include <dictionaries/vl_api.h>
#include <utilities/cfg_wrapper.h>

#include <string>

namespace tessaly::dictionary {

/// The reader's setting of which dictionary it uses, open for as long as the object lives. One thread.
class CurrentDictionary {
public:
    enum class Access { Read = 0, ReadWrite = 1 };
    explicit CurrentDictionary(Access access);

    /// Makes the reader use a dictionary, by its name or else by its file name; the setting stays.
    static bool open(const vl_api::Dictionary& dictionary);

    /// The dictionary's name; empty when none is chosen.
    [[nodiscard]] std::string name() const;
    /// False, with the old setting in place, when it could not be written; that is logged. Closes.
    bool change(const std::string& name);
    void closeNoSave() { m_config.closeNoSave(); }

private:
    utilities::CfgWrapper m_config;
};

} // namespace tessaly::dictionary
