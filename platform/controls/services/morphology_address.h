#pragma once

#include <QString>
#include <optional>
#include <string>

namespace tessaly::services {

/// The language whose morphology data are at this address: "pt_BR" for "http://HOST/.../pt_BR.zip". Nothing
/// if it isn't an http or https address of that form. The code is fit to be a file name.
std::optional<std::string> languageAt(const QString& url);

} // namespace tessaly::services
