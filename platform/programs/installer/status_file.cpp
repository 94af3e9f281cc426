#include "status_file.h"

#include <base/device_root.h>
#include <filesystem>
#include <memory>
#include <vellum/vellum.h>

namespace tessaly::installer {

namespace {

namespace fs = std::filesystem;

constexpr auto statusPath = "/mnt/ext1/system/tsdicts/installer_out_code.txt";
constexpr auto writeInterval = std::chrono::milliseconds(200);

/// A run that was killed while it wrote leaves the new file under a longer name beside the old one.
void removeLeftovers() {
    const fs::path path = base::hostPath(statusPath);
    const std::string beginning = path.filename().string() + '.';
    std::error_code ignored;
    const fs::directory_iterator listing(path.parent_path(), ignored);
    // Collected first: what a directory lists while entries vanish from it is undefined.
    for (const fs::path& entry : std::vector<fs::path>(fs::begin(listing), fs::end(listing))) {
        if (entry.filename().string().starts_with(beginning))
            fs::remove(entry, ignored);
    }
}

} // namespace

void StatusFile::begin() {
    removeLeftovers();
    m_progress = 0;
    write(Code::NotFinished, m_progress);
}

void StatusFile::setProgress(int percent) {
    if (percent == m_progress)
        return;
    m_progress = percent;
    if (std::chrono::steady_clock::now() - m_written >= writeInterval)
        write(Code::NotFinished, m_progress);
}

void StatusFile::succeed() {
    write(Code::Installed, 100);
}

void StatusFile::fail(Code code) noexcept {
    try {
        write(code, m_progress);
    } catch (const std::exception&) {
        return; // what the file says instead is no success either
    }
}

void StatusFile::write(Code code, int progress) {
    const std::unique_ptr<vl_config, void (*)(vl_config*)> config(OpenConfig(statusPath, 1), CloseConfig);
    WriteInt(config.get(), "out_code", int(code));
    WriteInt(config.get(), "progress", progress);
    if (!SaveConfig(config.get()))
        throw Failure(Code::StatusUnwritable, std::string("Can not write the status file ") + statusPath);
    m_written = std::chrono::steady_clock::now();
}

} // namespace tessaly::installer
