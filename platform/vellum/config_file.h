#pragma once

#include <map>
#include <optional>
#include <string>

namespace vellum {

/// A key-value file, one `key=value` a line. In values a backslash, a line feed and a carriage return are
/// escaped, in keys the equals sign too. Lines without an equals sign are dropped.
class ConfigFile {
public:
    /// What isn't a plain file, or is longer than any such file ever gets, is empty.
    static ConfigFile load(const std::string& hostPath);

    [[nodiscard]] std::optional<std::string> value(const std::string& key) const;
    [[nodiscard]] int intValue(const std::string& key, int fallback) const;
    void setValue(const std::string& key, const std::string& value) { m_values[key] = value; }

    /// Atomic: a reader in another process, and a power cut, find the old file or the new one. False leaves
    /// the old file in place.
    [[nodiscard]] bool save(const std::string& hostPath) const;

private:
    std::map<std::string, std::string> m_values;
};

} // namespace vellum
