#include "web_access.h"

#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>

namespace tessaly::utilities {

namespace {

/// From the library that stands beside this one.
const WebAccess& load() {
    Dl_info self{};
    ::dladdr(reinterpret_cast<void*>(&load), &self);
    const auto path = std::filesystem::path(self.dli_fname).replace_filename(TESSALY_CURL_LIBRARY);
    void* const library = ::dlopen(path.c_str(), RTLD_NOW);
    void* const access = library ? ::dlsym(library, "tessaly_webAccess") : nullptr;
    if (!access)
        throw std::runtime_error(std::string("cannot load what makes requests: ") + ::dlerror());
    return *reinterpret_cast<const WebAccess* (*)()>(access)();
}

} // namespace

const WebAccess& WebAccess::instance() {
    static const WebAccess& loaded = load();
    return loaded;
}

} // namespace tessaly::utilities
