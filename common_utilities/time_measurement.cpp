#include "time_measurement.h"

#include "log_line.h"

namespace tessaly::utilities {

FuncTimeMeasurement::FuncTimeMeasurement(const std::function<void(double)>& onFinish)
    : m_onDestroy([this, onFinish] {
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        onFinish(double(now.tv_sec - m_start.tv_sec) +
                 double(now.tv_nsec - m_start.tv_nsec) / 1'000'000'000.0);
    }) {
    clock_gettime(CLOCK_MONOTONIC, &m_start);
}

FuncTimeMeasurement::~FuncTimeMeasurement() {
    m_onDestroy();
}

std::shared_ptr<FuncTimeMeasurement> FuncTimeMeasurement::prettyLog(const std::string& name, bool colored,
                                                                    bool logStart) {
    const std::string prefix = colored ? ansicolor::beginSeq(38, 2, 0xDF4A8A, 1) : "";
    const std::string suffix = colored ? "\033[0m" : "";
    if (logStart)
        LogLine(log::cb::trace) << prefix << "function `" << name << "` called. awaiting for completion."
                                << suffix;
    return std::make_shared<FuncTimeMeasurement>([prefix, name, suffix](double seconds) {
        LogLine(log::cb::trace) << prefix << "function `" << name << "` call time: " << seconds << " s ("
                                << int(seconds * 1000.0) << " ms)" << suffix;
    });
}

} // namespace tessaly::utilities
