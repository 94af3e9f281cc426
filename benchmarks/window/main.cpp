// A window for tessaly-bench to measure, in a process of its own.

#include "modes.h"

#include <QGuiApplication>
#include <QStringList>
#include <cstdio>
#include <exception>

using namespace tessaly::benchmarks;

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const QString mode = arguments.value(1);
    const std::int64_t startNs = arguments.value(2).toLongLong();
    try {
        if (mode == u"empty")
            return showFirstFrame(QLatin1String("EmptyWindow.qml"), false, startNs);
        if (mode == u"interface")
            return showFirstFrame(QLatin1String("InterfaceWindow.qml"), true, startNs);
        if (mode == u"pages")
            return scrollPages();
        if (mode == u"again")
            return showAgain();
        if (mode == u"touch" || mode == u"keys")
            return playJourney(mode == u"touch");
        if (mode == u"idle")
            return stayIdle();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "tessaly-bench-window: %s\n", failure.what());
        return 1;
    }
    std::fprintf(stderr,
                 "usage: tessaly-bench-window empty|interface START_NS | pages|again|touch|keys|idle\n");
    return 2;
}
