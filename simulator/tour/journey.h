#pragma once

#include "step_log.h"

#include <vector>

namespace tessaly::fixture {
class TestDevice;
}

namespace tessaly::tour {

/// A user's way through the product, on its real parts: from a fetched catalogue to dictionaries that are
/// downloaded, chosen, read in, and deleted again.
class Journey {
public:
    Journey(fixture::TestDevice& device, StepLog& log)
        : m_device(device)
        , m_log(log) {}

    /// Two dictionaries installed, the first one chosen and a word looked up in it. False if there are none
    /// to install.
    bool downloadAndRead();
    /// Deletes what downloadAndRead installed and nothing else.
    void deleteAgain();

private:
    void removeDictionary(int serverId);

    fixture::TestDevice& m_device;
    StepLog& m_log;
    std::vector<int> m_serverIds; ///< of the two dictionaries
};

} // namespace tessaly::tour
