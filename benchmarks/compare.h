#pragma once

#include "benchmarks.h"

#include <algorithm>
#include <ctime>

namespace tessaly::benchmarks {

/// Seconds of processor time that this thread spends.
template<class Work>
double processorSeconds(Work work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
    };
    const double start = now();
    work();
    return now() - start;
}

/// The fastest of some rounds, in which ours and the reference take turns: for work of this thread in memory,
/// which whatever else runs on the machine can only slow down.
template<class Ours, class Reference>
Measurement compareFastest(const char* name, int rounds, Ours ours, Reference reference) {
    Measurement result{name, processorSeconds(ours), processorSeconds(reference)};
    for (int i = 1; i < rounds; ++i) {
        result.ours = std::min(result.ours, processorSeconds(ours));
        result.reference = std::min(result.reference, processorSeconds(reference));
    }
    result.ratio = result.ours / result.reference;
    return result;
}

} // namespace tessaly::benchmarks
