#pragma once

#include <string>

namespace tessaly::dictionary {

/// Whether a text is a whole http or https address.
bool isWebAddress(const std::string& text);

} // namespace tessaly::dictionary
