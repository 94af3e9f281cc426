#include "failure.h"

#include <cerrno>
#include <system_error>

namespace tessaly::installer {

Failure systemFailure(Code code, const std::string& action, int error) {
    const bool isFull = error == ENOSPC || error == EDQUOT;
    return {isFull ? Code::NoSpace : code, action + ": " + std::generic_category().message(error)};
}

} // namespace tessaly::installer
