#pragma once

#include "dictionarieslistmodel.h"

#include <dictionaries/dictionary_info.h>
#include <dictionaries/vl_api.h>

#include <vector>

/// What the list model writes to the structured log in the device's debug mode; nothing otherwise. Any
/// thread.
namespace tessaly::dictionary::traces {

using Records = std::vector<DictionaryInfo>;
using Installed = vl_api::DictionariesBimap;
using Items = std::vector<DictionariesListModel::Item>;

void verbose(const char* label, const Records& records);
void verbose(const char* label, const Installed& dictionaries);
void verbose(const char* label, const Items& items);

void fromNet(const Records& records);
void installedBeside(const Records& records, const Installed& dictionaries);

} // namespace tessaly::dictionary::traces
