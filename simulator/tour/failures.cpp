#include "device_checks.h"
#include "journey.h"
#include "simulator/fixture/test_device.h"

#include <vellum/clock.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QJsonObject>
#include <QScopeGuard>
#include <QSignalSpy>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tessaly::tour {

namespace {

using fixture::TestDevice;

constexpr auto couldNotBeDownloaded = "@ThereIsAnIssueWithDownloadingSelectedDictionaries";
constexpr auto installerPath = "/ebrmain/bin/dictpackageinstaller.app";

int progress(const Hand& hand) {
    return hand.screen().download().property("progress").toInt();
}

void beginDownload(const Hand& hand) {
    hand.openDictionaries();
    hand.enterDownloadMode();
    (void)hand.mark(2);
    hand.startDownload();
}

/// The message that ends the interface comes, and goes when it is acknowledged.
void acknowledge(const Hand& hand, const char* message, const QString& pictureName = {}) {
    Screen& screen = hand.screen();
    screen.waitFor(text(message), 60000);
    if (!pictureName.isEmpty())
        screen.picture(pictureName);
    hand.acknowledge(text(message));
    hand.waitForPage();
}

void goOffline(TestDevice& device, const Hand& hand) {
    Screen& screen = hand.screen();
    device.setOnline(false);
    hand.openDictionaries();
    QSignalSpy failed(&screen.list(), SIGNAL(toDownloadModFailed()));
    hand.askForMore();
    waitUntil([&] { return !failed.isEmpty(); }, QStringLiteral("the end"));
    screen.waitFor(text("@AgentNoNetwork"));
    screen.picture(QStringLiteral("no-network"));
    hand.acknowledge(text("@AgentNoNetwork"));
    screen.waitUntilGone(text("@AgentNoNetwork"));
    require(screen.shows(text("@SelectDictionary")),
            QStringLiteral("the interface has gone with the message"));
    hand.leave();
    device.setOnline(true);
}

void loseServer(TestDevice& device, const Hand& hand) {
    const char* const message = "@DownloadFailedCheckYourNetworkConnectionAndTryAgain";
    device.server().stop();
    const auto backAgain = qScopeGuard([&device] { device.startServer(); });
    hand.openDictionaries();
    hand.askForMore();
    hand.screen().waitFor(text(message));
    hand.screen().picture(QStringLiteral("no-server"));
    hand.leave();
}

void offerNothing(TestDevice& device, const Hand& hand) {
    device.server().setSwitches({{QStringLiteral("unlisted"), numbersOffered()}});
    hand.openDictionaries();
    hand.askForMore();
    hand.screen().waitFor(text("@NoNewDictionaries"));
    hand.screen().picture(QStringLiteral("nothing-new"));
    hand.leave();
}

void makeServerSlow(TestDevice& device, const Hand& hand) {
    device.server().setSwitches({{QStringLiteral("package_state"), QStringLiteral("wait")}});
    vellum::clock::setSpeed(200);
    beginDownload(hand);
    constexpr int lastQueryNotYetProcessed = 2;
    const auto error = [&] {
        int type = 0;
        QMetaObject::invokeMethod(&hand.screen().download(), "errorType", Q_RETURN_ARG(int, type));
        return type;
    };
    waitUntil([&] { return error() == lastQueryNotYetProcessed; }, QStringLiteral("the download's end"),
              60000);
    vellum::clock::setSpeed(clockSpeed);
    require(progress(hand) == 0, QStringLiteral("progress %1").arg(progress(hand)));
    hand.screen().waitFor(text("@Cancel"));
    hand.screen().picture(QStringLiteral("server-slow"));
    hand.press(text("@Cancel"));
    hand.waitForPage();
}

void cancelInMidDownload(TestDevice& device, const Hand& hand) {
    device.server().setSwitches({{QStringLiteral("bytes_per_second"), 20000}});
    beginDownload(hand);
    waitUntil([&] { return progress(hand) > 10; }, QStringLiteral("the download's progress"));
    hand.screen().waitFor(text("@Cancel"));
    hand.press(text("@Cancel"));
    waitUntil([&] { return progress(hand) == 0; }, QStringLiteral("the cancelled download's end"), 3000);
    hand.waitForPage();
}

/// Installers wait for each other; while this is there, none gets further.
class BusyInstaller {
public:
    explicit BusyInstaller(const TestDevice& device)
        : m_folder(
              ::open(qUtf8Printable(device.path("/mnt/secure/tspk")), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        require(m_folder >= 0 && ::flock(m_folder, LOCK_EX) == 0, QStringLiteral("its lock can't be taken"));
    }
    ~BusyInstaller() { ::close(m_folder); }
    BusyInstaller(const BusyInstaller&) = delete;
    BusyInstaller& operator=(const BusyInstaller&) = delete;

private:
    int m_folder;
};

void killInstaller(const TestDevice& device, const Hand& hand) {
    const BusyInstaller other(device);
    beginDownload(hand);
    int installer = -1;
    waitUntil(
        [&] {
            installer = FindTaskByAppName(installerPath);
            return installer > 0;
        },
        QStringLiteral("the installer"));
    require(::kill(installer, SIGKILL) == 0, QStringLiteral("it had ended before"));
    acknowledge(hand, couldNotBeDownloaded, QStringLiteral("failed"));
}

} // namespace

void playFailures(TestDevice& device, const Hand& hand, StepLog& log) {
    const auto failing = [&](const QString& what, const std::function<void()>& fail) {
        log.run(what, [&] {
            const DeviceSnapshot before(device);
            fail();
            device.server().resetSwitches();
            before.requireSameNow(device);
            return QStringLiteral("the device is as it was");
        });
    };
    const auto withFault = [&](const char* fault) {
        return [&device, &hand, fault] {
            device.server().setSwitches({{QStringLiteral("package_fault"), QString::fromUtf8(fault)}});
            beginDownload(hand);
            acknowledge(hand, couldNotBeDownloaded);
        };
    };
    failing(QStringLiteral("offline: no catalogue"), [&] { goOffline(device, hand); });
    failing(QStringLiteral("server gone: no catalogue"), [&] { loseServer(device, hand); });
    failing(QStringLiteral("nothing new in the catalogue"), [&] { offerNothing(device, hand); });
    failing(QStringLiteral("server slow for too long"), [&] { makeServerSlow(device, hand); });
    failing(QStringLiteral("cancelled in mid-download"), [&] { cancelInMidDownload(device, hand); });
    failing(QStringLiteral("no space on the device"), [&] {
        vellum::state::setSecureFreeBytes(1000);
        beginDownload(hand);
        acknowledge(hand, "@InsufficientStorageSpace", QStringLiteral("no-space"));
        vellum::state::setSecureFreeBytes(-1);
    });
    failing(QStringLiteral("damaged package"), withFault("damaged"));
    failing(QStringLiteral("truncated package"), withFault("truncated"));
    failing(QStringLiteral("package that is not what was announced"), withFault("wrong_size"));
    failing(QStringLiteral("hostile package"), withFault("hostile"));
    failing(QStringLiteral("installer killed"), [&] { killInstaller(device, hand); });
    device.server().resetSwitches();
    vellum::state::setSecureFreeBytes(-1);
    device.setOnline(true);
}

} // namespace tessaly::tour
