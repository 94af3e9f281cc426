#include "device_lock.h"

#include <QDir>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace tessaly::simulator {

DeviceLock::DeviceLock(const QString& root) {
    const QString folder = root + QStringLiteral("/var");
    QDir().mkpath(folder);
    const std::string path = (folder + QStringLiteral("/simulator.lock")).toStdString();
    m_file = ::open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0644);
    if (m_file < 0)
        throw std::runtime_error("can not use the device's folder: " + path + ": " + std::strerror(errno));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(8);
    while (::flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        if (std::chrono::steady_clock::now() >= end) {
            ::close(m_file);
            throw std::runtime_error("another simulator uses the device " + root.toStdString());
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

DeviceLock::~DeviceLock() {
    ::close(m_file);
}

} // namespace tessaly::simulator
