#pragma once

#include <utilities/export.h>

#include <cstdint>
#include <string>

/// Names of C++ types. Any thread.
namespace tessaly::utilities::KTypeAdditional {

/// The readable, fully qualified name for what std::type_info::name() gives; that text itself if it is none.
TESSALY_UTILITIES_API std::string demangle(const char* mangled);
/// FNV-1a of the text.
TESSALY_UTILITIES_API std::uint64_t hash64(const std::string& text);

} // namespace tessaly::utilities::KTypeAdditional
