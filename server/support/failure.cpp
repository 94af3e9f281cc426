#include "support/failure.h"

namespace tessaly::server {

Failure::Failure(const QString& message)
    : std::runtime_error(message.toStdString()) {}

QString Failure::message() const {
    return QString::fromUtf8(what());
}

} // namespace tessaly::server
