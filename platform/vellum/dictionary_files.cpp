#include <vellum/dictionary_files.h>

#include <base/device_root.h>
#include <vellum/dictionary_database.h>
#include <vellum/vellum.h>

#include <QString>
#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace vellum {

namespace {

constexpr std::size_t longestName = 255; // bytes; the least that file systems offer

bool isAllowed(char32_t c) {
    switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Other_Format: // joiners, and what changes the direction
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return c != U'/' && c != U'\\';
    }
}

} // namespace

bool isDictionaryFileName(const std::string& name) {
    if (name.size() > longestName || name.size() <= dictionarySuffix.size() || name.starts_with('.') ||
        !name.ends_with(dictionarySuffix))
        return false;
    const auto isPlain = [](char c) { return c >= ' ' && c <= '~' && isAllowed(char32_t(c)); };
    if (std::all_of(name.begin(), name.end(), isPlain))
        return true;
    const QString text = QString::fromStdString(name);
    const std::u32string characters = text.toStdU32String();
    return text.toStdString() == name && std::all_of(characters.begin(), characters.end(), isAllowed);
}

} // namespace vellum

int OpenDictionary(const char* name) {
    const std::string wanted = name;
    const std::string file =
        wanted.ends_with(vellum::dictionarySuffix) ? wanted : wanted + std::string(vellum::dictionarySuffix);
    if (!vellum::isDictionaryFileName(file))
        return 0;
    for (const std::string_view folder : vellum::dictionaryFolders) {
        const std::string path = tessaly::base::hostPath(std::string(folder)) + '/' + file;
        std::error_code error;
        if (!std::filesystem::is_regular_file(path, error))
            continue;
        try {
            const vellum::DictionaryDatabase database(path);
            return 1;
        } catch (const std::runtime_error&) {
            return 0;
        }
    }
    return 0;
}
