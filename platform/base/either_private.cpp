#include <base/either_private.h>

#include <atomic>

namespace tessaly::EitherPrivate {

namespace {
std::atomic<bool> exitOnError{false};
}

bool shouldExitOnError() {
    return exitOnError;
}

void setShouldExitOnError(bool value) {
    exitOnError = value;
}

} // namespace tessaly::EitherPrivate
