#include "failures.h"

#include "device_snapshot.h"
#include "dictpmplugin/dictionarieslistmodel.h"
#include "dictpmplugin/dictpmcontroller.h"
#include "download.h"
#include "simulator/fixture/test_device.h"
#include "wait.h"

#include <vellum/clock.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QJsonObject>
#include <csignal>

namespace tessaly::tour {

namespace {

using dictionary::DataManager;
using dictionary::DictionariesListModel;
using dictionary::DictPMController;
using fixture::TestDevice;

DictionariesListModel& model() {
    return *DictionariesListModel::instance();
}
DictPMController& controller() {
    return *DictPMController::instance();
}

constexpr auto installerPath = "/ebrmain/bin/dictpackageinstaller.app";

void mark(int count) {
    enterDownloadMode();
    markDictionaries(count);
}

void requireError(int error) {
    require(controller().errorType() == error, QStringLiteral("error %1").arg(controller().errorType()));
}

/// A download of two dictionaries that ends in the installation error.
void failToInstall(int error) {
    mark(2);
    Download download;
    download.start();
    download.requireEnd(false);
    requireError(error);
    require(controller().syncState() == DictPMController::InstallationFailed, QStringLiteral("wrong state"));
}

void goOffline(TestDevice& device) {
    device.setOnline(false);
    int error = -1;
    const auto connection = QObject::connect(&model(), &DictionariesListModel::dataManagerError, &model(),
                                             [&error](int value) { error = value; });
    bool failed = false;
    const auto failure = QObject::connect(&model(), &DictionariesListModel::toDownloadModFailed, &model(),
                                          [&failed] { failed = true; });
    model().refreshData();
    model().toDownloadMode();
    waitUntil([&failed] { return failed; }, QStringLiteral("the failure"));
    QObject::disconnect(connection);
    QObject::disconnect(failure);
    require(error == DataManager::NetworkNotAvailableError, QStringLiteral("error %1").arg(error));
    require(!model().isDownloadMode(), QStringLiteral("it is in download mode"));
    device.setOnline(true);
}

void makeServerSlow(TestDevice& device) {
    device.server().setSwitches({{QStringLiteral("package_state"), QStringLiteral("wait")}});
    mark(1);
    vellum::clock::setSpeed(20);
    controller().downloadPackageProcess();
    Download::waitForState(DictPMController::DownloadFailed);
    vellum::clock::setSpeed(1);
    requireError(DictPMController::LastQueryNotYetProcessed);
    require(controller().progress() == 0, QStringLiteral("progress %1").arg(controller().progress()));
}

void cancelInMidDownload(TestDevice& device) {
    device.server().setSwitches({{QStringLiteral("bytes_per_second"), 20000}});
    mark(2);
    controller().downloadPackageProcess();
    waitUntil([] { return controller().progress() > 10; }, QStringLiteral("the download's progress"));
    controller().cancelDownloading();
    waitUntil([] { return controller().progress() == 0; }, QStringLiteral("the cancelled download's end"),
              3000);
    require(controller().syncState() == DictPMController::Cancelled, QStringLiteral("it isn't cancelled"));
}

void killInstaller() {
    mark(2);
    Download download;
    download.start();
    Download::waitForState(DictPMController::Installing);
    const int installer = FindTaskByAppName(installerPath);
    require(installer > 0 && ::kill(installer, SIGKILL) == 0, QStringLiteral("it had ended before"));
    download.requireEnd(false);
    requireError(DictPMController::InstallPackageError);
}

} // namespace

void playFailures(TestDevice& device, StepLog& log) {
    const auto failing = [&](const QString& what, const std::function<void()>& fail) {
        log.run(what, [&] {
            const DeviceSnapshot before(device);
            fail();
            device.server().resetSwitches();
            model().refreshData();
            before.requireSameNow(device);
            return QStringLiteral("the device is as it was");
        });
    };
    const auto withFault = [&device](const char* fault) {
        return [&device, fault] {
            device.server().setSwitches({{QStringLiteral("package_fault"), QString::fromUtf8(fault)}});
            failToInstall(DictPMController::InstallPackageError);
        };
    };
    failing(QStringLiteral("offline: no catalogue"), [&] { goOffline(device); });
    failing(QStringLiteral("server slow for too long"), [&] { makeServerSlow(device); });
    failing(QStringLiteral("cancelled in mid-download"), [&] { cancelInMidDownload(device); });
    failing(QStringLiteral("no space on the device"), [] {
        vellum::state::setSecureFreeBytes(1000);
        failToInstall(DictPMController::NoSpaceOnSecureStorage);
        vellum::state::setSecureFreeBytes(-1);
    });
    failing(QStringLiteral("damaged package"), withFault("damaged"));
    failing(QStringLiteral("truncated package"), withFault("truncated"));
    failing(QStringLiteral("package that is not what was announced"), withFault("wrong_size"));
    failing(QStringLiteral("hostile package"), withFault("hostile"));
    failing(QStringLiteral("installer killed"), [] { killInstaller(); });
    device.server().resetSwitches();
    vellum::state::setSecureFreeBytes(-1);
    device.setOnline(true);
}

} // namespace tessaly::tour
