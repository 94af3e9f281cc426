#include "config_file.h"

#include <base/device_root.h>
#include <base/file.h>
#include <vellum/vellum.h>

#include <QSaveFile>
#include <charconv>
#include <fcntl.h>
#include <sstream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vellum {

namespace {

namespace base = tessaly::base;

constexpr off_t longestFile = 1 << 20;

/// Empty for what isn't a plain file of a bearable length: a pipe would block, a sparse file fill the memory.
std::string contentOf(const std::string& hostPath) {
    const base::FileDescriptor file(::open(hostPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > longestFile)
        return {};
    std::string content(std::size_t(status.st_size), '\0');
    const ssize_t count = ::read(file.get(), content.data(), content.size());
    content.resize(count > 0 ? std::size_t(count) : 0);
    return content;
}

/// QSaveFile syncs the file, but not the directory that has its new name.
bool syncDirectoryOf(const std::string& hostPath) {
    try {
        base::syncToDisk(hostPath.substr(0, hostPath.rfind('/') + 1));
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

std::string escaped(const std::string& text, bool isKey) {
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\\\";
        else if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else if (c == '=' && isKey)
            result += "\\e";
        else
            result += c;
    }
    return result;
}

std::string unescaped(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        const char c = text[++i];
        result += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 'e' ? '=' : c;
    }
    return result;
}

} // namespace

ConfigFile ConfigFile::load(const std::string& hostPath) {
    ConfigFile config;
    std::istringstream file(contentOf(hostPath));
    for (std::string line; std::getline(file, line);) {
        const auto equals = line.find('=');
        if (equals != std::string::npos)
            config.m_values[unescaped(line.substr(0, equals))] = unescaped(line.substr(equals + 1));
    }
    return config;
}

std::optional<std::string> ConfigFile::value(const std::string& key) const {
    const auto found = m_values.find(key);
    if (found == m_values.end())
        return std::nullopt;
    return found->second;
}

int ConfigFile::intValue(const std::string& key, int fallback) const {
    const std::string text = value(key).value_or("");
    int number = fallback;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : fallback;
}

bool ConfigFile::save(const std::string& hostPath) const {
    std::string content;
    for (const auto& [key, value] : m_values)
        content += escaped(key, true) + '=' + escaped(value, false) + '\n';
    QSaveFile file(QString::fromStdString(hostPath));
    return content.size() <= longestFile && file.open(QIODevice::WriteOnly) &&
           file.write(content.data(), qint64(content.size())) == qint64(content.size()) && file.commit() &&
           syncDirectoryOf(hostPath);
}

} // namespace vellum

struct vl_config {
    std::string hostPath;
    bool writable = false;
    vellum::ConfigFile file;
};

vl_config* OpenConfig(const char* path, int mode) {
    const std::string hostPath = tessaly::base::hostPath(path);
    return new vl_config{hostPath, mode == 1, vellum::ConfigFile::load(hostPath)};
}

int ReadInt(const vl_config* config, const char* key, int fallback) {
    return config->file.intValue(key, fallback);
}

std::string ReadString(const vl_config* config, const char* key, const char* fallback) {
    return config->file.value(key).value_or(fallback);
}

bool HasKey(const vl_config* config, const char* key) {
    return config->file.value(key).has_value();
}

void WriteInt(vl_config* config, const char* key, int value) {
    config->file.setValue(key, std::to_string(value));
}

void WriteString(vl_config* config, const char* key, const char* value) {
    config->file.setValue(key, value);
}

bool SaveConfig(vl_config* config) {
    return config->writable && config->file.save(config->hostPath);
}

void CloseConfig(vl_config* config) {
    delete config;
}
