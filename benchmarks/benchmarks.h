#pragma once

#include <string>

/// What tessaly-bench measures, each against a reference in the same run; less is better, unless said.
/// Functions throw std::runtime_error when what they measure fails.
namespace tessaly::benchmarks {

/// One line of the table, in seconds or in what the measuring function says. The ratio is ours to reference.
struct Measurement {
    std::string name;
    double ours = 0;
    double reference = 0;
    double ratio = 0;
};

/// Seconds to replace 2,000 catalogue records, deleteAll() and addMultiple(), against the same rows written
/// by plain Qt SQL in one transaction on a connection with the same settings. Both end with all rows in the
/// database file and no log beside it.
Measurement measureCatalogueReplace();

/// Seconds of list() with 10,000 records, against a plain Qt SQL loop over the same columns.
Measurement measureCatalogueList();

/// Seconds of merging 100,000 fetched records with as many stored ones, against one pass with a hash table
/// over the same; and how many times longer that takes than with 10,000, against the same figure of the pass.
/// That may be twenty: 10,000 records still fit a PC's cache.
Measurement measureMerge100k();
Measurement measureMergeGrowth();

/// Processor seconds of refreshData() with 500 installed dictionaries, half of them without a catalogue
/// record, against opening those 250 and reading their metadata with plain SQLite calls.
Measurement measureRefresh500();

/// MB/s of the downloader, the check of the manifest included, against the curl program: a package of 64 MB
/// from a server in this process. More is better. Works in a device root of its own.
Measurement measureDownload();

/// Seconds that the installer takes for a package of 16 dictionaries, checks and syncing included, against
/// unpacking the same archive with bsdtar and summing its files with sha256sum. Works in a device of its own.
Measurement measureInstall();

// Of the proxy model, in seconds, with rows in 40 languages in no order.

/// A source's reset, after which the proxy groups 10,000 rows anew, against a bare pass that reads the two
/// roles of every row.
Measurement measureGroup10k();

/// The same against a QSortFilterProxyModel that sorts by the language.
Measurement measureGroup10kSortedProxy();

/// What measureGroup10k() does, with 100,000 rows.
Measurement measureGroup100k();

/// Every cell of 10,000 rows read through the proxy, against the same read from the source.
Measurement measureProxyData();

// Of the interface with 500 installed dictionaries, without a display (software renderer). References are of
// the same kind, in the same setting.

/// Milliseconds from the start of a process to the first frame that shows rows, loading the plugin and
/// reading the catalogue included, against a process that shows an empty QML window.
Measurement measureFirstFrame();

/// Peak resident memory of the same processes up to then, in KiB.
Measurement measureMemory();

/// Milliseconds of processor time from the start of the program's main() to that frame, likewise.
Measurement measureColdStart();

/// Milliseconds of processor time until the hidden interface shows its rows again, against the first time.
Measurement measureFirstFrameAgain();

/// Milliseconds of processor time, of the median page, from the page key to the frame with the next page,
/// against a plain list of two-line texts; and until the program is idle again.
Measurement measurePageLatency();
Measurement measurePageScroll();

// A journey through the interface by touch and one by keys: that with the higher figure.

/// Frames that change something on the screen, against the changes that the user's steps ought to take.
Measurement measureScreenUpdates();
/// Frames that change nothing, against the same.
Measurement measureUnchangedFrames();
/// Pixels that change when one dictionary is marked, against those of its row and of the button that counts
/// the marks; and when a page turns, against those of the list.
Measurement measureMarkArea();
Measurement measurePageArea();

/// Frames and wake-ups in ten seconds in which nobody does anything, against these.
Measurement measureIdle();

} // namespace tessaly::benchmarks
