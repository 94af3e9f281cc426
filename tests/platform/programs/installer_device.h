#pragma once

#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>
#include <vellum/vellum.h>

#include <QProcess>
#include <csignal>
#include <sys/resource.h>

namespace tessaly::tests {

/// What the status file says; -1000 for a key that isn't there.
struct Status {
    int code = 0;
    int progress = 0;
};

/// A device with the real installer on it.
class InstallerDevice : public fixture::TestDevice {
public:
    [[nodiscard]] QString packagePath() const { return path("/mnt/ext1/Downloads/dicts_1.tsi"); }
    [[nodiscard]] QString dictionary(const QString& name) const {
        return path("/mnt/ext1/system/dictionaries/") + name;
    }

    /// Starts the installer on the package, on disks that have no more room for a file than this; its log
    /// comes from stderr.
    void start(QProcess& process, const QString& packageName = QStringLiteral("/dicts_1.tsi")) const {
        process.setChildProcessModifier([] {
            const rlimit room{5'000'000, 5'000'000};
            ::setrlimit(RLIMIT_FSIZE, &room);
            std::signal(SIGXFSZ, SIG_IGN);
        });
        process.start(path("/ebrmain/bin/dictpackageinstaller.app"),
                      {QStringLiteral("-package_name"), packageName});
        process.waitForStarted();
    }
    /// The exit status of a whole run.
    int run(const QString& packageName = QStringLiteral("/dicts_1.tsi"), QByteArray* log = nullptr) const {
        QProcess process;
        start(process, packageName);
        process.waitForFinished(-1);
        if (log)
            *log = process.readAllStandardError();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    [[nodiscard]] static Status status() {
        vl_config* const config = OpenConfig("/mnt/ext1/system/tsdicts/installer_out_code.txt", 0);
        const Status status{ReadInt(config, "out_code", -1000), ReadInt(config, "progress", -1000)};
        CloseConfig(config);
        return status;
    }

    /// All that lies where the installer writes.
    [[nodiscard]] QMap<QString, QByteArray> content() const {
        QMap<QString, QByteArray> found = folderContent(path("/mnt/secure"));
        found.insert(folderContent(dictionary({})));
        return found;
    }
};

} // namespace tessaly::tests
