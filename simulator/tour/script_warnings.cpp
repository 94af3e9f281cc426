#include "script_warnings.h"

#include "step_log.h"

#include <QMutex>
#include <QStringList>

namespace tessaly::tour {

namespace {

QMutex mutex; // workers complain too
QStringList complaints;
QtMessageHandler previous = nullptr;

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        const QMutexLocker lock(&mutex);
        complaints << message;
    }
    previous(type, context, message);
}

} // namespace

ScriptWarnings::ScriptWarnings() {
    previous = qInstallMessageHandler(collect);
}

ScriptWarnings::~ScriptWarnings() {
    qInstallMessageHandler(previous);
}

void ScriptWarnings::requireNone() {
    QStringList found;
    {
        const QMutexLocker lock(&mutex);
        found.swap(complaints);
    }
    require(found.isEmpty(), QStringLiteral("complaint: ") + found.join(QStringLiteral("; ")));
}

} // namespace tessaly::tour
