#pragma once

#include <QString>
#include <functional>

/// How a piece of code ended that was run in a forked child, and what it wrote to stderr.
struct ChildEnd {
    int exitStatus = -1; ///< -1 if a signal ended it
    int signal = 0;      ///< 0 if it exited
    QString output;
};

/// For code that ends the process. Leaves with status 0 if `work` returns. Fork before threads start.
ChildEnd runInChild(const std::function<void()>& work);
