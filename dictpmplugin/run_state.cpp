#include "run_state.h"

#include <common_utilities/log_line.h>

#include <utility>

namespace tessaly::dictionary {

template<class Change>
bool RunState::update(const Change& change) {
    Value before = m_value.load();
    Value after = change(before);
    while (!m_value.compare_exchange_weak(before, after))
        after = change(before);
    return before.state != after.state || before.error != after.error;
}

namespace {

/// Whether a value can be kept; logs one that can't.
template<class Kept>
bool fits(int value, const char* what) {
    if (std::in_range<Kept>(value))
        return true;
    LogLine(2) << "no " << what << ": " << value;
    return false;
}

bool isOverFor(RunState::Run run, RunState::Run current, bool cancelled) {
    return run != current || cancelled;
}

} // namespace

RunState::Run RunState::begin() {
    Run begun = 0;
    update([&begun](Value value) {
        begun = ++value.run;
        value.cancelled = false;
        return value;
    });
    return begun;
}

bool RunState::isOver(Run run) const {
    const Value value = m_value.load();
    return isOverFor(run, value.run, value.cancelled);
}

bool RunState::setState(int state) {
    if (!fits<std::int16_t>(state, "sync state"))
        return false;
    return update([state](Value value) {
        value.state = std::int16_t(state);
        value.cancelled = value.cancelled || state == Cancelled;
        return value;
    });
}

bool RunState::setError(int error) {
    if (!fits<std::int8_t>(error, "error type"))
        return false;
    return update([error](Value value) {
        value.error = std::int8_t(error);
        return value;
    });
}

bool RunState::setState(Run run, int state) {
    return update([run, state](Value value) {
        if (!isOverFor(run, value.run, value.cancelled))
            value.state = std::int16_t(state);
        return value;
    });
}

bool RunState::setError(Run run, int error) {
    return update([run, error](Value value) {
        if (!isOverFor(run, value.run, value.cancelled))
            value.error = std::int8_t(error);
        return value;
    });
}

} // namespace tessaly::dictionary
