#pragma once

#include <QString>

#include <optional>

namespace tessaly::server {

class Service;

/// Each adds the addresses of one subject to the service's HTTP server; the service has to outlive that.
void addCatalogueRoutes(Service& service);
void addPackageRoutes(Service& service);
void addMorphologyRoutes(Service& service);
void addControlRoutes(Service& service);

/// A record or package number as an address has it: decimal digits, from 1 on.
inline std::optional<int> parseNumber(const QString& text) {
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    const bool plain = !text.startsWith(u'+') && text.trimmed().size() == text.size();
    return isNumber && plain && number > 0 ? std::optional(number) : std::nullopt;
}

} // namespace tessaly::server
