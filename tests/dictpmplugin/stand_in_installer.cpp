// Stands in for the device's installer where that never behaves so: does what TESSALY_INSTALLER_ACTS says,
// "SECONDS", "SECONDS CODE" or "SECONDS CODE PERCENT": writes the result, if there is one, and lives on for
// that long.

#include <utilities/cfg_wrapper.h>

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <thread>

int main() {
    std::istringstream acts(std::getenv("TESSALY_INSTALLER_ACTS"));
    double seconds = 0;
    int code = 0;
    int percent = 0;
    acts >> seconds;
    if (acts >> code) {
        acts >> percent;
        tessaly::utilities::CfgWrapper status("/mnt/ext1/system/tsdicts/installer_out_code.txt", 1);
        WriteInt(status.handle(), "out_code", code);
        WriteInt(status.handle(), "progress", percent);
        status.saveAndClose();
    }
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    return 0;
}
