#pragma once

#include <atomic>
#include <cstdint>

namespace tessaly::dictionary {

/// Sync state and error type of the running download together with the number of its run, in one atomic, so
/// that a worker whose run was cancelled or followed by another one can change neither. Any thread; no locks.
class RunState {
public:
    using Run = std::uint32_t;

    /// The values of the state.
    enum State {
        Idle = 0,
        Starting = 1,
        WaitingForPackage = 2,
        Downloading = 3,
        Installing = 4,
        DownloadFailed = 5,
        Cancelled = 6,
        InstallationFailed = 7,
        Installed = 8
    };
    /// The errors that a run itself finds; DictPMController::ErrorType has them all.
    enum Error {
        NoError = 0,
        EmptyIDsList = 1,
        LastQueryNotYetProcessed = 2,
        TaskIDError = 3,
        DownloadUrlError = 5
    };

    [[nodiscard]] int state() const { return m_value.load().state; }
    [[nodiscard]] int error() const { return m_value.load().error; }

    /// Begins another run and returns its number; state and error stay until the run changes them.
    Run begin();
    /// The run was cancelled, or another one has begun since.
    [[nodiscard]] bool isOver(Run run) const;

    // All of these return whether the value changed.

    /// Setting the cancelled state cancels the current run. What doesn't fit into the 16 and 8 bits that are
    /// kept of state and error is refused, and logged.
    bool setState(int state);
    bool setError(int error);
    /// For a worker, with the values above: nothing changes if its run is over.
    bool setState(Run run, int state);
    bool setError(Run run, int error);

private:
    struct Value {
        Run run = 0;
        std::int16_t state = 0;
        std::int8_t error = 0;
        bool cancelled = false;
    };
    static_assert(std::atomic<Value>::is_always_lock_free);

    /// Applies `change` (Value to Value) atomically; true if that made a difference.
    template<class Change>
    bool update(const Change& change);

    std::atomic<Value> m_value{Value{}};
};

} // namespace tessaly::dictionary
