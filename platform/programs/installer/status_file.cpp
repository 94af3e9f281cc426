#include "status_file.h"

#include "failure.h"
#include "files.h"

#include <base/device_root.h>
#include <exception>
#include <memory>
#include <vellum/vellum.h>

namespace tessaly::installer {

namespace {

constexpr const char* folder = "/mnt/ext1/system/tsdicts";
constexpr const char* fileName = "installer_out_code.txt";
constexpr auto writeInterval = std::chrono::milliseconds(200);

} // namespace

void StatusFile::begin() {
    // A run that was killed while it wrote leaves the new file under a longer name beside the old one.
    const std::string leftover = std::string(fileName) + '.';
    removeNamed(base::hostPath(folder), leftover, Code::StatusUnwritable);
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
    const std::string path = std::string(folder) + '/' + fileName;
    const std::unique_ptr<vl_config, void (*)(vl_config*)> config(OpenConfig(path.c_str(), 1), CloseConfig);
    WriteInt(config.get(), "out_code", int(code));
    WriteInt(config.get(), "progress", progress);
    if (!SaveConfig(config.get()))
        throw Failure(Code::StatusUnwritable, "Can not write the status file " + path);
    m_written = std::chrono::steady_clock::now();
}

} // namespace tessaly::installer
