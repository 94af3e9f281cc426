#include "benchmarks.h"
#include "compare.h"

#include <programs/package_builder.h>
#include <simulator/fixture/test_device.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <random>
#include <stdexcept>
#include <vector>

namespace tessaly::benchmarks {

namespace {

constexpr int rounds = 7;
constexpr int dictionaries = 16;
constexpr int entries = 20'000;

/// Words of a made-up language, frequent ones more often than rare ones: text that packs like text.
QString makeText(std::mt19937& random, int words) {
    static const QStringList syllables =
        QStringLiteral("ka lo min ter es vu ran dol pre shi na os tik wer an").split(u' ');
    std::geometric_distribution<int> rank(0.01);
    QString text;
    for (int i = 0; i < words; ++i) {
        for (int number = rank(random) + 1; number > 0; number /= int(syllables.size()))
            text += syllables[number % syllables.size()];
        text += u' ';
    }
    return text;
}

tests::PackageBuilder makePackage() {
    std::mt19937 random(1);
    tests::PackageBuilder package;
    for (int i = 0; i < dictionaries; ++i)
        package.add(QStringLiteral("Dictionary %1.tsdict").arg(i),
                    tests::makeDictionary(QStringLiteral("Dictionary %1").arg(i), entries,
                                          [&] { return makeText(random, 20); }));
    return package;
}

void run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        throw std::runtime_error(program.toStdString() + " failed");
}

} // namespace

Measurement measureInstall() {
    const fixture::TestDevice device;
    const QString packagePath = device.path("/mnt/ext1/Downloads/dicts_1.tsi");
    makePackage().write(packagePath);

    std::vector<double> ours;
    std::vector<double> reference;
    for (int i = 0; i < rounds; ++i) {
        ours.push_back(seconds([&] {
            run(device.path("/ebrmain/bin/dictpackageinstaller.app"),
                {QStringLiteral("-package_name"), QStringLiteral("/dicts_1.tsi")});
        }));
        for (const QFileInfo& file :
             QDir(device.path("/mnt/ext1/system/dictionaries")).entryInfoList(QDir::Files))
            QFile::remove(file.filePath());

        const QTemporaryDir folder(device.path("/mnt/ext1/unpacked-XXXXXX"));
        reference.push_back(seconds([&] {
            run(QStringLiteral("bsdtar"),
                {QStringLiteral("-xf"), packagePath, QStringLiteral("-C"), folder.path()});
            QStringList files;
            for (const QFileInfo& file : QDir(folder.path()).entryInfoList(QDir::Files))
                files.append(file.filePath());
            run(QStringLiteral("sha256sum"), files);
        }));
    }
    return compareMedians("install", ours, reference);
}

} // namespace tessaly::benchmarks
