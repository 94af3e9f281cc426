#include "failure.h"

namespace tessaly::installer {

namespace {

bool isFull(const std::error_code& code) {
    return code == std::errc::no_space_on_device || code.value() == EDQUOT;
}

} // namespace

Failure::Failure(Code code, const std::system_error& error)
    : Failure(isFull(error.code()) ? Code::NoSpace : code, error.what()) {}

} // namespace tessaly::installer
