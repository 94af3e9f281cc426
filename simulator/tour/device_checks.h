#pragma once

#include <string>

namespace tessaly::tour {

/// The reader's dictionary as the settings have it, or empty.
std::string currentDictionary();
/// How many dictionaries there are, each of which opens; StepFailed otherwise.
int installedDictionaries();
/// How many of the server's dictionaries aren't installed; StepFailed if the server doesn't say.
int dictionariesToDownload();

} // namespace tessaly::tour
