#include "benchmarks.h"
#include "installed_dictionaries.h"

#include <simulator/fixture/loopback_server.h>
#include <simulator/fixture/test_device.h>
#include <vellum/device_state.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <vector>

namespace tessaly::benchmarks {

namespace {

constexpr int startRounds = 9;
constexpr int windowRounds = 3;
constexpr int offeredCount = 100;
constexpr int answerMs = 700; // a busy ring has turned by then

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

constexpr std::size_t startFigures = 4;

/// One series for times and memory: of each round our figures, then those of the empty window.
const std::vector<std::vector<double>>& starts() {
    static const std::vector<std::vector<double>> measured = [] {
        const fixture::TestDevice device;
        installDictionaries(device);
        std::vector<std::vector<double>> rounds;
        for (int i = 0; i < startRounds; ++i) {
            const std::vector<double> reference = showWindow(QStringLiteral("empty"));
            rounds.push_back(showWindow(QStringLiteral("interface")));
            rounds.back().insert(rounds.back().end(), reference.begin(), reference.end());
        }
        return rounds;
    }();
    return measured;
}

std::vector<std::vector<double>> repeat(const char* mode) {
    std::vector<std::vector<double>> rounds;
    rounds.reserve(windowRounds);
    for (int i = 0; i < windowRounds; ++i)
        rounds.push_back(showWindow(QLatin1String(mode)));
    return rounds;
}

const std::vector<std::vector<double>>& pages() {
    static const std::vector<std::vector<double>> measured = [] {
        const fixture::TestDevice device;
        installDictionaries(device);
        return repeat("pages");
    }();
    return measured;
}

/// A catalogue of dictionaries that aren't installed.
QByteArray offer() {
    const QStringList languages{QStringLiteral("de"), QStringLiteral("en"), QStringLiteral("es"),
                                QStringLiteral("fr"), QStringLiteral("it")};
    const auto language = [&](int number) {
        return QJsonObject{{QStringLiteral("code"), languages[number % languages.size()]}};
    };
    QJsonArray records;
    for (int number = 1; number <= offeredCount; ++number)
        records.append(QJsonObject{{QStringLiteral("id"), number},
                                   {QStringLiteral("name"), QStringLiteral("Dictionary %1").arg(number)},
                                   {QStringLiteral("file"), QStringLiteral("offer %1.tsdict").arg(number)},
                                   {QStringLiteral("version"), 1},
                                   {QStringLiteral("provider"), QStringLiteral("FreeDict")},
                                   {QStringLiteral("description"), QStringLiteral("Some words.")},
                                   {QStringLiteral("language_from"), language(number / 20)},
                                   {QStringLiteral("language_to"), language(number + 1)}});
    return QJsonDocument(records).toJson();
}

/// By touch and by keys, one after the other.
const std::vector<std::vector<double>>& journeys() {
    static const std::vector<std::vector<double>> measured = [] {
        fixture::TestDevice device;
        installDictionaries(device);
        const QByteArray catalogue = offer();
        const fixture::LoopbackServer server([&catalogue](QTcpSocket& client) {
            const auto answer = [&client, &catalogue] {
                const QByteArray body = client.readAll().contains("/v1/morphology") ? "{}" : catalogue;
                client.write("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
                             QByteArray::number(body.size()) + "\r\n\r\n" + body);
                client.disconnectFromHost();
            };
            const auto hear = [&client, answer] { QTimer::singleShot(answerMs, &client, answer); };
            QObject::connect(&client, &QTcpSocket::readyRead, &client, hear, Qt::SingleShotConnection);
        });
        device.setServerUrl(QStringLiteral("http://127.0.0.1:%1").arg(server.port()));
        device.setOnline(true);
        std::vector<std::vector<double>> result;
        for (const auto input : {vellum::state::Input::Touch, vellum::state::Input::Keys}) {
            vellum::state::setInput(input);
            const bool touch = input == vellum::state::Input::Touch;
            result.push_back(showWindow(touch ? QStringLiteral("touch") : QStringLiteral("keys")));
        }
        return result;
    }();
    return measured;
}

/// Two figures of each round, from the least ratio to the greatest.
std::vector<Measurement> ratios(const char* name, const std::vector<std::vector<double>>& rounds,
                                std::size_t ours, std::size_t reference) {
    std::vector<Measurement> result;
    for (const std::vector<double>& round : rounds)
        result.push_back({name, round.at(ours), round.at(reference), round.at(ours) / round.at(reference)});
    std::ranges::sort(result, {}, &Measurement::ratio);
    return result;
}

Measurement median(const std::vector<Measurement>& rounds) {
    return rounds.at(rounds.size() / 2);
}

Measurement compareStarts(const char* name, std::size_t figure) {
    return median(ratios(name, starts(), figure, startFigures + figure));
}

/// The worse of the two journeys.
Measurement worseJourney(const char* name, std::size_t ours, std::size_t reference) {
    return ratios(name, journeys(), ours, reference).back();
}

} // namespace

Measurement measureFirstFrame() {
    return compareStarts("first frame", 0);
}

Measurement measureMemory() {
    return compareStarts("memory", 1);
}

Measurement measureColdStart() {
    return compareStarts("cold start", 3);
}

Measurement measureFirstFrameAgain() {
    const fixture::TestDevice device;
    installDictionaries(device);
    return median(ratios("first frame again", repeat("again"), 1, 0));
}

Measurement measurePageLatency() {
    return median(ratios("page latency", pages(), 0, 1));
}

Measurement measurePageScroll() {
    return median(ratios("page scroll", pages(), 2, 3));
}

Measurement measureScreenUpdates() {
    return worseJourney("screen updates", 0, 1);
}

Measurement measureUnchangedFrames() {
    return worseJourney("unchanged frames", 2, 1);
}

Measurement measureMarkArea() {
    return worseJourney("mark area", 3, 4);
}

Measurement measurePageArea() {
    return worseJourney("page area", 5, 6);
}

Measurement measureIdle() {
    const fixture::TestDevice device;
    installDictionaries(device);
    return median(ratios("idle", {showWindow(QStringLiteral("idle"))}, 0, 1));
}

} // namespace tessaly::benchmarks
