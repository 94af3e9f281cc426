#pragma once

#include <tests/support/seeded_random.h>

#include <QProcess>
#include <functional>
#include <unistd.h>

namespace tessaly::tests {

/// Starts a process that runs for about so long again and again, kills it at any moment, and has the rest
/// checked, until it came before the process's end so many times. Returns how many times it did.
inline int killAtAnyMoment(int times, qint64 nanoseconds, const std::function<void(QProcess&)>& start,
                           const std::function<void()>& check) {
    std::mt19937 random = seededRandom();
    double duration = double(nanoseconds) / 1000;
    int killed = 0;
    for (int i = 0; i < 10 * times && killed < times; ++i) {
        QProcess process;
        start(process);
        ::usleep(unsigned(duration * double(random() % 1000) / 1000));
        process.kill();
        process.waitForFinished(-1);
        const bool wasKilled = process.exitStatus() == QProcess::CrashExit;
        killed += wasKilled ? 1 : 0;
        duration *= wasKilled ? 1.05 : 0.8; // the machine's load changes meanwhile
        check();
    }
    return killed;
}

} // namespace tessaly::tests
