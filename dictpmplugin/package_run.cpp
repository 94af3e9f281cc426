#include "package_run.h"

#include <common_utilities/device_path.h>
#include <dictionaries/routes.h>
#include <vellum/vellum.h>

#include <QFile>
#include <algorithm>
#include <utility>

namespace tessaly::dictionary {

namespace {

constexpr auto downloads = "/mnt/ext1/Downloads";
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

PackageRun::PackageRun(std::shared_ptr<RunState> state, const std::string& ids, long long taskId)
    : m_state(std::move(state))
    , m_number(m_state->begin())
    , m_ids(ids)
    , m_packagePath(packagePathFor(ids))
    , m_taskId(taskId)
    , m_downloader(downloads) {}

double PackageRun::downloaded() const {
    bool isActive = false;
    std::string text;
    int total = 0;
    int done = 0;
    m_downloader.GetProgress(&isActive, &text, &total, &done);
    return double(done) / double(total);
}

void PackageRun::setState(RunState::State state) {
    if (!m_stop.stop_requested() && m_state->setState(m_number, state))
        Q_EMIT syncStateChanged(state);
}

void PackageRun::setError(RunState::Error error) {
    if (!m_stop.stop_requested() && m_state->setError(m_number, error))
        Q_EMIT errorTypeChanged(error);
}

void PackageRun::cancel() {
    m_stop.request_stop();
    m_downloader.CancelCurrent();
}

bool PackageRun::fail(RunState::Error error) {
    setError(error);
    return false;
}

bool PackageRun::requestAndDownload() {
    if (m_ids.empty())
        return fail(RunState::EmptyIDsList);
    if (isOver())
        return true;
    const auto task = Routes::requestDictionariesDownload(m_ids, default_base_url(), m_stop.get_token());
    if (task.isLeft()) {
        return fail(task.getLeft().is<ApiError::Wait>() ? RunState::LastQueryNotYetProcessed
                                                        : RunState::TaskIDError);
    }
    m_taskId = task.getRight();
    setState(RunState::WaitingForPackage);
    return isOver() || download();
}

bool PackageRun::download() {
    setState(RunState::WaitingForPackage);
    setError(RunState::NoError);

    const auto askForUrl = [this] {
        return Routes::getDictionariesDownloadUrl(m_taskId, default_base_url(), m_stop.get_token());
    };
    auto url = askForUrl();
    const auto mustWait = [&url] { return url.isLeft() && url.getLeft().is<ApiError::Wait>(); };
    for (int attempt = 0; mustWait() && attempt < mostWaits && !isOver(); ++attempt) {
        vl_sleep(waitBeforeAsking(attempt), m_stop.get_token());
        url = askForUrl();
    }
    if (isOver())
        return true;
    if (url.isLeft())
        return fail(mustWait() ? RunState::LastQueryNotYetProcessed : RunState::DownloadUrlError);

    setState(RunState::Downloading);
    // A cancellation that comes from now on is the downloader's to notice.
    if (!isOver())
        m_downloader.Download(url.getRight(), m_packagePath, 0, "dictionaries");
    return true;
}

void PackageRun::removePackage() const {
    QFile::remove(openablePath(QString::fromLatin1(downloads) + QString::fromStdString(m_packagePath)));
}

} // namespace tessaly::dictionary
