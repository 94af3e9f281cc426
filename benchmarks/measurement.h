#pragma once

#include <string>

namespace tessaly::benchmarks {

/// One line of the table, in seconds or in what the measuring function says. The ratio is ours to reference.
struct Measurement {
    std::string name;
    double ours = 0;
    double reference = 0;
    double ratio = 0;
};

} // namespace tessaly::benchmarks
