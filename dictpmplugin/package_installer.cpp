#include "package_installer.h"

#include <common_utilities/device_path.h>
#include <common_utilities/log_line.h>
#include <utilities/cfg_wrapper.h>
#include <vellum/vellum.h>

#include <QDir>
#include <algorithm>
#include <cstdio>

namespace tessaly::dictionary::package_installer {

namespace {

constexpr auto program = "/ebrmain/bin/dictpackageinstaller.app";
const std::string statusFile = "/mnt/ext1/system/tsdicts/installer_out_code.txt";

bool reset(utilities::CfgWrapper& status) {
    WriteInt(status.handle(), "out_code", -1);
    WriteInt(status.handle(), "progress", 0);
    return status.saveAndClose();
}

} // namespace

bool start(const std::string& packagePath) {
    utilities::CfgWrapper status(statusFile, 1);
    if (!reset(status) && std::remove(openablePath(statusFile).c_str()) != 0) {
        LogLine(2) << "can not reset the installer's status file";
        return false;
    }
    const char* const arguments[] = {"-package_name", packagePath.c_str()};
    OpenTask(program, 2, arguments, 1);
    return true;
}

bool isRunning() {
    return FindTaskByAppName(program) != -1;
}

std::optional<int> progress() {
    const int task = FindTaskByAppName(program);
    if (task == -1)
        return std::nullopt;
    const utilities::CfgWrapper status(statusFile, 0);
    const int percent = std::clamp(status.readIfExists<int>("progress").value_or(0), 0, 100);
    if (percent == 100)
        CloseTask(task, 0, 1);
    return percent;
}

int takeOutCode() {
    utilities::CfgWrapper status(statusFile, 1);
    const int code = status.readIfExists<int>("out_code").value_or(-1);
    reset(status);
    return code;
}

void removeLeftovers() {
    QDir folder(openablePath(QStringLiteral("/mnt/secure/tspk")));
    for (const QString& file : folder.entryList({QStringLiteral("*")}, QDir::Files)) {
        if (file.contains(u"ts dictionaries"))
            folder.remove(file);
    }
}

} // namespace tessaly::dictionary::package_installer
