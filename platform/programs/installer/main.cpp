// The device's package installer: puts the dictionaries of a downloaded package among the installed ones.
// Others follow it through its status file.

#include "failure.h"
#include "install.h"
#include "status_file.h"
#include "storage.h"

#include <base/log.h>
#include <clocale>
#include <exception>
#include <optional>

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
    ts_print_log2(1, __FILE__, __LINE__, __func__, "The installation failed (%d): %s", int(code),
                  text.c_str());
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
