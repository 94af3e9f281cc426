#pragma once

namespace tessaly::tour {

/// Catches what Qt and the documents complain of. One for the process; from its construction on. GUI thread.
class ScriptWarnings {
public:
    ScriptWarnings();
    ~ScriptWarnings();
    ScriptWarnings(const ScriptWarnings&) = delete;
    ScriptWarnings& operator=(const ScriptWarnings&) = delete;

    /// StepFailed with the complaints since the last call, if there are any.
    static void requireNone();
};

} // namespace tessaly::tour
