#pragma once

#include "benchmarks.h"

#include <QElapsedTimer>
#include <algorithm>
#include <ctime>
#include <vector>

namespace tessaly::benchmarks {

/// Seconds that the work takes.
template<class Work>
double seconds(Work work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e9;
}

/// The medians of some rounds: for work of which others do a part, the disk for one.
inline Measurement compareMedians(const char* name, std::vector<double> ours, std::vector<double> reference) {
    const auto median = [](std::vector<double>& values) {
        std::sort(values.begin(), values.end());
        return values[values.size() / 2];
    };
    Measurement result{name, median(ours), median(reference)};
    result.ratio = result.ours / result.reference;
    return result;
}

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
