// What a run does on its worker thread.

#include "dictpmcontroller.h"
#include "package_run.h"

#include <algorithm>
#include <dictionaries/routes.h>
#include <vellum/vellum.h>

namespace tessaly::dictionary {

namespace {

constexpr int mostWaits = 10;

/// The server is asked often at first: most packages are small.
int waitBeforeAsking(int attempt) {
    return attempt <= 4 ? 2000 : 5000;
}

std::string packagePathFor(std::string ids) {
    std::replace(ids.begin(), ids.end(), ',', '_');
    return "/dicts_" + ids + ".tsi";
}

} // namespace

PackageRun::PackageRun(RunState::Run number_, const std::string& ids_)
    : number(number_)
    , ids(ids_)
    , packagePath(packagePathFor(ids_)) {}

void DictPMController::setSyncState(const PackageRun& run, int syncState) {
    if (m_state.setState(run.number, syncState))
        Q_EMIT syncStateChanged(syncState);
}

bool DictPMController::fail(const PackageRun& run, ErrorType error) {
    if (m_state.setError(run.number, error))
        Q_EMIT errorTypeChanged(error);
    return false;
}

bool DictPMController::requestAndDownload(PackageRun& run) {
    if (run.ids.empty())
        return fail(run, EmptyIDsList);
    if (m_state.isOver(run.number))
        return true;
    const auto task = Routes::requestDictionariesDownload(run.ids, default_base_url());
    if (task.isLeft())
        return fail(run, task.getLeft().is<ApiError::Wait>() ? LastQueryNotYetProcessed : TaskIDError);
    run.taskId = task.getRight();
    setSyncState(run, WaitingForPackage);
    return m_state.isOver(run.number) || downloadPackage(run);
}

bool DictPMController::downloadPackage() {
    return downloadPackage(*m_run);
}

bool DictPMController::downloadPackage(PackageRun& run) {
    setSyncState(run, WaitingForPackage);
    if (m_state.setError(run.number, NoError))
        Q_EMIT errorTypeChanged(NoError);

    const auto askForUrl = [&run] {
        return Routes::getDictionariesDownloadUrl(run.taskId, default_base_url());
    };
    auto url = askForUrl();
    const auto mustWait = [&url] { return url.isLeft() && url.getLeft().is<ApiError::Wait>(); };
    for (int attempt = 0; mustWait() && attempt < mostWaits && !m_state.isOver(run.number); ++attempt) {
        vl_sleep(waitBeforeAsking(attempt));
        url = askForUrl();
    }
    if (m_state.isOver(run.number))
        return true;
    if (url.isLeft())
        return fail(run, mustWait() ? LastQueryNotYetProcessed : DownloadUrlError);

    setSyncState(run, Downloading);
    // A cancellation that comes from now on is the downloader's to notice. Its outcome shows when the
    // installer looks for the package.
    if (!m_state.isOver(run.number))
        run.downloader.Download(url.getRight(), run.packagePath, 0, "dictionaries");
    return true;
}

} // namespace tessaly::dictionary
