#include <vellum/clock.h>
#include <vellum/vellum.h>

#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <QTimer>

namespace {

/// Armed timers by name. Touched on the application's thread only; the application owns the timers.
QHash<QByteArray, QPointer<QTimer>>& armedTimers() {
    static QHash<QByteArray, QPointer<QTimer>> timers;
    return timers;
}

} // namespace

void SetHardTimerEx(const char* name, void (*function)(void*), void* context, int milliseconds) {
    const QByteArray key(name);
    QMetaObject::invokeMethod(
        qApp,
        [=] {
            delete armedTimers().take(key).data();
            auto* const timer = new QTimer(qApp);
            timer->setSingleShot(true);
            timer->setTimerType(Qt::PreciseTimer);
            QObject::connect(timer, &QTimer::timeout, timer, [=] {
                armedTimers().remove(key);
                timer->deleteLater();
                function(context);
            });
            armedTimers().insert(key, timer);
            timer->start(vellum::clock::scaled(milliseconds));
        },
        Qt::AutoConnection);
}
