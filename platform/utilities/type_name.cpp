#include <utilities/type_name.h>

#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace tessaly::utilities::KTypeAdditional {

std::string demangle(const char* mangled) {
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> name(abi::__cxa_demangle(mangled, nullptr, nullptr, &status),
                                                      std::free);
    return status == 0 ? name.get() : mangled;
}

std::uint64_t hash64(const std::string& text) {
    std::uint64_t hash = 0xcbf29ce484222325ULL;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
    return hash;
}

} // namespace tessaly::utilities::KTypeAdditional
