#pragma once

#include <cstdint>

namespace tessaly::installer {

/// Throws a Failure with NoSpace unless files of this many bytes altogether fit on the secure storage and, if
/// that is another file system, once more among the dictionaries.
void requireSpace(std::int64_t bytes);

} // namespace tessaly::installer
