#pragma once

#include <string>

namespace tessaly::utilities {

/// Whom a request for this address is sent to: "SCHEME://HOST:PORT". Empty if it isn't a whole address.
std::string urlOrigin(const std::string& url);

} // namespace tessaly::utilities
