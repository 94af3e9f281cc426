#pragma once

#include <base/export.h>

#include <string>

namespace tessaly::base {

/// Host directory that stands for the device's "/": the value of TESSALY_DEVICE_ROOT, without a trailing
/// slash. Empty (the default, and always so on a real device) means that device paths are host paths. Read
/// anew at each call. Started programs inherit it through the environment. Any thread, as long as no other
/// changes the environment.
TESSALY_BASE_API std::string deviceRoot();

/// The host path of an absolute device path. Map a path once, just before it is opened.
TESSALY_BASE_API std::string hostPath(const std::string& devicePath);

} // namespace tessaly::base
