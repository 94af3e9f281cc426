#pragma once

#include "measurement.h"

namespace tessaly::benchmarks {

// All in seconds, with rows in 40 languages in no order; less is better.

/// A source's reset, after which the proxy groups 10,000 rows anew, against a bare pass that reads the two
/// roles of every row.
Measurement measureGroup10k();

/// The same against a QSortFilterProxyModel that sorts by the language.
Measurement measureGroup10kSortedProxy();

/// What measureGroup10k() does, with 100,000 rows.
Measurement measureGroup100k();

/// Every cell of 10,000 rows read through the proxy, against the same read from the source.
Measurement measureProxyData();

} // namespace tessaly::benchmarks
