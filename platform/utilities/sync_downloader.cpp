#include <utilities/sync_downloader.h>

#include "background_blocks.h"
#include "curl_request.h"
#include "download_address.h"
#include "part_file.h"

#include <base/device_root.h>
#include <base/log.h>
#include <base/sha256.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <ostream>
#include <stdexcept>

namespace tessaly::utilities {

namespace {

HttpLimits downloadLimits(long long maximumBytes) {
    HttpLimits limits = HttpClient::defaultLimits();
    limits.totalSeconds = 0;
    limits.answerBytes = maximumBytes;
    return limits;
}

int kibibytes(std::int64_t bytes) {
    return static_cast<int>((bytes + 1023) / 1024);
}

void expect(bool isAsExpected, const std::string& otherwise) {
    if (!isAsExpected)
        throw std::runtime_error(otherwise);
}

/// The name of a file right in the folder.
std::string fileName(const std::string& path) {
    using namespace std::string_view_literals;
    std::string name = path.substr(path.starts_with('/') ? 1 : 0);
    expect(!name.empty() && name != "." && name != ".." && name.find_first_of("/\0"sv) == std::string::npos,
           "not a file name: " + path);
    return name;
}

} // namespace

class SyncDownloader::Private {
public:
    void begin(CurlRequest& newRequest, const std::string& label, std::int64_t knownSize);
    void end();
    bool fetch(const std::string& url, const std::string& path, const std::string& label);
    void receive(CurlRequest& current, PartFile& file, const DownloadAddress& address);

    std::string folder;
    DownloadOptions options;
    std::mutex turn;                ///< held during a download
    std::mutex mutex;               ///< guards the next three
    CurlRequest* request = nullptr; ///< while a download runs
    bool isCancelled = false;
    std::string text;
    std::atomic<std::int64_t> totalBytes{0};
    std::atomic<std::int64_t> doneBytes{0};
};

void SyncDownloader::Private::begin(CurlRequest& newRequest, const std::string& label,
                                    std::int64_t knownSize) {
    const std::lock_guard lock(mutex);
    request = &newRequest;
    if (isCancelled)
        newRequest.cancel();
    text = label;
    totalBytes = knownSize;
    doneBytes = 0;
}

void SyncDownloader::Private::end() {
    const std::lock_guard lock(mutex);
    request = nullptr;
}

/// False if cancelled; throws the reason of a failure.
bool SyncDownloader::Private::fetch(const std::string& url, const std::string& path,
                                    const std::string& label) {
    const auto address = DownloadAddress::parse(url);
    expect(address.has_value(), "the size or the checksum in the address makes no sense");
    CurlRequest newRequest(address->url, downloadLimits(options.maximumBytes));
    for (const auto& [header, value] : options.headers)
        newRequest.addHeader(header, value);
    begin(newRequest, label, address->size.value_or(0));
    const std::unique_ptr<Private, void (*)(Private*)> atEnd(this, [](Private* self) { self->end(); });
    const std::string name = fileName(path);
    if (newRequest.isCancelled())
        return false;
    PartFile file(base::hostPath(folder), name);
    receive(newRequest, file, *address);
    if (newRequest.isCancelled())
        return false;
    file.finish();
    totalBytes = doneBytes.load();
    return true;
}

/// Returns early if cancelled.
void SyncDownloader::Private::receive(CurlRequest& current, PartFile& file, const DownloadAddress& address) {
    base::Sha256 checksum;
    const auto checkHead = [&] {
        expect(current.status() == 200,
               "the server answered with the status " + std::to_string(current.status()));
        const std::int64_t announced = current.announcedSize();
        if (announced < 0)
            return;
        expect(announced == address.size.value_or(announced),
               "the answer announces " + std::to_string(announced) + " bytes instead of " +
                   std::to_string(address.size.value_or(0)));
        totalBytes = announced;
    };
    BackgroundBlocks blocks([&](std::string_view block) {
        if (!address.sha256.empty())
            checksum.add(block);
        file.write(block);
    });
    const CURLcode code = current.perform([&](std::string_view piece) {
        if (doneBytes == 0)
            checkHead();
        blocks.add(piece);
        doneBytes += static_cast<std::int64_t>(piece.size());
        expect(doneBytes <= address.size.value_or(options.maximumBytes), "the file is longer than announced");
    });
    if (current.isCancelled())
        return;
    expect(code == CURLE_OK, current.errorText(code));
    checkHead();
    blocks.finish();
    expect(doneBytes == address.size.value_or(doneBytes), "the file is shorter than announced");
    expect(address.sha256.empty() || checksum.finish() == address.sha256, "the checksum is wrong");
}

SyncDownloader::SyncDownloader(const std::string& folder, const DownloadOptions& options)
    : d(std::make_unique<Private>()) {
    d->folder = folder;
    d->options = options;
}

SyncDownloader::~SyncDownloader() = default;

bool SyncDownloader::Download(const std::string& url, const std::string& path, int, const std::string& text) {
    const std::lock_guard oneAtATime(d->turn);
    try {
        if (d->fetch(url, path, text))
            return true;
        log::cb::trace(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
            return out << "Download of " << url << " (" << text << ") cancelled";
        });
    } catch (const std::exception& error) {
        log::cb::error(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
            return out << "Can not download " << url << " (" << text << "): " << error.what();
        });
        const std::lock_guard lock(d->mutex);
        d->text = error.what();
    }
    return false;
}

void SyncDownloader::GetProgress(bool* active, std::string* text, int* total, int* done) const {
    const std::lock_guard lock(d->mutex);
    // Read once: both grow meanwhile.
    const std::int64_t totalBytes = d->totalBytes;
    const std::int64_t doneBytes = std::min(totalBytes, d->doneBytes.load());
    if (active)
        *active = d->request != nullptr;
    if (text)
        *text = d->text;
    if (total)
        *total = std::max(1, kibibytes(totalBytes));
    if (done)
        *done = kibibytes(doneBytes);
}

void SyncDownloader::CancelCurrent() {
    const std::lock_guard lock(d->mutex);
    d->isCancelled = true;
    if (d->request)
        d->request->cancel();
}

void SyncDownloader::ClearStatus() {
    const std::lock_guard lock(d->mutex);
    d->isCancelled = false;
    if (d->request)
        return;
    d->text.clear();
    d->totalBytes = 0;
    d->doneBytes = 0;
}

} // namespace tessaly::utilities
