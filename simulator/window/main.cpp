// Shows a simulated device in a window, with the switches of what surrounds it.

#include "keeper.h"
#include "options.h"
#include "window.h"

#include <QDir>
#include <QLockFile>
#include <cstdio>
#include <stdexcept>

using namespace tessaly::simulator;

namespace {

/// Keeps a second simulator off the device. The processes that share it by fork hold it until the last has
/// ended, so that the next one waits for what a killed one leaves behind.
void occupy(QLockFile& lock) {
    constexpr int patienceMs = 8000;
    lock.setStaleLockTime(0); // only a dead process's lock is void
    if (lock.tryLock(patienceMs))
        return;
    throw std::runtime_error((lock.error() == QLockFile::LockFailedError
                                  ? "another simulator uses the device: "
                                  : "can not use the device's folder: ") +
                             lock.fileName().toStdString());
}

} // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    Options options = parseOptions(arguments);
    if (!options.help.isEmpty()) {
        std::fputs(qUtf8Printable(options.help), stdout);
        return 0;
    }
    if (!options.error.isEmpty()) {
        std::fprintf(stderr, "tessaly-simulator: %s\n", qUtf8Printable(options.error));
        return 2;
    }
    options.root = QDir(options.root).absolutePath();
    try {
        QDir(options.root).mkpath(QStringLiteral("var"));
        QLockFile lock(options.root + QStringLiteral("/var/simulator.lock"));
        occupy(lock);
        return keep([&] { return runWindow(options, argv[0]); });
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessaly-simulator: %s\n", error.what());
        return 1;
    }
}
