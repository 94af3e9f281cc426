#pragma once

#include <functional>
#include <vellum/vellum.h>

namespace tessaly {

/// Keeps the device awake while it lives. Several may live at once, on any threads.
///
///     const DeferSleep awake("refresh");
///
/// `name` labels the request, isn't owned and must outlive the object.
class DeferSleep {
public:
    explicit DeferSleep(const char* name);
    ~DeferSleep();
    DeferSleep(const DeferSleep&) = delete;
    DeferSleep& operator=(const DeferSleep&) = delete;

private:
    vl_sleep_preventor m_preventor;
    std::function<void()> m_onDestroy;
};

} // namespace tessaly
