#pragma once

#include <QString>

namespace tessaly::simulator {

/// Held by everything of a running simulator, so that no second one uses its device. It is free once all
/// processes that share it by fork have ended, however they ended.
class DeviceLock {
public:
    /// Waits for up to eight seconds for what an earlier run leaves behind. Throws std::runtime_error when
    /// the device stays in use or can't be written to.
    explicit DeviceLock(const QString& root);
    ~DeviceLock();
    DeviceLock(const DeviceLock&) = delete;
    DeviceLock& operator=(const DeviceLock&) = delete;

private:
    int m_file = -1;
};

} // namespace tessaly::simulator
