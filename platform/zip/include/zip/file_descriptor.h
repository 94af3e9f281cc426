#pragma once

#include <base/file.h>

namespace tessaly::zip {

using base::FileDescriptor;

} // namespace tessaly::zip
