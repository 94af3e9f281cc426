#pragma once

#include <base/export.h>

#include <string>

namespace tessaly::base {

/// A symbol of a library of ours, `NAME` for the file libNAME.so beside this one. The library is loaded when
/// it is first asked for, and stays: whoever never needs what it brings does without. Throws
/// std::runtime_error. Any thread.
[[nodiscard]] TESSALY_BASE_API void* loadSymbol(const std::string& library, const char* symbol);

} // namespace tessaly::base
