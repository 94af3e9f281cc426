// Shows a simulated device in a window, with the switches of what surrounds it.

#include "device_lock.h"
#include "keeper.h"
#include "options.h"
#include "window.h"

#include <QDir>
#include <cstdio>
#include <exception>

using namespace tessaly::simulator;

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
        const DeviceLock lock(options.root);
        return keep([&] { return runWindow(options, argv[0]); });
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessaly-simulator: %s\n", error.what());
        return 1;
    }
}
