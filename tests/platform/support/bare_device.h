#pragma once

#include <tests/support/files.h>
#include <vellum/device_state.h>

#include <QTemporaryDir>

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
    void write(const QString& devicePath, const QByteArray& content) const {
        writeFile(m_root.path() + devicePath, content);
    }

private:
    QTemporaryDir m_root;
};

} // namespace tessaly::tests
