#include "fmt.h"

#include <QCoreApplication>

namespace tessaly::controls {

QString Fmt::sprintfTr(const QString& key, const QVariantList& arguments) {
    const QStringList pieces =
        QCoreApplication::translate("keys", key.toUtf8().constData()).split(QStringLiteral("%s"));
    QString text = pieces.first();
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        const QVariant argument = arguments.value(i - 1);
        const QString value = argument.isNull() ? QString() : argument.toString();
        QString rest = pieces[i];
        if (value.isEmpty() && rest.startsWith(QLatin1Char(' ')) &&
            (text.isEmpty() || text.endsWith(QLatin1Char(' '))))
            rest.remove(0, 1);
        text += value + rest;
    }
    return text.trimmed();
}

} // namespace tessaly::controls
