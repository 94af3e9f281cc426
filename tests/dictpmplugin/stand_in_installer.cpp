// Stands in for the device's installer where that never behaves so: does what TESSALY_INSTALLER_ACTS says,
// "SECONDS", "SECONDS CODE", "SECONDS CODE PERCENT" or "SECONDS CODE PERCENT DELAY": waits for the delay,
// writes the result, if there is one (-3 when the package isn't there), and lives on for that long.

#include <base/device_root.h>
#include <utilities/cfg_wrapper.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <thread>

int main(int, char** arguments) {
    const auto sleep = [](double seconds) {
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    };
    std::istringstream acts(std::getenv("TESSALY_INSTALLER_ACTS"));
    double seconds = 0;
    int code = 0;
    int percent = 0;
    double delay = 0;
    acts >> seconds;
    if (acts >> code) {
        acts >> percent >> delay;
        sleep(delay);
        const std::string package = "/mnt/ext1/Downloads" + std::string(arguments[2]);
        tessaly::utilities::CfgWrapper status("/mnt/ext1/system/tsdicts/installer_out_code.txt", 1);
        WriteInt(status.handle(), "out_code",
                 std::filesystem::exists(tessaly::base::hostPath(package)) ? code : -3);
        WriteInt(status.handle(), "progress", percent);
        status.saveAndClose();
    }
    sleep(seconds);
    return 0;
}
