#pragma once

#include "dictionary_row.h"

/// What the list model writes to the structured log in the device's debug mode only. Any thread.
namespace tessaly::dictionary::traces {

using Records = std::vector<DictionaryInfo>;
using Installed = vl_api::DictionariesBimap;
using Rows = std::vector<DictionaryRow>;

void verbose(const char* label, const Records& records);
void verbose(const char* label, const Installed& dictionaries);
void verbose(const char* label, const Rows& rows);

void fromNet(const Records& records);
void installedBeside(const Records& records, const Installed& dictionaries);

/// Both lists of a model, to Qt's debug log, whatever the mode.
void dump(const void* model, const Rows& shown, const Rows& notInstalled);

} // namespace tessaly::dictionary::traces
