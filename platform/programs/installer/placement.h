#pragma once

#include <string>
#include <vector>

namespace tessaly::installer {

/// Puts unpacked dictionaries among the installed ones, all or none. Each arrives under a hidden name first,
/// is synced there, and gets its own name only then, so that no dictionary is ever half there. Only one at a
/// time.
class Placement {
public:
    /// Removes what killed runs left. Throws a Failure.
    Placement();
    ~Placement();
    Placement(const Placement&) = delete;
    Placement& operator=(const Placement&) = delete;

    /// Moves a file into the folder, or copies it from another file system. Throws a Failure.
    void bring(const std::string& path, const std::string& name);

    /// Gives all files that were brought their names, in place of older dictionaries. Throws a Failure after
    /// having undone what was done; only where the file system can't exchange two files is a replaced
    /// dictionary kept as it is.
    void commit();

private:
    enum class State { Hidden, Added, Exchanged, Replaced };
    struct File {
        std::string hidden; ///< host path; holds the older dictionary once exchanged
        std::string target; ///< host path
        State state = State::Hidden;
    };

    void putInPlace(File& file) const;
    void takeBack(File& file) const;

    std::string m_folder;
    std::vector<File> m_files;
};

} // namespace tessaly::installer
