#pragma once

#include <QHash>
#include <QString>
#include <functional>

/// What tests do, in a row of a table: "VERB ARGUMENTS; VERB ARGUMENTS".
class Script {
public:
    using Verb = std::function<void(const QString& arguments)>;

    void add(const char* verb, const Verb& function) { m_verbs.insert(QString::fromUtf8(verb), function); }

    void run(const QString& text) const {
        for (const QString& step : text.split(u';', Qt::SkipEmptyParts)) {
            const Verb verb = m_verbs.value(step.trimmed().section(u' ', 0, 0));
            if (!verb)
                qFatal("no such step: %s", qPrintable(step));
            verb(step.trimmed().section(u' ', 1));
        }
    }

private:
    QHash<QString, Verb> m_verbs;
};
