#pragma once

#include <vellum/export.h>

#include <string>

namespace vellum {

/// Replaces the host file by `content`: written aside in the same folder, synced, renamed. A reader in
/// another process, and a power cut, find the old file or the new one. False, with the old file in place, on
/// any error. Any thread.
TESSALY_VELLUM_API bool replaceFile(const std::string& hostPath, const std::string& content);

} // namespace vellum
