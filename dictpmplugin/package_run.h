#pragma once

#include "run_state.h"

#include <utilities/sync_downloader.h>

#include <QObject>
#include <atomic>
#include <memory>
#include <stop_token>
#include <string>

namespace tessaly::dictionary {

/// One attempt at a package, and its steps on a worker thread. It owns all it needs, so that an attempt begun
/// right after a cancelled one shares nothing but the state with the worker of the old one. What its worker
/// emits comes from that thread, before the step returns.
class PackageRun : public QObject {
    Q_OBJECT

public:
    /// Begins another run of the state. A task number of 0 is none.
    PackageRun(std::shared_ptr<RunState> state, const std::string& ids, long long taskId = 0);

    [[nodiscard]] const std::string& ids() const { return m_ids; } ///< of the server, "12,40"
    /// "/dicts_12_40.tsi", relative to the downloader's folder. The same for all runs with these ids: an
    /// older installer keeps the package that it has open, since no download writes to a file that is there.
    [[nodiscard]] const std::string& packagePath() const { return m_packagePath; }
    [[nodiscard]] long long taskId() const { return m_taskId; } ///< of the server; any thread
    /// Which share of the package is there. Any thread.
    [[nodiscard]] double downloaded() const;

    // On a worker thread; they block. False when the step failed; a run that is over is no failure.

    /// Asks for the package, then goes on as below.
    bool requestAndDownload();
    /// Waits until the server has built the package, and downloads it. Whether that went well shows when the
    /// installer looks for the package.
    bool download();

    /// Ends the step at once, whatever it waits for. No package arrives any more. Any thread.
    void cancel();
    void removePackage() const;

Q_SIGNALS:
    void syncStateChanged(int syncState);
    void errorTypeChanged(int errorType);

private:
    [[nodiscard]] bool isOver() const { return m_stop.stop_requested() || m_state->isOver(m_number); }
    void setState(RunState::State state);
    void setError(RunState::Error error);
    bool fail(RunState::Error error);

    const std::shared_ptr<RunState> m_state;
    const RunState::Run m_number;
    const std::string m_ids;
    const std::string m_packagePath;
    std::atomic<long long> m_taskId;
    utilities::SyncDownloader m_downloader;
    std::stop_source m_stop;
};

} // namespace tessaly::dictionary
