#include "installer_device.h"

#include <QDirIterator>
#include <QFile>
#include <memory>
#include <vellum/vellum.h>

namespace tessaly::tests {

void InstallerDevice::start(QProcess& process, const QString& packageName) const {
    process.start(path("/ebrmain/bin/dictpackageinstaller.app"),
                  {QStringLiteral("-package_name"), packageName});
    process.waitForStarted();
}

int InstallerDevice::run(const QString& packageName, QByteArray* log) const {
    QProcess process;
    start(process, packageName);
    process.waitForFinished(-1);
    if (log)
        *log = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

Status InstallerDevice::status() const {
    const std::unique_ptr<vl_config, void (*)(vl_config*)> config(
        OpenConfig("/mnt/ext1/system/tsdicts/installer_out_code.txt", 0), CloseConfig);
    return {ReadInt(config.get(), "out_code", -1000), ReadInt(config.get(), "progress", -1000)};
}

QMap<QString, QByteArray> InstallerDevice::content() const {
    QMap<QString, QByteArray> found;
    for (const char* const folder : {"/mnt/secure", "/mnt/ext1/system/dictionaries"}) {
        QDirIterator entry(path(folder),
                           QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (entry.hasNext()) {
            QFile file(entry.next());
            found.insert(file.fileName(),
                         file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("folder"));
        }
    }
    return found;
}

} // namespace tessaly::tests
