#include "installer_status.h"

#include <common_utilities/device_path.h>
#include <utilities/cfg_wrapper.h>
#include <vellum/vellum.h>

#include <cstdio>

namespace tessaly::dictionary::installer_status {

namespace {

const std::string path = "/mnt/ext1/system/tsdicts/installer_out_code.txt";

bool reset(utilities::CfgWrapper& status) {
    WriteInt(status.handle(), "out_code", -1);
    WriteInt(status.handle(), "progress", 0);
    return status.saveAndClose();
}

} // namespace

bool reset() {
    utilities::CfgWrapper status(path, 1);
    return reset(status) || std::remove(openablePath(path).c_str()) == 0;
}

int progress() {
    utilities::CfgWrapper status(path, 0);
    const int value = status.readIfExists<int>("progress").value_or(0);
    status.closeNoSave();
    return value;
}

int takeOutCode() {
    utilities::CfgWrapper status(path, 1);
    const int code = status.readIfExists<int>("out_code").value_or(-1);
    reset(status);
    return code;
}

} // namespace tessaly::dictionary::installer_status
