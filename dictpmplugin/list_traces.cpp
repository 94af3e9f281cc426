#include "list_traces.h"

#include <base/log.h>
#include <vellum/vellum.h>

#include <QDebug>
#include <ostream>

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
    return writeLine(out, row.info) << (row.selectedToDownload ? " selected" : "");
}

template<class List>
std::ostream& writeList(std::ostream& out, const List& list, const char* separator) {
    for (const auto& element : list)
        writeLine(out << separator, element);
    return out;
}

template<class List>
void writeVerbose(const char* label, const List& list) {
    if (!vl_debug_mode())
        return;
    log::cb::verbose(__FILE__, __LINE__, label, [&](std::ostream& out) -> std::ostream& {
        return writeList(out << label << " (" << list.size() << ")", list, "\n");
    });
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
    if (!vl_debug_mode())
        return;
    log::cb::trace(__FILE__, __LINE__, __PRETTY_FUNCTION__, [&](std::ostream& out) -> std::ostream& {
        return writeList(out << "DICTS FROM NET (" << records.size() << ")", records, "\n");
    });
}

void installedBeside(const Records& records, const Installed& dictionaries) {
    if (!vl_debug_mode())
        return;
    log::cb::trace(__FILE__, __LINE__, __PRETTY_FUNCTION__, [&](std::ostream& out) -> std::ostream& {
        out << "DICTS FROM NET (" << records.size() << ") - INSTALLED DICTIONARIES (" << dictionaries.size()
            << ")";
        return writeList(out, dictionaries, "\t");
    });
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
