#pragma once

#include <base/staging.h>

#include <string>
#include <vector>

namespace tessaly::installer {

/// Puts unpacked dictionaries among the installed ones, all or none as long as the process lives. Each
/// arrives in a hidden directory beside them first, is synced there, and gets its own name only then: a
/// process killed in commit() may leave some of them in place, but none half there. Throws a Failure.
class Placement {
public:
    /// Removes what killed runs left.
    Placement();

    /// Moves a file into the hidden directory, or copies it from another file system.
    void bring(const std::string& path, const std::string& name);

    /// Gives all files that were brought their names, in place of older dictionaries. A failure undoes what
    /// was done, except where the file system can't exchange two files: there the new dictionary stays.
    void commit();

private:
    enum class State { Hidden, Added, Exchanged, Replaced };
    struct File {
        std::string hidden; ///< host path; holds the older dictionary once exchanged
        std::string target; ///< host path
        State state = State::Hidden;
    };

    static void putInPlace(File& file);
    static void takeBack(File& file);

    base::Staging m_staging;
    std::vector<File> m_files;
};

} // namespace tessaly::installer
