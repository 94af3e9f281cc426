// The device's package installer: puts the dictionaries of a downloaded package among the installed ones.
// Others follow it through its status file.

#include "failure.h"
#include "install.h"
#include "installer_lock.h"
#include "status_file.h"

#include <algorithm>
#include <base/log.h>
#include <cctype>
#include <clocale>
#include <exception>
#include <optional>
#include <ostream>

using namespace tessaly::installer;

namespace {

constexpr auto patience = std::chrono::minutes(2);

std::string packageName(int argc, char** argv) {
    if (argc != 3 || std::string(argv[1]) != "-package_name")
        throw Failure(Code::BadArguments, "usage: dictpackageinstaller.app -package_name NAME");
    return argv[2];
}

/// Call it while an exception is handled. Logs it and returns its code.
Code logFailure() {
    Code code = Code::Unexpected;
    std::string text;
    try {
        throw;
    } catch (const Failure& failure) {
        code = failure.code();
        text = failure.what();
    } catch (const std::exception& error) {
        text = error.what();
    }
    // Names from a package may hold anything; each record is one line.
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return std::iscntrl(c) != 0; }, '?');
    tessaly::log::cb::error(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
        return out << "The installation failed (" << int(code) << "): " << text;
    });
    return code;
}

} // namespace

int main(int argc, char** argv) {
    // Names in packages are UTF-8 whatever the user's language is.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    StatusFile status;
    // Held until the result is written: the next installer must not find its status file overwritten.
    std::optional<InstallerLock> lock;
    try {
        lock.emplace(patience);
        status.begin();
        install(packageName(argc, argv), status);
        status.succeed();
        return 0;
    } catch (...) {
        const Code code = logFailure();
        if (code != Code::Busy)
            status.fail(code);
        return 1;
    }
}
