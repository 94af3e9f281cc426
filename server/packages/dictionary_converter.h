#pragma once

#include "catalogue/dictionary_record.h"

#include <stop_token>

namespace tessaly::server {

/// Name of the kept conversion of a dictionary: another one as soon as anything that goes into the file
/// changes.
QString convertedName(const DictionaryRecord& record);

/// Makes the dictionary file of a device (an SQLite database) from the dictd files, or takes the one kept in
/// `folder`; returns its path. For any thread; throws Failure, also when asked to stop.
///
/// Table `metadata` (key, value): what the catalogue says of the dictionary. Table `entries`:
/// - `headword`: as the dictionary writes it, capitals included;
/// - `definition`: the whole text of the entry, lines separated by a line feed;
/// - `folded`: the headword composed (NFC) and case-folded, for searches that overlook capitals.
/// Both `headword` and `folded` are indexed; neither is unique.
QString convertDictionary(const DictionaryRecord& record, const QString& folder, const std::stop_token& stop);

} // namespace tessaly::server
