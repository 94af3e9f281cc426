#include "status_file.h"

#include "failure.h"
#include "files.h"

#include <base/device_root.h>
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
    write(Code::NotFinished);
}

void StatusFile::setProgress(int percent) {
    if (percent == m_progress)
        return;
    m_progress = percent;
    if (std::chrono::steady_clock::now() - m_written >= writeInterval)
        write(Code::NotFinished);
}

void StatusFile::succeed() {
    m_progress = 100;
    write(Code::Installed);
}

void StatusFile::fail(Code code) {
    write(code);
}

void StatusFile::write(Code code) {
    const std::string path = std::string(folder) + '/' + fileName;
    const std::unique_ptr<vl_config, void (*)(vl_config*)> config(OpenConfig(path.c_str(), 1), CloseConfig);
    WriteInt(config.get(), "out_code", int(code));
    WriteInt(config.get(), "progress", m_progress);
    if (!SaveConfig(config.get()))
        throw Failure(Code::StatusUnwritable, "Can not write the status file " + path);
    m_written = std::chrono::steady_clock::now();
}

} // namespace tessaly::installer
