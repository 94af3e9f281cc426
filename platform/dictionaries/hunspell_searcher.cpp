#include <dictionaries/hunspell_searcher.h>

namespace tessaly::morphology {

std::string HunspellSearcher::defaultDir() {
    return "/mnt/ext1/system/hunspell";
}

} // namespace tessaly::morphology
