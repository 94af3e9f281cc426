#include "background_blocks.h"

#include <utility>

namespace tessaly::utilities {

namespace {

constexpr std::size_t blockSize = 2 << 20;

} // namespace

BackgroundBlocks::BackgroundBlocks(std::function<void(std::string_view)> function)
    : m_function(std::move(function)) {}

void BackgroundBlocks::add(std::string_view data) {
    m_collected += data;
    if (m_collected.size() >= blockSize)
        handOver();
}

void BackgroundBlocks::finish() {
    handOver();
    m_done.get();
}

void BackgroundBlocks::handOver() {
    if (m_done.valid())
        m_done.get();
    std::swap(m_block, m_collected);
    m_collected.clear();
    m_done = std::async(std::launch::async, [this] { m_function(m_block); });
}

} // namespace tessaly::utilities
