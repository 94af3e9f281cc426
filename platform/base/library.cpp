#include <base/library.h>

#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>

namespace tessaly::base {

void* loadSymbol(const std::string& library, const char* symbol) {
    Dl_info self{};
    ::dladdr(reinterpret_cast<void*>(&loadSymbol), &self);
    const auto path = std::filesystem::path(self.dli_fname).replace_filename("lib" + library + ".so");
    void* const handle = ::dlopen(path.c_str(), RTLD_NOW);
    void* const found = handle ? ::dlsym(handle, symbol) : nullptr;
    if (!found)
        throw std::runtime_error(std::string("cannot load a library: ") + ::dlerror());
    return found;
}

} // namespace tessaly::base
