#include "modes.h"
#include "window.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>
#include <cstdio>
#include <ctime>
#include <stdexcept>

namespace tessaly::benchmarks {

namespace {

constexpr int patienceMs = 10'000;

std::int64_t nowNs() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::int64_t(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

/// Of this program alone: what getrusage() tells may be that of the process that started it.
long peakKiB() {
    QFile file(QStringLiteral("/proc/self/status"));
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray key = "VmHWM:";
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith(key))
                return line.mid(key.size()).trimmed().split(' ').constFirst().toLong();
        }
    }
    throw std::runtime_error("can not tell the peak memory");
}

} // namespace

int showFirstFrame(QLatin1String document, bool needsRows, std::int64_t startNs) {
    const double startMs = processMs();
    QQmlApplicationEngine engine;
    QQuickWindow& window = loadWindow(engine, document);
    QObject::connect(&window, &QQuickWindow::frameSwapped, &engine, [&] {
        const std::int64_t endNs = nowNs();
        const QQuickItem* const list = needsRows ? findList(window) : nullptr;
        const int rows = list ? rowsInSight(*list) : 0;
        if (needsRows && rows == 0)
            return;
        std::printf("%.3f %ld %d %.3f\n", double(endNs - startNs) / 1e6, peakKiB(), rows,
                    processMs() - startMs);
        std::fflush(stdout);
        QCoreApplication::quit();
    });
    QTimer::singleShot(patienceMs, &engine, [] {
        std::fprintf(stderr, "tessaly-bench-window: no frame came with what was expected\n");
        QCoreApplication::exit(1);
    });
    return QCoreApplication::exec();
}

} // namespace tessaly::benchmarks
