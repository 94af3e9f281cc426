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
constexpr int mostWaitingMs = 60'000; ///< for an older installer
constexpr int failureCode = -1;
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

void report(const PackageRun& run) {
    const auto reported = Routes::sendSuccessInstall(std::to_string(run.taskId()), default_base_url());
    if (reported.isLeft()) {
        qDebug() << "[warn]: Routes::sendSuccessInstall failed with:"
                 << to_string(reported.getLeft()).c_str();
    }
}

void logFailure(int code) {
    ts_print_log2(2, "dictpmplugin/dictpmcontroller", __LINE__,
                  "void tessaly::dictionary::DictPMController::handleInstallFinished(const int)",
                  "Error installing dictionaries (code: %d).", code);
}

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
    for (QFuture<bool>& job : m_jobs)
        job.waitForFinished();
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
    giveUpRun();
    m_run = std::move(run);
    m_isJobRunning = true;
    const auto job = QtConcurrent::run([work, started = m_run] { return (*started.*work)(); });
    std::erase_if(m_jobs, [](const QFuture<bool>& older) { return older.isFinished(); });
    m_jobs.push_back(job);
    m_watcher.setFuture(job);
}

/// What the last run still does, nobody waits for any more. An installer at work is let alone.
void DictPMController::giveUpRun() {
    m_run->cancel();
    m_isJobRunning = false;
    m_waitedMs.reset();
    if (m_installedRun != m_run)
        removePackage(*m_run);
}

void DictPMController::cancelDownloading() {
    const bool isWaiting = m_waitedMs.has_value();
    giveUpRun();
    m_syncTimer.stop();
    setSyncState(RunState::Cancelled);
    if (isWaiting)
        setProgress(0);
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
        giveUpRun(); // the package may have come in the same moment
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
    m_waitedMs = 0;
    if (m_installedRun || package_installer::isRunning())
        SetHardTimerEx(installerTimer, dictInstallTimerFunc, this, firstPollMs);
    else
        startInstaller();
}

void DictPMController::startInstaller() {
    m_waitedMs.reset();
    m_installedRun = m_run;
    if (package_installer::start(m_installedRun->packagePath()))
        SetHardTimerEx(installerTimer, dictInstallTimerFunc, this, firstPollMs);
    else
        handleInstallFinished(failureCode); // whatever the status file would say
}

void DictPMController::dictInstallTimerFunc(void* controller) {
    static_cast<DictPMController*>(controller)->pollInstaller();
}

void DictPMController::pollInstaller() {
    const auto percent = package_installer::progress();
    if (percent && m_installedRun == m_run)
        setProgress(installing.at(*percent / 100.0));
    if (!percent && m_installedRun)
        handleInstallFinished(package_installer::takeOutCode());
    if (!percent && m_waitedMs)
        return startInstaller();
    if (m_waitedMs && (*m_waitedMs += pollMs) > mostWaitingMs) {
        m_waitedMs.reset();
        endInstallation(*m_run, failureCode);
    }
    if (m_installedRun || m_waitedMs)
        SetHardTimerEx(installerTimer, dictInstallTimerFunc, this, pollMs);
}

void DictPMController::handleInstallFinished(const int code) {
    const auto run = m_installedRun ? std::exchange(m_installedRun, nullptr) : m_run;
    endInstallation(*run, code);
}

void DictPMController::endInstallation(const PackageRun& run, int code) {
    removePackage(run);
    if (&run != m_run.get()) { // states and progress belong to the run that was begun meanwhile
        if (code != 0)
            return logFailure(code);
        report(run);
        package_installer::removeLeftovers();
    } else if (code == 0) {
        setProgress(reporting.from);
        report(run);
        setProgress(reporting.to);
        setSyncState(RunState::Installed);
        setProgress(finishing.to);
        package_installer::removeLeftovers();
        Q_EMIT syncFinished(true);
        setProgress(0);
    } else {
        setSyncState(RunState::InstallationFailed);
        setErrorType(code == noSpaceCode ? NoSpaceOnSecureStorage : InstallPackageError);
        logFailure(code);
        Q_EMIT fatalError();
    }
}

/// Unless another run, which asked for the same dictionaries, has or will have its package there.
void DictPMController::removePackage(const PackageRun& run) const {
    const auto isWanted = [&run](const std::shared_ptr<PackageRun>& other) {
        return other && other.get() != &run && other->packagePath() == run.packagePath();
    };
    if (!isWanted(m_installedRun) && !((m_isJobRunning || m_waitedMs) && isWanted(m_run)))
        run.removePackage();
}

} // namespace tessaly::dictionary
