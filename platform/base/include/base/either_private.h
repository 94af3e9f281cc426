#pragma once

#include <base/export.h>

namespace tessaly::EitherPrivate {

/// Whether reading the value of a failed Either ends the process. False until set. Any thread.
TESSALY_BASE_API bool shouldExitOnError();
TESSALY_BASE_API void setShouldExitOnError(bool value);

} // namespace tessaly::EitherPrivate
