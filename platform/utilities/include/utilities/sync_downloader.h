#pragma once

#include <utilities/export.h>

#include <map>
#include <memory>
#include <string>

namespace tessaly::utilities {

/// What downloads may need beside their URLs.
struct DownloadOptions {
    /// Sent with each request, and not to another scheme, host or port: such a redirect is a failure.
    std::map<std::string, std::string> headers;
    long long maximumBytes = 4LL << 30; ///< a longer file is a failure
};

/// Downloads one file at a time into a folder of the device, blocking the calling thread, while another
/// thread reads the progress or cancels:
///
///     SyncDownloader downloader("/mnt/ext1/Downloads");
///     const bool isThere = downloader.Download(url + "#size=1000", "/name.tsi", 0, "a package");
///
/// A download is cancelled, too, when the process is about to quit. What is there of a file isn't kept from
/// one Download() to the next.
class TESSALY_UTILITIES_API SyncDownloader {
public:
    /// `folder` is a device path.
    explicit SyncDownloader(const std::string& folder, const DownloadOptions& options = {});
    ~SyncDownloader();
    SyncDownloader(const SyncDownloader&) = delete;
    SyncDownloader& operator=(const SyncDownloader&) = delete;

    /// Stores `url` under `path` ("/name", relative to the folder); an older file of that name goes first,
    /// unless the URL is refused, and the new one is there only once it is whole. True on success. What is
    /// known of the file beforehand stands in the URL's fragment ("#size=BYTES&manifest_sha256=HEX", either
    /// may be missing) and is checked, as is the length that the response announces. A transfer that breaks
    /// off goes on where it was, three times, a second later each, if the server names the file by an ETag
    /// and it is still the same. `flags` is 0. `text` labels the download in the log. A name that leads out
    /// of the folder is refused.
    bool Download(const std::string& url, const std::string& path, int flags, const std::string& text);

    /// Any thread. `active` says whether a download runs, `text` what it said last (a label or an error),
    /// `total` and `done` are sizes in KiB; the total is never zero. Any pointer may be null.
    void GetProgress(bool* active, std::string* text, int* total, int* done) const;

    /// Any thread. Ends the running download within a moment, and lets none start, until ClearStatus(). What
    /// isn't under its name when this returns never will be.
    void CancelCurrent();
    /// Any thread. Forgets a cancellation and the last download's progress.
    void ClearStatus();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tessaly::utilities
