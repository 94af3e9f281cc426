#pragma once

#include <QList>
#include <QString>
#include <sys/types.h>

/// Running processes, zombies excluded, in whose command line or initial environment this text stands.
QList<pid_t> processesWith(const QString& text);

/// 0 for a process that is gone.
pid_t parentOf(pid_t process);
