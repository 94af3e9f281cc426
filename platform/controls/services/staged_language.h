#pragma once

#include <string>
#include <zip/file_descriptor.h>

namespace tessaly::services {

/// The hidden folder beside the device's morphology data where the files of one language are made ready.
/// Several may be at work at once, in other processes too. One thread.
class StagedLanguage {
public:
    /// Only chooses the folder's name.
    explicit StagedLanguage(const std::string& language);
    ~StagedLanguage() { remove(); }
    StagedLanguage(const StagedLanguage&) = delete;
    StagedLanguage& operator=(const StagedLanguage&) = delete;

    /// Clears what killed processes left and makes the folder. Throws an exception, as the next does.
    void create();

    /// Puts CODE.aff and CODE.dic in place of older ones: both, whatever happens meanwhile. Ends the object's
    /// use. Should the process be killed, the next create() or clearLeftovers() finishes what had begun.
    void putInPlace();

    /// Removes the folder, if there is one.
    void remove();

    [[nodiscard]] std::string devicePath() const;
    [[nodiscard]] std::string hostPath() const;

    /// Finishes or removes what killed processes left. A failure is logged.
    static void clearLeftovers();

private:
    std::string m_language;
    std::string m_name;
    zip::FileDescriptor m_lock{-1}; ///< tells the folder from one that a dead process left
};

} // namespace tessaly::services
