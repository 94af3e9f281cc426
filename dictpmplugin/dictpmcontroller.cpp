#include "dictpmcontroller.h"

#include "dictionarieslistmodel.h"
#include "package_installer.h"

#include <dictionaries/routes.h>

#include <QDebug>
#include <QJSEngine>
#include <QtConcurrent>
#include <utility>
#include <vellum/vellum.h>

namespace tessaly::dictionary {

namespace {

constexpr int connectedState = 2;
constexpr int syncIntervalMs = 1000;

constexpr auto installerTimer = "dict_installer_timer";
constexpr int firstPollMs = 200;
constexpr int pollMs = 1000;
constexpr int noSpaceCode = -10;

/// Which part of the whole progress, in percent, a stage has.
struct Stage {
    int from;
    int to;

    [[nodiscard]] int at(double share) const { return from + int(share * (to - from)); }
};
constexpr Stage requesting{0, 5};
constexpr Stage building{5, 10}; ///< the package, by the server
constexpr Stage downloading{10, 90};
constexpr Stage installing{90, 95};
constexpr Stage reporting{95, 98};
constexpr Stage finishing{98, 100};

bool isOnline() {
    return GetNetState() == connectedState || NetConnect2(nullptr, 1) == 0;
}

} // namespace

DictPMController::DictPMController()
    : m_run(newRun("")) {
    connect(&m_syncTimer, &QTimer::timeout, this, &DictPMController::syncTimerHandler);
    connect(&m_watcher, &QFutureWatcher<bool>::finished, this, &DictPMController::handleDownloadFinished);
    connect(this, &DictPMController::progressChanged, this,
            [this](int value) { setIsInstalling(installing.from <= value && value <= installing.to); });
    connect(this, &DictPMController::fatalError, this, [this] { Q_EMIT syncFinished(false); });
}

DictPMController::~DictPMController() {
    cancelDownloading();
    m_watcher.waitForFinished();
}

DictPMController* DictPMController::instance() {
    static DictPMController* const controller = [] {
        auto* const created = new DictPMController;
        // From the first moment, so that no engine that gets hold of it ever deletes it.
        QJSEngine::setObjectOwnership(created, QJSEngine::CppOwnership);
        return created;
    }();
    return controller;
}

QObject* DictPMController::qmlInstance(QQmlEngine*, QJSEngine*) {
    return instance();
}

void DictPMController::setProgress(int value) {
    if (m_progress == value)
        return;
    m_progress = value;
    Q_EMIT progressChanged(value);
}

void DictPMController::setIsInstalling(bool isInstalling) {
    if (m_isInstalling == isInstalling)
        return;
    m_isInstalling = isInstalling;
    Q_EMIT isInstallingChanged(isInstalling);
}

void DictPMController::setSyncState(int syncState) {
    if (m_state->setState(syncState))
        Q_EMIT syncStateChanged(syncState);
}

void DictPMController::setErrorType(int erorr_type) {
    if (m_state->setError(erorr_type))
        Q_EMIT errorTypeChanged(erorr_type);
}

void DictPMController::downloadPackageProcess() {
    if (!isOnline())
        return;
    setProgress(0); // a failed installation leaves it high, with cancelling disabled
    std::string ids;
    for (const std::string& id : DictionariesListModel::instance()->selectedIds())
        ids += (ids.empty() ? "" : ",") + id;
    m_syncTimer.start(syncIntervalMs);
    auto run = newRun(ids);
    setSyncState(RunState::Starting);
    startRun(std::move(run), &PackageRun::requestAndDownload);
}

void DictPMController::reDownloadPackageProcess() {
    if (!isOnline())
        return;
    if (m_run->taskId() <= 0) {
        downloadPackageProcess();
        return;
    }
    m_syncTimer.start(syncIntervalMs);
    startRun(newRun(m_run->ids(), m_run->taskId()), &PackageRun::download);
}

std::shared_ptr<PackageRun> DictPMController::newRun(const std::string& ids, long long taskId) {
    auto run = std::make_shared<PackageRun>(m_state, ids, taskId);
    // Passed on at once, by the thread that emits: before the run's future ends.
    connect(run.get(), &PackageRun::syncStateChanged, this, &DictPMController::syncStateChanged,
            Qt::DirectConnection);
    connect(run.get(), &PackageRun::errorTypeChanged, this, &DictPMController::errorTypeChanged,
            Qt::DirectConnection);
    return run;
}

void DictPMController::startRun(std::shared_ptr<PackageRun> run, bool (PackageRun::*work)()) {
    m_run->cancel(); // what an older run still does, nobody waits for any more
    m_run = std::move(run);
    m_isJobRunning = true;
    m_watcher.setFuture(QtConcurrent::run([work, started = m_run] { return (*started.*work)(); }));
}

void DictPMController::cancelDownloading() {
    m_run->cancel();
    m_syncTimer.stop();
    setSyncState(RunState::Cancelled);
}

void DictPMController::syncTimerHandler() {
    switch (syncState()) {
    case RunState::Starting:
    case RunState::WaitingForPackage:
        handleWaitingDownloadProgress();
        break;
    case RunState::Downloading:
        handleDownloadProgress();
        break;
    case RunState::Installing:
        setProgress(installing.from);
        m_syncTimer.stop();
        break;
    default:
        break;
    }
}

void DictPMController::handleWaitingDownloadProgress() {
    // One for the process, on purpose: the waiting animation plays only once.
    static int halfPercents = 0;
    const int state = syncState();
    if ((state == RunState::Starting && halfPercents <= 2 * requesting.to) ||
        (state == RunState::WaitingForPackage && halfPercents <= 2 * building.to))
        setProgress(halfPercents / 2);
    ++halfPercents;
}

void DictPMController::handleDownloadProgress() {
    setProgress(downloading.at(m_run->downloaded()));
}

void DictPMController::handleDownloadFinished() {
    const bool hasEnded = m_watcher.isFinished() && std::exchange(m_isJobRunning, false);
    if (syncState() == RunState::Cancelled) {
        m_syncTimer.stop();
        setProgress(0);
        if (hasEnded)
            m_run->removePackage(); // the cancellation may have come when it was there already
        return;
    }
    if (!hasEnded)
        return; // called by hand
    m_syncTimer.stop();
    if (!m_watcher.result()) {
        setProgress(0);
        setSyncState(RunState::DownloadFailed);
        return;
    }
    switch (errorType()) {
    case EmptyIDsList:
    case TaskIDError:
    case DownloadUrlError:
        Q_EMIT fatalError();
        break;
    case LastQueryNotYetProcessed:
    case PackageIsStillCreating:
        Q_EMIT simpleError();
        break;
    default:
        break;
    }
    if (errorType() != NoError) {
        setSyncState(RunState::DownloadFailed);
        return;
    }
    setSyncState(RunState::Installing);
    setProgress(installing.from);
    installPackage();
}

void DictPMController::installPackage() {
    setProgress(installing.from);
    setIsInstalling(true);
    m_installedRun = m_run;
    if (package_installer::start(m_installedRun->packagePath()))
        SetHardTimerEx(installerTimer, dictInstallTimerFunc, this, firstPollMs);
    else
        handleInstallFinished(-1); // whatever the status file would say
}

void DictPMController::dictInstallTimerFunc(void* controller) {
    static_cast<DictPMController*>(controller)->pollInstaller();
}

void DictPMController::pollInstaller() {
    const auto percent = package_installer::progress();
    if (!percent) {
        handleInstallFinished(package_installer::takeOutCode());
        return;
    }
    if (!installsForOlderRun())
        setProgress(installing.at(*percent / 100.0));
    SetHardTimerEx(installerTimer, dictInstallTimerFunc, this, pollMs);
}

bool DictPMController::installsForOlderRun() const {
    return m_installedRun && m_installedRun != m_run;
}

void DictPMController::handleInstallFinished(const int code) {
    const bool isForOlderRun = installsForOlderRun();
    const auto run = m_installedRun ? std::exchange(m_installedRun, nullptr) : m_run;
    run->removePackage();
    if (isForOlderRun)
        return; // states and signals belong to the run that was begun meanwhile
    if (code == 0) {
        setProgress(reporting.from);
        const auto reported = Routes::sendSuccessInstall(std::to_string(run->taskId()), default_base_url());
        if (reported.isLeft()) {
            qDebug() << "[warn]: Routes::sendSuccessInstall failed with:"
                     << to_string(reported.getLeft()).c_str();
        }
        setProgress(reporting.to);
        setSyncState(RunState::Installed);
        setProgress(finishing.to);
        package_installer::removeLeftovers();
        Q_EMIT syncFinished(true);
        setProgress(0);
        return;
    }
    setSyncState(RunState::InstallationFailed);
    setErrorType(code == noSpaceCode ? NoSpaceOnSecureStorage : InstallPackageError);
    ts_print_log2(2, "dictpmplugin/dictpmcontroller", __LINE__,
                  "void tessaly::dictionary::DictPMController::handleInstallFinished(const int)",
                  "Error installing dictionaries (code: %d).", code);
    Q_EMIT fatalError();
}

} // namespace tessaly::dictionary
