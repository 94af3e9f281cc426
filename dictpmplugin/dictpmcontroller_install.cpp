// From the downloaded package to the installed dictionaries.

#include "dictpmcontroller.h"
#include "installer_status.h"
#include "package_run.h"

#include <common_utilities/device_path.h>
#include <dictionaries/routes.h>
#include <vellum/vellum.h>

#include <QDebug>
#include <QDir>
#include <QFile>
#include <algorithm>
#include <utility>

namespace tessaly::dictionary {

namespace {

constexpr auto logFile = "dictpmplugin/dictpmcontroller";
constexpr auto installerPath = "/ebrmain/bin/dictpackageinstaller.app";
constexpr auto timerName = "dict_installer_timer";
constexpr int firstPollMs = 200;
constexpr int pollMs = 1000;
constexpr int noSpaceCode = -10;

void removeInstallerLeftovers() {
    QDir folder(openablePath(QStringLiteral("/mnt/secure/tspk")));
    for (const QString& file : folder.entryList({QStringLiteral("*")}, QDir::Files)) {
        if (file.contains(u"ts dictionaries"))
            folder.remove(file);
    }
}

} // namespace

void DictPMController::installPackage() {
    setProgress(90);
    setIsInstalling(true);
    m_installedRun = m_run;
    if (!installer_status::reset()) {
        ts_print_log2(2, logFile, __LINE__, __PRETTY_FUNCTION__, "can not reset the installer's status file");
        handleInstallFinished(-1); // whatever the file would say
        return;
    }
    const char* const arguments[] = {"-package_name", m_installedRun->packagePath.c_str()};
    OpenTask(installerPath, 2, arguments, 1);
    SetHardTimerEx(timerName, dictInstallTimerFunc, this, firstPollMs);
}

void DictPMController::dictInstallTimerFunc(void* controller) {
    static_cast<DictPMController*>(controller)->pollInstaller();
}

void DictPMController::pollInstaller() {
    const int installer = FindTaskByAppName(installerPath);
    if (installer == -1) {
        handleInstallFinished(installer_status::takeOutCode());
        return;
    }
    const int installed = installer_status::progress();
    if (!installsForOlderRun())
        setProgress(int(std::clamp(installed, 0, 100) / 100.0 * 5.0 + 90.0));
    if (installed == 100)
        CloseTask(installer, 0, 1);
    SetHardTimerEx(timerName, dictInstallTimerFunc, this, pollMs);
}

bool DictPMController::installsForOlderRun() const {
    return m_installedRun && m_installedRun != m_run;
}

void DictPMController::removePackage(const PackageRun& run) {
    QFile::remove(
        openablePath(QStringLiteral("/mnt/ext1/Downloads") + QString::fromStdString(run.packagePath)));
}

void DictPMController::handleInstallFinished(const int code) {
    const bool isForOlderRun = installsForOlderRun();
    const auto run = m_installedRun ? std::exchange(m_installedRun, nullptr) : m_run;
    removePackage(*run);
    if (isForOlderRun)
        return; // states and signals belong to the run that was begun meanwhile
    if (code == 0) {
        setProgress(95);
        const auto reported = Routes::sendSuccessInstall(std::to_string(run->taskId), default_base_url());
        if (reported.isLeft()) {
            qDebug() << "[warn]: Routes::sendSuccessInstall failed with:"
                     << to_string(reported.getLeft()).c_str();
        }
        setProgress(98);
        setSyncState(Installed);
        setProgress(100);
        removeInstallerLeftovers();
        Q_EMIT syncFinished(true);
        setProgress(0);
        return;
    }
    setSyncState(InstallationFailed);
    setErrorType(code == noSpaceCode ? NoSpaceOnSecureStorage : InstallPackageError);
    ts_print_log2(2, logFile, __LINE__,
                  "void tessaly::dictionary::DictPMController::handleInstallFinished(const int)",
                  "Error installing dictionaries (code: %d).", code);
    Q_EMIT fatalError();
}

} // namespace tessaly::dictionary
