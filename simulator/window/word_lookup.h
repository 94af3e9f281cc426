#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tessaly::simulator {

/// Looks words up in the dictionary that the device's settings name, whoever changes them. GUI thread.
class WordLookup : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Name of the chosen dictionary; empty when there is none.
    Q_PROPERTY(QString dictionary READ dictionary NOTIFY dictionaryChanged)
    /// Of the last word that was looked up.
    Q_PROPERTY(Outcome outcome READ outcome NOTIFY looked)
    Q_PROPERTY(QString word READ word NOTIFY looked)
    Q_PROPERTY(QString entry READ entry NOTIFY looked) ///< plain text, empty unless found

public:
    enum Outcome { Found, NoEntry, NoDictionary, DictionaryMissing, DictionaryBroken };
    Q_ENUM(Outcome)

    explicit WordLookup(QObject* parent = nullptr);

    [[nodiscard]] QString dictionary() const { return m_dictionary; }
    [[nodiscard]] Outcome outcome() const { return m_outcome; }
    [[nodiscard]] QString word() const { return m_word; }
    [[nodiscard]] QString entry() const { return m_entry; }

    /// A word as it stands in a text. Words that are only punctuation are ignored.
    Q_INVOKABLE void lookUp(const QString& text);

Q_SIGNALS:
    void dictionaryChanged();
    void looked();

private:
    void readSetting();
    Outcome find(const QStringList& forms);

    QFileSystemWatcher m_watcher;
    QString m_dictionary;
    Outcome m_outcome = NoDictionary;
    QString m_word;
    QString m_entry;
};

} // namespace tessaly::simulator
