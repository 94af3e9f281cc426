// Measures the product against references in the same run: a table, and what misses its bound, on stdout; the
// same figures as JSON. Only what the product and Qt log goes to stderr.

#include "benchmarks.h"

#include <QCoreApplication>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStringList>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>

using namespace tessaly::benchmarks;

namespace {

struct Benchmark {
    const char* name;
    Measurement (*measure)();
    std::optional<double> bound = std::nullopt; ///< none: the figure is shown only
    bool isAtMost = true;                       ///< else the bound is a least
    const char* relativeTo =
        nullptr; ///< the bound is a multiple of that benchmark's ratio, if it was measured
};

constexpr Benchmark benchmarks[] = {
    {"catalogue-replace", measureCatalogueReplace, 3},
    {"catalogue-list", measureCatalogueList, 1.3},
    {"merge-100k", measureMerge100k, 3},
    {"merge-growth", measureMergeGrowth, 1},
    {"refresh-500", measureRefresh500, 1.2},
    {"download", measureDownload, 0.95, false},
    {"install", measureInstall, 0.7},
    {"group-10k", measureGroup10k, 1.5},
    {"group-10k-sorted-proxy", measureGroup10kSortedProxy, 0.12},
    {"group-100k", measureGroup100k, 1.2, true, "group-10k"},
    {"proxy-data", measureProxyData, 1.4},
    {"first-frame", measureFirstFrame, 3},
    {"cold-start", measureColdStart},
    {"first-frame-again", measureFirstFrameAgain, 0.4},
    {"memory", measureMemory, 1.6},
    {"page-latency", measurePageLatency, 1.6},
    {"page-scroll", measurePageScroll, 3},
    {"screen-updates", measureScreenUpdates, 1.3},
    {"unchanged-frames", measureUnchangedFrames, 0},
    {"mark-area", measureMarkArea, 1.1},
    {"page-area", measurePageArea, 1},
    {"idle-wakeups", measureIdle, 0},
};

/// The bound that holds, given the ratios measured before; none if there is nothing to compare with.
std::optional<double> boundOf(const Benchmark& benchmark, const QHash<QString, double>& ratios) {
    if (!benchmark.relativeTo)
        return benchmark.bound;
    const auto other = ratios.find(QLatin1String(benchmark.relativeTo));
    return other == ratios.end() ? std::nullopt : std::optional(*benchmark.bound * *other);
}

bool isMet(const Benchmark& benchmark, std::optional<double> bound, double ratio) {
    return !bound || (benchmark.isAtMost ? ratio <= *bound : ratio >= *bound);
}

bool save(const QString& path, const QJsonArray& results) {
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(results).toJson()) > 0 &&
           file.commit();
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments().mid(1);
    if (arguments.isEmpty() || arguments.constFirst().startsWith(u'-')) {
        std::printf("usage: tessaly-bench RESULT.json [BENCHMARK...]\n");
        return 2;
    }
    const QStringList chosen = arguments.mid(1);
    for (const QString& name : chosen) {
        if (std::none_of(std::begin(benchmarks), std::end(benchmarks),
                         [&](const Benchmark& known) { return name == QLatin1String(known.name); })) {
            std::printf("no benchmark is called %s\n", qUtf8Printable(name));
            return 2;
        }
    }
    QJsonArray results;
    QHash<QString, double> ratios;
    bool allMet = true;
    std::printf("%-24s | %12s | %12s | %6s\n", "name", "ours", "reference", "ratio");
    for (const Benchmark& benchmark : benchmarks) {
        if (!chosen.isEmpty() && !chosen.contains(QLatin1String(benchmark.name)))
            continue;
        try {
            const Measurement measured = benchmark.measure();
            std::printf("%-24s | %12.6g | %12.6g | %6.3f\n", benchmark.name, measured.ours,
                        measured.reference, measured.ratio);
            std::fflush(stdout);
            const std::optional<double> bound = boundOf(benchmark, ratios);
            ratios.insert(QLatin1String(benchmark.name), measured.ratio);
            if (!isMet(benchmark, bound, measured.ratio)) {
                std::printf("%s: the ratio must be at %s %g\n", benchmark.name,
                            benchmark.isAtMost ? "most" : "least", *bound);
                allMet = false;
            }
            results.append(QJsonObject{{QStringLiteral("name"), QLatin1String(benchmark.name)},
                                       {QStringLiteral("ours"), measured.ours},
                                       {QStringLiteral("reference"), measured.reference},
                                       {QStringLiteral("ratio"), measured.ratio}});
        } catch (const std::exception& failure) {
            std::printf("%s: %s\n", benchmark.name, failure.what());
            allMet = false;
        }
    }
    if (!save(arguments.constFirst(), results)) {
        std::printf("can not write %s\n", qUtf8Printable(arguments.constFirst()));
        return 1;
    }
    return allMet ? 0 : 1;
}
