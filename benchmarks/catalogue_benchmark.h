#pragma once

#include "measurement.h"

namespace tessaly::benchmarks {

/// Seconds to replace 2,000 catalogue records, deleteAll() and addMultiple(), against the same rows written
/// by plain Qt SQL in one transaction on a connection with the same settings. Both end with all rows in the
/// database file and no log beside it. Less is better.
Measurement measureCatalogueReplace();

/// Seconds of list() with 10,000 records, against a plain Qt SQL loop over the same columns. Less is better.
Measurement measureCatalogueList();

/// Seconds of merging 100,000 fetched records with as many stored ones, against one pass with a hash table
/// over the same; and against the time for 10,000. Less is better.
Measurement measureMerge100k();
Measurement measureMergeGrowth();

} // namespace tessaly::benchmarks
