#pragma once

#include "installer_codes.h"

#include <stdexcept>
#include <string>

namespace tessaly::installer {

/// Why a run ends without having installed anything. Thrown where it is found and caught once, where the run
/// began, so that everything in between is taken back on the way.
class Failure : public std::runtime_error {
public:
    Failure(Code code, const std::string& text)
        : std::runtime_error(text)
        , m_code(code) {}

    [[nodiscard]] Code code() const { return m_code; }

private:
    Code m_code;
};

/// The failure of a system call, `error` being its errno. A full storage is NoSpace whatever `code` says.
[[nodiscard]] Failure systemFailure(Code code, const std::string& action, int error);

} // namespace tessaly::installer
