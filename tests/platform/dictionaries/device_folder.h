#pragma once

#include "../support/bare_device.h"

#include <QFile>
#include <QFileInfo>

namespace tessaly::tests {

/// A bare device with files of the test's choice, and what is logged meanwhile.
class DeviceFolder : public BareDevice {
public:
    /// Makes the folders on the way to it, too.
    void write(const QString& devicePath, const QByteArray& content) const {
        QDir().mkpath(QFileInfo(path(qUtf8Printable(devicePath))).path());
        QFile file(path(qUtf8Printable(devicePath)));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("can not write %s", qPrintable(file.fileName()));
    }

    LogSpy log;
};

} // namespace tessaly::tests
