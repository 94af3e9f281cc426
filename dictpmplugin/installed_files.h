#pragma once

#include <string>

namespace tessaly::dictionary {

/// Removes the plain file of exactly this name, or the link to one, from each of the device's four dictionary
/// folders. A name that isn't a plain file name removes nothing; a file that can't be removed is logged.
void removeInstalledFile(const std::string& file);

} // namespace tessaly::dictionary
