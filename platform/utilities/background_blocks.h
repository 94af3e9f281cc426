#pragma once

#include <functional>
#include <future>
#include <string>
#include <string_view>

namespace tessaly::utilities {

/// Collects data into big blocks and hands one after the other to a function in the background, while the
/// next is collected. One thread.
class BackgroundBlocks {
public:
    explicit BackgroundBlocks(std::function<void(std::string_view)> function);

    /// Throws what the function threw for an earlier block; the same goes for finish().
    void add(std::string_view data);
    /// Hands over the rest and waits for the function.
    void finish();

private:
    void handOver();

    std::function<void(std::string_view)> m_function;
    std::string m_collected;
    std::string m_block;      ///< the background's while m_done is pending
    std::future<void> m_done; // the last: its destructor waits
};

} // namespace tessaly::utilities
