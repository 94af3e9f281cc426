// Measures the product against references in the same run: a table, and what misses its bound, on stdout; the
// same figures as JSON. Only what the product and Qt log goes to stderr.

#include "catalogue_benchmark.h"
#include "download_benchmark.h"
#include "grouping_benchmark.h"
#include "install_benchmark.h"
#include "interface_benchmark.h"
#include "measurement.h"
#include "refresh_benchmark.h"

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

using namespace tessaly::benchmarks;

namespace {

struct Benchmark {
    const char* name;
    Measurement (*measure)();
    double bound;
    bool isAtMost = true; ///< else the bound is a least
    const char* relativeTo =
        nullptr; ///< the bound is a multiple of that benchmark's ratio, if it was measured
};

constexpr Benchmark benchmarks[] = {
    {"catalogue-replace", measureCatalogueReplace, 5},
    {"catalogue-list", measureCatalogueList, 2},
    {"refresh-500", measureRefresh500, 1.5},
    {"download", measureDownload, 0.9, false},
    {"install", measureInstall, 1.5},
    {"group-10k", measureGroup10k, 3},
    {"group-10k-sorted-proxy", measureGroup10kSortedProxy, 0.6},
    {"group-100k", measureGroup100k, 1.5, true, "group-10k"},
    {"proxy-data", measureProxyData, 2},
    {"first-frame", measureFirstFrame, 4},
    {"page-scroll", measurePageScroll, 3},
    {"memory", measureMemory, 2},
};

/// The bound that holds, given the ratios measured before; 0 if there is nothing to compare with.
double boundOf(const Benchmark& benchmark, const QHash<QString, double>& ratios) {
    return benchmark.relativeTo ? benchmark.bound * ratios.value(QLatin1String(benchmark.relativeTo))
                                : benchmark.bound;
}

bool isMet(const Benchmark& benchmark, double bound, double ratio) {
    return bound == 0 || (benchmark.isAtMost ? ratio <= bound : ratio >= bound);
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
            const double bound = boundOf(benchmark, ratios);
            ratios.insert(QLatin1String(benchmark.name), measured.ratio);
            if (!isMet(benchmark, bound, measured.ratio)) {
                std::printf("%s: the ratio must be at %s %g\n", benchmark.name,
                            benchmark.isAtMost ? "most" : "least", bound);
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
