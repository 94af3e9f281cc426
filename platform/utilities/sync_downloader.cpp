#include <utilities/sync_downloader.h>

#include "web_access.h"

#include <base/device_root.h>
#include <common_utilities/log_line.h>

#include <algorithm>
#include <mutex>
#include <stdexcept>

namespace tessaly::utilities {

namespace {

int kibibytes(std::int64_t bytes) {
    return static_cast<int>((bytes + 1023) / 1024);
}

/// The name of a file right in the directory.
std::string fileName(const std::string& path) {
    using namespace std::string_view_literals;
    std::string name = path.substr(path.starts_with('/') ? 1 : 0);
    if (name.empty() || name == "." || name == ".." || name.find_first_of("/\0"sv) != std::string::npos)
        throw std::runtime_error("not a file name: " + path);
    return name;
}

} // namespace

class SyncDownloader::Private {
public:
    std::stop_token begin(const std::string& label);
    void end(const std::string& error);
    bool fetch(const std::string& url, const std::string& path, const std::stop_token& stop);

    std::string directory;
    DownloadOptions options;
    TransferProgress progress;
    std::mutex turn;               ///< held during a download
    std::mutex mutex;              ///< guards the rest
    std::stop_source cancellation; ///< requested until ClearStatus()
    bool isActive = false;
    std::string text;
};

std::stop_token SyncDownloader::Private::begin(const std::string& label) {
    const std::lock_guard lock(mutex);
    isActive = true;
    text = label;
    return cancellation.get_token();
}

void SyncDownloader::Private::end(const std::string& error) {
    const std::lock_guard lock(mutex);
    isActive = false;
    if (!error.empty())
        text = error;
}

/// False if cancelled; throws the reason of a failure.
bool SyncDownloader::Private::fetch(const std::string& url, const std::string& path,
                                    const std::stop_token& stop) {
    const auto source = DownloadUrl::parse(url);
    if (!source || source->size > options.maximumBytes)
        throw std::runtime_error("the size or the checksum in the URL makes no sense");
    HttpLimits limits = HttpClient::defaultLimits();
    limits.totalSeconds = 0;
    limits.responseBytes = options.maximumBytes;
    const WebAccess::Fetch what{*source, base::hostPath(directory), fileName(path), options, limits};
    if (!WebAccess::instance().fetch(what, progress, stop, mutex))
        return false;
    progress.total = progress.done.load();
    return true;
}

SyncDownloader::SyncDownloader(const std::string& folder, const DownloadOptions& options)
    : d(std::make_unique<Private>()) {
    d->directory = folder;
    d->options = options;
}

SyncDownloader::~SyncDownloader() = default;

bool SyncDownloader::Download(const std::string& url, const std::string& path, int, const std::string& text) {
    const std::lock_guard oneAtATime(d->turn);
    const std::stop_token stop = d->begin(text);
    bool isDone = false;
    std::string failure;
    try {
        isDone = d->fetch(url, path, stop);
        if (!isDone)
            LogLine(log::cb::trace) << "Download of " << url << " (" << text << ") cancelled";
    } catch (const std::exception& error) {
        failure = error.what();
        LogLine(log::cb::error) << "Can not download " << url << " (" << text << "): " << failure;
    }
    d->end(failure);
    return isDone;
}

void SyncDownloader::GetProgress(bool* active, std::string* text, int* total, int* done) const {
    const std::lock_guard lock(d->mutex);
    // Read once: both grow meanwhile.
    const std::int64_t totalBytes = d->progress.total;
    const std::int64_t doneBytes = std::min(totalBytes, d->progress.done.load());
    if (active)
        *active = d->isActive;
    if (text)
        *text = d->text;
    if (total)
        *total = std::max(1, kibibytes(totalBytes));
    if (done)
        *done = kibibytes(doneBytes);
}

void SyncDownloader::CancelCurrent() {
    const std::lock_guard lock(d->mutex);
    d->cancellation.request_stop();
}

void SyncDownloader::ClearStatus() {
    const std::lock_guard lock(d->mutex);
    d->cancellation = std::stop_source();
    if (d->isActive)
        return;
    d->text.clear();
    d->progress.total = 0;
    d->progress.done = 0;
}

} // namespace tessaly::utilities
