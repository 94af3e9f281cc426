#include <QByteArray>
#include <base/device_root.h>
#include <vellum/dictionary_folders.h>
#include <vellum/vellum.h>

#include <filesystem>
#include <memory>
#include <sqlite3.h>

namespace {

namespace fs = std::filesystem;

/// Immutable: nothing is written beside the file. Without views none of its own statements runs.
bool opensAsDictionary(const fs::path& file) {
    const std::string address =
        "file:" + QByteArray::fromStdString(file.string()).toPercentEncoding("/").toStdString() +
        "?immutable=1";
    sqlite3* handle = nullptr;
    const int opened =
        sqlite3_open_v2(address.c_str(), &handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(handle, sqlite3_close);
    return opened == SQLITE_OK &&
           sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr) == SQLITE_OK &&
           sqlite3_exec(handle, "SELECT 1 FROM metadata LIMIT 1; SELECT 1 FROM entries LIMIT 1", nullptr,
                        nullptr, nullptr) == SQLITE_OK;
}

} // namespace

int OpenDictionary(const char* name) {
    const std::string wanted = name;
    if (wanted.empty() || wanted.find('/') != std::string::npos)
        return 0;
    const std::string file =
        wanted.ends_with(vellum::dictionaryEnding) ? wanted : wanted + std::string(vellum::dictionaryEnding);
    for (const std::string_view folder : vellum::dictionaryFolders) {
        const fs::path path = fs::path(tessaly::base::hostPath(std::string(folder))) / file;
        std::error_code error;
        if (fs::is_regular_file(path, error))
            return opensAsDictionary(path) ? 1 : 0;
    }
    return 0;
}
