#pragma once

#include <dictionaries/export.h>

#include <QObject>

namespace tessaly::dictionary {

/// Knows the key without which the server gives no morphology data.
class TESSALY_DICTIONARIES_API MorphSecretProvider : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// As the device's configuration has it now; empty when it has none. Any thread.
    Q_INVOKABLE QString apiKey() const;
};

} // namespace tessaly::dictionary
