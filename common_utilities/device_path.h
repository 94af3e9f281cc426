#pragma once

#include <QString>
#include <string>

#if __has_include(<base/device_root.h>)
#include <base/device_root.h>
#endif

namespace tessaly {

/// The path to open for an absolute device path: the one place where the product maps a path.
///
///     QFile settings(openablePath(QStringLiteral("/mnt/ext1/system/config/global.cfg")));
///
/// With the device's own libraries, which have no device root, it is the path itself. It neither checks nor
/// creates anything. What is handed to the platform isn't mapped: platform calls do that inside. Any thread.
inline std::string openablePath(const std::string& devicePath) {
#if __has_include(<base/device_root.h>)
    return base::hostPath(devicePath);
#else
    return devicePath;
#endif
}

inline QString openablePath(const QString& devicePath) {
    return QString::fromStdString(openablePath(devicePath.toStdString()));
}

} // namespace tessaly
