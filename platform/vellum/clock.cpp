#include <vellum/clock.h>

#include "testing.h"

#include <vellum/vellum.h>

#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace vellum {

namespace {

struct Clock {
    std::mutex mutex;
    std::condition_variable_any wake;
    bool isQuitting = false;
    std::vector<int> sleeps;
    std::list<std::function<void()>> atQuit;
    std::atomic<double> speed{1.0};
};

Clock& theClock() {
    // Never destroyed: a worker may still sleep while static objects go.
    static auto* const instance = new Clock;
    return *instance;
}

/// Armed timers by name. Touched on the application's thread only; the application owns the timers.
QHash<QByteArray, QPointer<QTimer>>& armedTimers() {
    static QHash<QByteArray, QPointer<QTimer>> timers;
    return timers;
}

/// Before the application waits for its workers, which it does at the end of its destructor; not all leave by
/// way of the event loop.
void quitWithApplication() {
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, qApp, clock::beginQuit, Qt::DirectConnection);
    qAddPostRoutine(clock::beginQuit);
}
Q_COREAPP_STARTUP_FUNCTION(quitWithApplication)

} // namespace

void clock::setSpeed(double factor) {
    theClock().speed = factor;
}

int clock::scaled(int milliseconds) {
    return std::max(0, int(milliseconds / theClock().speed.load()));
}

void clock::beginQuit() {
    const std::lock_guard lock(theClock().mutex);
    theClock().isQuitting = true;
    theClock().wake.notify_all();
    for (const auto& function : theClock().atQuit)
        function();
}

bool clock::isQuitting() {
    const std::lock_guard lock(theClock().mutex);
    return theClock().isQuitting;
}

clock::OnQuit::OnQuit(std::function<void()> function) {
    const std::lock_guard lock(theClock().mutex);
    m_position = theClock().atQuit.insert(theClock().atQuit.end(), std::move(function));
    if (theClock().isQuitting)
        (*m_position)();
}

clock::OnQuit::~OnQuit() {
    const std::lock_guard lock(theClock().mutex);
    theClock().atQuit.erase(m_position);
}

void testing::resume() {
    const std::lock_guard lock(theClock().mutex);
    theClock().isQuitting = false;
}

std::vector<int> testing::takeSleeps() {
    const std::lock_guard lock(theClock().mutex);
    return std::exchange(theClock().sleeps, {});
}

} // namespace vellum

void vl_sleep(int milliseconds, const std::stop_token& stop) {
    std::unique_lock lock(vellum::theClock().mutex);
    // A long-running process must not collect waits that nobody asks for.
    if (vellum::theClock().sleeps.size() < 1000)
        vellum::theClock().sleeps.push_back(milliseconds);
    vellum::theClock().wake.wait_for(lock, stop,
                                     std::chrono::milliseconds(vellum::clock::scaled(milliseconds)),
                                     [] { return vellum::theClock().isQuitting; });
}

void SetHardTimerEx(const char* name, void (*function)(void*), void* context, int milliseconds) {
    const QByteArray key(name);
    QMetaObject::invokeMethod(
        qApp,
        [=] {
            auto& timers = vellum::armedTimers();
            delete timers.take(key).data();
            auto* const timer = new QTimer(qApp);
            timer->setSingleShot(true);
            timer->setTimerType(Qt::PreciseTimer);
            QObject::connect(timer, &QTimer::timeout, timer, [=] {
                vellum::armedTimers().remove(key);
                timer->deleteLater();
                function(context);
            });
            timers.insert(key, timer);
            timer->start(vellum::clock::scaled(milliseconds));
        },
        Qt::AutoConnection);
}
