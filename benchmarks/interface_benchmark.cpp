#include "interface_benchmark.h"

#include "installed_dictionaries.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <vector>

namespace tessaly::benchmarks {

namespace {

constexpr int startRounds = 9;
constexpr int pageRounds = 3;

QString nowNs() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return QString::number(qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec);
}

/// The figures that a window prints.
std::vector<double> showWindow(const QString& mode) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral(TESSALY_PROGRAM_DIR "/tessaly-bench-window"), {mode, nowNs()});
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        throw std::runtime_error("the window's program failed");
    std::vector<double> figures;
    for (const QByteArray& figure : process.readAllStandardOutput().simplified().split(' '))
        figures.push_back(figure.toDouble());
    return figures;
}

double least(const std::vector<std::vector<double>>& rounds, std::size_t figure) {
    double result = rounds.front().at(figure);
    for (const std::vector<double>& round : rounds)
        result = std::min(result, round.at(figure));
    return result;
}

struct Starts {
    std::vector<std::vector<double>> ours;
    std::vector<std::vector<double>> reference;
};

/// One series for the time and the memory.
const Starts& starts() {
    static const Starts measured = [] {
        const fixture::TestDevice device;
        installDictionaries(device);
        Starts result;
        for (int i = 0; i < startRounds; ++i) {
            result.reference.push_back(showWindow(QStringLiteral("empty")));
            result.ours.push_back(showWindow(QStringLiteral("interface")));
        }
        return result;
    }();
    return measured;
}

Measurement compareLeast(const char* name, const Starts& measured, std::size_t figure) {
    const double ours = least(measured.ours, figure);
    const double reference = least(measured.reference, figure);
    return {name, ours, reference, ours / reference};
}

} // namespace

Measurement measureFirstFrame() {
    return compareLeast("first frame", starts(), 0);
}

Measurement measureMemory() {
    return compareLeast("memory", starts(), 1);
}

Measurement measurePageScroll() {
    const fixture::TestDevice device;
    installDictionaries(device);
    std::vector<std::vector<double>> rounds;
    for (int i = 0; i < pageRounds; ++i)
        rounds.push_back(showWindow(QStringLiteral("pages")));
    const double ours = least(rounds, 0);
    const double reference = least(rounds, 1);
    return {"page scroll", ours, reference, ours / reference};
}

} // namespace tessaly::benchmarks
