#pragma once

#include <services/export.h>

#include <string>

/// The device's morphology data: CODE.aff (rules) and CODE.dic (words) of each language in one directory. New
/// ones get ready in hidden directories there. Host paths; functions throw an exception whose text says what
/// is wrong. Any thread, and other processes may do the same at the same time.
namespace tessaly::services {

/// What the names of directories begin with in which files get ready; see base::Staging.
constexpr const char* stagingPrefix = ".new-";

/// Unpacks a language's archive, which must hold these two plain files of a bearable size and nothing else.
/// This one and the next are exported for what feeds them hostile archives.
TESSALY_SERVICES_API void unpackLanguage(const std::string& archive, const std::string& language,
                                         const std::string& directory);

/// Makes the two files in a staging directory those of the device, instead of older ones: both, or neither if
/// it throws. Once they begin to move, another process finishes what a killed one began.
TESSALY_SERVICES_API void placeLanguage(const std::string& stagingDirectory, const std::string& language);

/// Finishes or removes what killed processes left. Throws nothing; a failure is logged.
void clearLeftovers();

} // namespace tessaly::services
