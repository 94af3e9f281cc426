#pragma once

#include <utilities/type_name.h>

#include <cstdint>
#include <string>
#include <typeinfo>

/// The name of a class, for registering it with QML:
///
///     KType<tessaly::dictionary::MorphExplorer>().head() // "MorphExplorer"
///
/// Names of templates are not what QML can take. Any thread.
template<class T>
class KType {
public:
    KType()
        : m_name(tessaly::utilities::KTypeAdditional::demangle(mangled()))
        , m_hash(tessaly::utilities::KTypeAdditional::hash64(m_name)) {}

    /// The class's own name, without namespaces.
    [[nodiscard]] std::string head() const { return m_name.substr(m_name.rfind(':') + 1); }
    [[nodiscard]] const std::string& name() const { return m_name; } ///< fully qualified
    [[nodiscard]] std::uint64_t hash() const { return m_hash; }

private:
    /// A leading asterisk marks the name of a type that is local to its library.
    static const char* mangled() {
        const char* const name = typeid(T).name();
        return *name == '*' ? name + 1 : name;
    }

    std::string m_name;
    std::uint64_t m_hash;
};
