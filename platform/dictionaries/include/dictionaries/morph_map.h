#pragma once

#include <dictionaries/export.h>

#include <QHash>
#include <QObject>
#include <QVariant>

namespace tessaly::dictionary {

/// What a morphology map knows of one language, for bindings to follow. Owned by its map. GUI thread.
class TESSALY_DICTIONARIES_API MorphValue : public QObject {
    Q_OBJECT
    /// Invalid, which is undefined in QML, when there is none.
    Q_PROPERTY(QVariant value READ value NOTIFY valueChanged)

public:
    explicit MorphValue(QObject* parent);

    [[nodiscard]] QVariant value() const { return m_value; }
    void setValue(const QVariant& value);

Q_SIGNALS:
    void valueChanged(const QVariant& value);

private:
    QVariant m_value;
};

/// Something known of each language, to be followed language by language. GUI thread.
class TESSALY_DICTIONARIES_API MorphMap : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The entry of a language ("pt", "pt_BR"). One per code, owned by the map.
    Q_INVOKABLE tessaly::dictionary::MorphValue* at(const QString& code);

protected:
    /// What is known now.
    [[nodiscard]] virtual QVariant find(const QString& code) const = 0;
    /// Called for each new entry before its value is looked up.
    virtual void beginFollowing() {}
    /// Looks up the values of all entries anew.
    void refresh();

    /// The codes under which data for this language may be filed: its own, then that of the language without
    /// the region. None when it isn't a language code.
    static QStringList candidates(const QString& code);

private:
    QHash<QString, MorphValue*> m_values;
};

} // namespace tessaly::dictionary
