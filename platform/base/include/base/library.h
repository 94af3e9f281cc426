#pragma once

#include <base/export.h>

#include <string>

namespace tessaly::base {

/// A symbol of one of our libraries: `library` is NAME for the file libNAME.so beside this one. It is loaded
/// when first asked for, and stays, so that whoever never needs what it brings does without. Throws
/// std::runtime_error if there is no such library or symbol. Any thread.
[[nodiscard]] TESSALY_BASE_API void* loadSymbol(const std::string& library, const char* symbol);

} // namespace tessaly::base
