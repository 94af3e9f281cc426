#pragma once

#include <QString>
#include <simulator/fixture/test_device.h>

namespace tessaly::benchmarks {

constexpr int installedCount = 500;

/// Host path of an installed dictionary, numbered from 0.
QString dictionaryPath(const fixture::TestDevice& device, int number);

/// Puts the dictionaries, 500 entries each and in several languages, on a fresh device, with a catalogue that
/// knows the first so many of them. Throws std::runtime_error.
void installDictionaries(const fixture::TestDevice& device, int cataloguedCount = installedCount);

} // namespace tessaly::benchmarks
