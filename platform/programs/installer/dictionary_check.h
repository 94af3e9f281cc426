#pragma once

#include <string>

namespace tessaly::installer {

/// Throws a Failure with NotADictionary unless the file at the host path is a database with a dictionary's
/// tables. `name` is for the message.
void requireDictionary(const std::string& path, const std::string& name);

} // namespace tessaly::installer
