#pragma once

#include <QString>

#include <stdexcept>

namespace tessaly::server {

/// What went wrong with a file, a database or an archive, in words for the operator.
class Failure : public std::runtime_error {
public:
    explicit Failure(const QString& message);

    QString message() const;
};

} // namespace tessaly::server
