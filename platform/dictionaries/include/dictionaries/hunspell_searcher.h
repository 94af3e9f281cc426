#pragma once

#include <dictionaries/export.h>

#include <string>

namespace tessaly::morphology {

/// Where the device keeps its morphology data.
class TESSALY_DICTIONARIES_API HunspellSearcher {
public:
    /// Device path of the folder.
    static std::string defaultDir();
};

} // namespace tessaly::morphology
