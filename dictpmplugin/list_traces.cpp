#include "list_traces.h"

#include <common_utilities/log_line.h>

#include <QDebug>
#include <sstream>

namespace tessaly::dictionary::traces {

namespace {

std::ostream& writeLine(std::ostream& out, const DictionaryInfo& record) {
    return out << record;
}

std::ostream& writeLine(std::ostream& out, const vl_api::Dictionary& dictionary) {
    return out << "{ name: " << dictionary.name << ", file: " << dictionary.file
               << ", directory: " << dictionary.directory << " }";
}

std::ostream& writeLine(std::ostream& out, const DictionaryRow& row) {
    return writeLine(out, row.info);
}

template<class List>
std::string text(const List& list, const char* separator) {
    std::ostringstream out;
    for (const auto& element : list)
        writeLine(out << separator, element);
    return out.str();
}

template<class List>
void writeVerbose(const char* label, const List& list) {
    if (vl_debug_mode())
        LogLine(log::cb::verbose) << label << " (" << list.size() << ")" << text(list, "\n");
}

} // namespace

void verbose(const char* label, const Records& records) {
    writeVerbose(label, records);
}
void verbose(const char* label, const Installed& dictionaries) {
    writeVerbose(label, dictionaries);
}
void verbose(const char* label, const Rows& rows) {
    writeVerbose(label, rows);
}

void fromNet(const Records& records) {
    if (vl_debug_mode())
        LogLine(log::cb::trace) << "DICTS FROM NET (" << records.size() << ")" << text(records, "\n");
}

void installedBeside(const Records& records, const Installed& dictionaries) {
    if (vl_debug_mode()) {
        LogLine(log::cb::trace) << "DICTS FROM NET (" << records.size() << ") - INSTALLED DICTIONARIES ("
                                << dictionaries.size() << ")" << text(dictionaries, "\t");
    }
}

void dump(const void* model, const Rows& shown, const Rows& notInstalled) {
    const auto write = [](const Rows& rows) {
        for (const DictionaryRow& row : rows)
            qDebug() << "    - " << row.info.name.c_str() << ", provider: " << row.info.provider.c_str()
                     << ", selected: " << (row.selectedToDownload ? "true" : "false");
    };
    qDebug() << "-------- DictionariesListModel dump (" << model << ") --------";
    qDebug() << "  ------ dict info [" << shown.size() << "]:";
    write(shown);
    qDebug() << "  ------ m_notInstalledDictionaries [" << notInstalled.size() << "]:";
    write(notInstalled);
    qDebug() << "-------- End dump -------------------------------------------";
}

} // namespace tessaly::dictionary::traces
