#pragma once

#include "catalogue/catalogue.h"
#include "support/zip_writer.h"

#include <QFile>

#include <stop_token>

namespace tessaly::server {

/// Name of a dictionary's kept conversion: another as soon as anything that goes into the file changes.
QString convertedName(const DictionaryRecord& record);

/// Makes the dictionary file of a device (an SQLite database) from the dictd files and puts it at `path`,
/// compressed as packages need it. For any thread, though one at a time for a path; throws Failure, also when
/// asked to stop.
///
/// Table `metadata` (key, value): what the catalogue says of the dictionary. Table `entries`:
/// - `headword`: as the dictionary writes it, capitals included;
/// - `definition`: the whole text of the entry, lines separated by a line feed;
/// - `folded`: the headword composed (NFC) and case-folded, for searches that overlook capitals.
/// Both `headword` and `folded` are indexed; neither is unique.
void convertDictionary(const DictionaryRecord& record, const QString& path, const std::stop_token& stop);

/// A conversion that was kept, open at the beginning of its compressed data. Throws Failure.
class ConvertedDictionary {
public:
    explicit ConvertedDictionary(const QString& path);

    const Compressed& content() const { return m_content; }
    QIODevice& data() { return m_file; }

private:
    QFile m_file;
    Compressed m_content;
};

} // namespace tessaly::server
