#pragma once

#include <base/log_sink.h>
#include <vellum/device_state.h>

#include <QDir>
#include <QStringList>
#include <QTemporaryDir>
#include <mutex>
#include <utility>

namespace tessaly::tests {

/// The device root of this process: a temporary folder with next to nothing in it, online.
class BareDevice {
public:
    BareDevice() {
        for (const char* folder : {"/var", "/mnt/ext1/Downloads", "/ebrmain/bin"})
            QDir().mkpath(path(folder));
        qputenv("TESSALY_DEVICE_ROOT", m_root.path().toUtf8());
        vellum::state::setNetworkReachable(true);
    }
    [[nodiscard]] QString path(const char* devicePath) const {
        return m_root.path() + QString::fromUtf8(devicePath);
    }

private:
    QTemporaryDir m_root;
};

/// The errors and warnings that were logged. Each test takes those it provokes; what is left is a failure.
class LogSpy {
public:
    LogSpy()
        : m_number(log::addListener([this](const log::Record& record) {
            const std::lock_guard lock(m_mutex);
            if (record.level <= log::Level::Warning)
                m_texts << QString::fromStdString(record.text);
        })) {}
    ~LogSpy() { log::removeListener(m_number); }
    LogSpy(const LogSpy&) = delete;
    LogSpy& operator=(const LogSpy&) = delete;

    QStringList take() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_texts, {});
    }

private:
    std::mutex m_mutex;
    QStringList m_texts;
    int m_number;
};

} // namespace tessaly::tests
