#pragma once

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace tessaly::installer {

/// How a run ended, as the status file's "out_code" tells it. Others know the numbers: they stay.
enum class Code : int {
    Installed = 0,
    NotFinished = -1,       ///< still running, or killed before it had a result
    BadArguments = -2,      ///< not called with a package name, or the name leaves the download folder
    PackageUnreadable = -3, ///< absent, not a plain file, or the disk failed to read it
    NotAPackage = -4,       ///< no zip archive, cut short, or damaged inside
    NoManifest = -5,        ///< an archive without manifest.json
    BadManifest = -6,       ///< too long, malformed, or listing what no package may hold
    BadEntry = -7,          ///< an entry that is no plain file, is there twice, or isn't listed
    MissingFile = -8,       ///< a listed file isn't in the archive
    WrongSize = -9,         ///< a file is longer than listed, or the archive tells another size
    NoSpace = -10,          ///< the secure storage, or the dictionaries' storage, is too full
    WrongChecksum = -11,    ///< a file's SHA-256 isn't the listed one
    NotADictionary = -12,   ///< a file doesn't open as a dictionary
    StagingFailed = -13,    ///< can't unpack to the secure storage
    PlacingFailed = -14,    ///< can't put a dictionary among the installed ones
    Busy = -15,             ///< another installer runs and doesn't end; the status file stays that one's
    StatusUnwritable = -16, ///< can't write the status file, so only the log tells
    Unexpected = -17,       ///< anything else, such as too little memory
};

/// Why a run ends without having installed anything. Thrown where it is found and caught once, where the run
/// began, so that everything in between is taken back on the way.
class Failure : public std::runtime_error {
public:
    Failure(Code code, const std::string& text)
        : std::runtime_error(text)
        , m_code(code) {}
    /// The system refused something. A full storage is NoSpace whatever `code` says.
    Failure(Code code, const std::system_error& error)
        : Failure(error.code() == std::errc::no_space_on_device || error.code().value() == EDQUOT
                      ? Code::NoSpace
                      : code,
                  error.what()) {}

    [[nodiscard]] Code code() const { return m_code; }

private:
    Code m_code;
};

/// What the call returns. Where the system refuses something in it, that is a Failure with this code.
template<class Call>
auto failingWith(Code code, const Call& call) {
    try {
        return call();
    } catch (const std::system_error& error) {
        throw Failure(code, error);
    }
}

} // namespace tessaly::installer
