#include "wait.h"

#include "step_log.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace tessaly::tour {

void waitUntil(const std::function<bool()>& holds, const QString& what, int timeoutMs) {
    if (holds())
        return;
    QEventLoop loop;
    QTimer timer;
    const QDeadlineTimer deadline(timeoutMs);
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (holds() || deadline.hasExpired())
            loop.quit();
    });
    timer.start(5);
    loop.exec();
    require(holds(), QStringLiteral("waited in vain for ") + what);
}

} // namespace tessaly::tour
