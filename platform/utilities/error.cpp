#include <utilities/error.h>

#include <ostream>

namespace tessaly {

std::ostream& operator<<(std::ostream& out, const Error& error) {
    const char* separator = "";
    for (const Error::Entry& entry : error.err) {
        out << separator << entry.where;
        if (entry.position >= 0)
            out << ':' << entry.position;
        out << ": " << entry.what;
        separator = "; ";
    }
    return out;
}

} // namespace tessaly
