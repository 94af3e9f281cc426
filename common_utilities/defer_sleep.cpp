#include "defer_sleep.h"

namespace tessaly {

DeferSleep::DeferSleep(const char* name)
    : m_preventor{name, 0} {
    vl_sleep_preventor_start(&m_preventor);
    m_onDestroy = [this] { vl_sleep_preventor_stop(&m_preventor); };
}

DeferSleep::~DeferSleep() {
    if (m_onDestroy)
        m_onDestroy();
}

} // namespace tessaly
