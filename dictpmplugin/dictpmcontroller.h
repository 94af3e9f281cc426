#pragma once

#include "package_run.h"

#include <QFutureWatcher>
#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QJSEngine;
class QQmlEngine;

namespace tessaly::dictionary {

/// Turns the marked dictionaries into installed ones: has the server build a package, downloads it, runs the
/// device's installer on it and reports. One object for the process; it lives until the process ends and
/// belongs to C++. Its thread is that of the interface, on which all slots are called; signals that a worker
/// emits arrive queued.
class DictPMController : public QObject {
    Q_OBJECT
    Q_PROPERTY(int progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(bool isInstalling READ isInstalling WRITE setIsInstalling NOTIFY isInstallingChanged)

public:
    enum ErrorType {
        NoError = RunState::NoError,
        EmptyIDsList = RunState::EmptyIDsList,
        LastQueryNotYetProcessed = RunState::LastQueryNotYetProcessed,
        TaskIDError = RunState::TaskIDError,
        PackageIsStillCreating = 4,
        DownloadUrlError = RunState::DownloadUrlError,
        InstallPackageError = 6,
        NoSpaceOnSecureStorage = 7
    };
    Q_ENUM(ErrorType)

    DictPMController();
    /// Cancels what runs and waits for all workers.
    ~DictPMController() override;

    static DictPMController* instance();
    static QObject* qmlInstance(QQmlEngine* engine, QJSEngine* scriptEngine);
    static const char* qmlTypeName() { return "DictPMController"; }

    [[nodiscard]] int progress() const { return m_progress; } ///< 0 to 100, of the whole process
    [[nodiscard]] bool isInstalling() const { return m_isInstalling; }
    [[nodiscard]] int syncState() const { return m_state->state(); } ///< a RunState::State; any thread

    /// The current run's download step; blocks. On a worker thread.
    bool downloadPackage() { return m_run->download(); }
    /// Runs the installer on the last run's package. While an older one is at work, of a host that was killed
    /// or of an earlier run, it waits for its end; having to wait for 60 s is a failure.
    void installPackage();
    /// `code` is the installer's: 0 is success, -10 no space on the secure storage.
    void handleInstallFinished(int code);
    static void dictInstallTimerFunc(void* controller);

    void syncTimerHandler();
    void handleWaitingDownloadProgress();
    void handleDownloadProgress();

Q_SIGNALS:
    void progressChanged(int value);
    void syncStateChanged(int syncState);
    void errorTypeChanged(int error_type);
    void fatalError();
    void simpleError();
    void syncFinished(bool success);
    void isInstallingChanged(bool isInstalling);

public Q_SLOTS:
    int errorType() const { return m_state->error(); } // any thread
    void handleDownloadFinished();
    /// Starts a run for the marked dictionaries. Nothing happens when the device can't be connected.
    void downloadPackageProcess();
    /// Waits for the package of the last run once more; starts anew when the server never gave one.
    void reDownloadPackageProcess();
    void setSyncState(int syncState);
    void setErrorType(int erorr_type);
    void cancelDownloading();
    void setIsInstalling(bool isInstalling);

private:
    void setProgress(int value);
    [[nodiscard]] std::shared_ptr<PackageRun> newRun(const std::string& ids, long long taskId = 0);
    void startRun(std::shared_ptr<PackageRun> run, bool (PackageRun::*work)());
    void giveUpRun();
    void startInstaller();
    void pollInstaller();
    void endInstallation(const PackageRun& run, int code);
    void removePackage(const PackageRun& run) const;

    int m_progress = 0;
    QTimer m_syncTimer;
    std::shared_ptr<RunState> m_state = std::make_shared<RunState>(); ///< shared with the workers
    std::shared_ptr<PackageRun> m_run;                                ///< the last one begun; never null
    std::shared_ptr<PackageRun> m_installedRun; ///< whose package the installer has; null if it has none
    std::optional<int> m_waitedMs;     ///< what the last run has waited for an older installer, if it waits
    bool m_isJobRunning = false;       ///< the last run's, until its end has been dealt with
    QFutureWatcher<bool> m_watcher;    ///< of that job
    std::vector<QFuture<bool>> m_jobs; ///< all that may still run
    bool m_isInstalling = false;
};

} // namespace tessaly::dictionary
