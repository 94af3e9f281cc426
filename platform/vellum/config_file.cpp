#include "config_file.h"

#include <vellum/atomic_file.h>

#include <charconv>
#include <fstream>

namespace vellum {

namespace {

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
    std::ifstream file(hostPath, std::ios::binary);
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
    return replaceFile(hostPath, content);
}

} // namespace vellum
