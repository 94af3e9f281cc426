#pragma once

#include <QObject>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace tessaly::controls {

/// Texts with arguments. GUI thread.
class Fmt : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The translation of `key` with each "%s" replaced by the next of `arguments`. An argument that is
    /// undefined, null or missing is rendered as nothing, together with a blank that it leaves over.
    Q_INVOKABLE static QString sprintfTr(const QString& key, const QVariantList& arguments);
};

} // namespace tessaly::controls
