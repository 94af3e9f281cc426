#pragma once

#include "measurement.h"

namespace tessaly::benchmarks {

/// Processor seconds of refreshData() with 500 installed dictionaries, half of them without a catalogue
/// record, against opening those 250 and reading their metadata with plain SQLite calls. Less is better.
Measurement measureRefresh500();

} // namespace tessaly::benchmarks
