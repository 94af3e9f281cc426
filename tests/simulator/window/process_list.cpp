#include "process_list.h"

#include <QDir>
#include <QFile>
#include <unistd.h>

namespace {

QByteArray contentOf(pid_t process, const char* name) {
    QFile file(QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

QList<pid_t> processesWith(const QString& text) {
    QList<pid_t> found;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const pid_t process = name.toInt();
        if (process <= 0 || process == ::getpid())
            continue;
        // Both are empty for a zombie.
        if (contentOf(process, "cmdline").contains(text.toUtf8()) ||
            contentOf(process, "environ").contains(text.toUtf8()))
            found << process;
    }
    return found;
}

pid_t parentOf(pid_t process) {
    const QByteArray status = contentOf(process, "status");
    const auto at = status.indexOf("\nPPid:");
    return at < 0 ? 0 : status.mid(at + 6, 12).split('\n').constFirst().trimmed().toInt();
}
