#pragma once

#include <ctime>
#include <functional>
#include <memory>
#include <string>

namespace tessaly::utilities {

/// Measures how long a scope runs, by a clock that nobody sets.
///
///     const auto measurement = FuncTimeMeasurement::prettyLog("fetch", false, false);
///
/// It measures once, from its constructor to its destructor; there is no pause and no lap. One thread.
class FuncTimeMeasurement {
public:
    /// `onFinish` gets the elapsed seconds when the object is destroyed.
    explicit FuncTimeMeasurement(const std::function<void(double)>& onFinish);
    ~FuncTimeMeasurement();
    FuncTimeMeasurement(const FuncTimeMeasurement&) = delete;
    FuncTimeMeasurement& operator=(const FuncTimeMeasurement&) = delete;

    /// A measurement that writes a trace record when it ends, and one when it begins if `logStart`.
    static std::shared_ptr<FuncTimeMeasurement> prettyLog(const std::string& name, bool colored,
                                                          bool logStart);

private:
    std::function<void()> m_onDestroy;
    timespec m_start{};
};

} // namespace tessaly::utilities
