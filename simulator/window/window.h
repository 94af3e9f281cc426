#pragma once

#include "options.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace tessaly::simulator {

class DeviceSwitches;

/// Shows the window for this process's device. It belongs to the engine, which needs the switches as long as
/// it lives. Null when it can't be shown; the reasons have been logged.
QQuickWindow* loadWindow(QQmlApplicationEngine& engine, DeviceSwitches& switches);

/// Shows the device of the options until it is closed, the process is asked to end (SIGTERM), or the options
/// say so. Returns the exit status. For a process of a keeper.
int runWindow(const Options& options, char* programName);

} // namespace tessaly::simulator
