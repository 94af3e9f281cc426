#include "dictpmcontroller.h"

#include "dictionarieslistmodel.h"
#include "package_run.h"

#include <QJSEngine>
#include <QtConcurrent>
#include <utility>
#include <vellum/vellum.h>

namespace tessaly::dictionary {

namespace {

constexpr int connectedState = 2;
constexpr int syncIntervalMs = 1000;

bool isOnline() {
    return GetNetState() == connectedState || NetConnect2(nullptr, 1) == 0;
}

} // namespace

DictPMController::DictPMController()
    : m_run(std::make_shared<PackageRun>(m_state.begin(), "")) {
    connect(&m_syncTimer, &QTimer::timeout, this, &DictPMController::syncTimerHandler);
    connect(&m_watcher, &QFutureWatcher<bool>::finished, this, &DictPMController::handleDownloadFinished);
    connect(this, &DictPMController::progressChanged, this,
            [this](int value) { setIsInstalling(90 <= value && value <= 95); });
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
    if (m_state.setState(syncState))
        Q_EMIT syncStateChanged(syncState);
}

void DictPMController::setErrorType(int erorr_type) {
    if (m_state.setError(erorr_type))
        Q_EMIT errorTypeChanged(erorr_type);
}

void DictPMController::downloadPackageProcess() {
    if (!isOnline())
        return;
    std::string ids;
    for (const std::string& id : DictionariesListModel::instance()->selectedIds())
        ids += (ids.empty() ? "" : ",") + id;
    m_syncTimer.start(syncIntervalMs);
    auto run = std::make_shared<PackageRun>(m_state.begin(), ids);
    setSyncState(Starting);
    startRun(std::move(run), [this](PackageRun& started) { return requestAndDownload(started); });
}

void DictPMController::reDownloadPackageProcess() {
    if (!isOnline())
        return;
    if (m_run->taskId <= 0) {
        downloadPackageProcess();
        return;
    }
    m_syncTimer.start(syncIntervalMs);
    auto run = std::make_shared<PackageRun>(m_state.begin(), m_run->ids);
    run->taskId = m_run->taskId.load();
    startRun(std::move(run), [this](PackageRun& started) { return downloadPackage(started); });
}

void DictPMController::startRun(std::shared_ptr<PackageRun> run,
                                const std::function<bool(PackageRun&)>& work) {
    m_run->downloader.CancelCurrent(); // what an older run still does, nobody waits for any more
    m_run = std::move(run);
    m_isJobRunning = true;
    m_watcher.setFuture(QtConcurrent::run([work, started = m_run] { return work(*started); }));
}

void DictPMController::cancelDownloading() {
    m_run->downloader.CancelCurrent();
    m_syncTimer.stop();
    setSyncState(Cancelled);
}

void DictPMController::syncTimerHandler() {
    switch (syncState()) {
    case Starting:
    case WaitingForPackage:
        handleWaitingDownloadProgress();
        break;
    case Downloading:
        handleDownloadProgress();
        break;
    case Installing:
        setProgress(90);
        m_syncTimer.stop();
        break;
    default:
        break;
    }
}

void DictPMController::handleWaitingDownloadProgress() {
    // One for the process, on purpose: the waiting animation plays only once.
    static int waitCounter = 0;
    const int state = syncState();
    if ((state == Starting && waitCounter <= 10) || (state == WaitingForPackage && waitCounter <= 20))
        setProgress(waitCounter / 2);
    ++waitCounter;
}

void DictPMController::handleDownloadProgress() {
    bool isActive = false;
    std::string text;
    int total = 0;
    int done = 0;
    m_run->downloader.GetProgress(&isActive, &text, &total, &done);
    setProgress(int(double(done) / double(total) * 80.0) + 10);
}

void DictPMController::handleDownloadFinished() {
    const bool hasEnded = m_watcher.isFinished() && std::exchange(m_isJobRunning, false);
    if (syncState() == Cancelled) {
        m_syncTimer.stop();
        setProgress(0);
        if (hasEnded)
            removePackage(*m_run); // the cancellation may have come when it was there already
        return;
    }
    if (!hasEnded)
        return; // called by hand
    m_syncTimer.stop();
    if (!m_watcher.result()) {
        setProgress(0);
        setSyncState(DownloadFailed);
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
        setSyncState(DownloadFailed);
        return;
    }
    setSyncState(Installing);
    setProgress(90);
    installPackage();
}

} // namespace tessaly::dictionary
