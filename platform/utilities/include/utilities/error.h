#pragma once

#include <utilities/export.h>

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace tessaly {

/// The generic error of the utilities: what went wrong, outermost first.
struct Error {
    struct Entry {
        std::string where;          ///< what was being read
        std::int32_t position = -1; ///< byte or record number in it; -1 when there is none
        std::string what;
    };
    std::vector<Entry> err;
};

/// "where:position: what" for each entry, with "; " between them.
TESSALY_UTILITIES_API std::ostream& operator<<(std::ostream& out, const Error& error);

} // namespace tessaly
