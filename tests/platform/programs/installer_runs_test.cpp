#include "../support/killing.h"
#include "installer_device.h"
#include "package_builder.h"

#include <failure.h>

#include <QElapsedTimer>
#include <QTest>
#include <optional>
#include <sys/stat.h>

using namespace tessaly::tests;
using tessaly::installer::Code;

namespace {

QString fileName(int number) {
    return QStringLiteral("Dictionary %1.tsdict").arg(number);
}

/// Some megabytes, so that a run takes a while.
PackageBuilder bigPackage(const QString& definition) {
    PackageBuilder package;
    const QByteArray dictionary = makeDictionary(QStringLiteral("Big"), 20'000, [&] { return definition; });
    for (int i = 0; i < 6; ++i)
        package.add(fileName(i), dictionary);
    return package;
}

quint64 fileSystemOf(const QString& path) {
    struct stat info {};
    ::stat(path.toUtf8().constData(), &info);
    return info.st_dev;
}

} // namespace

class InstallerRunsTest : public QObject {
    Q_OBJECT

    std::optional<InstallerDevice> m_device;

    /// A run that succeeds, with nothing but the package's dictionaries left behind.
    void installAll(const PackageBuilder& package) {
        QCOMPARE(m_device->run(), 0);
        QMap<QString, QByteArray> wanted;
        for (const PackageBuilder::Entry& entry : package.entries)
            wanted[entry.name] = entry.content;
        QVERIFY(folderContent(m_device->dictionary({})) == wanted);
        QCOMPARE(folderContent(m_device->path("/mnt/secure/tspk")).keys(), QStringList());
        QCOMPARE(folderContent(m_device->path("/mnt/ext1/system/tsdicts")).keys(),
                 QStringList(QStringLiteral("installer_out_code.txt")));
    }

private Q_SLOTS:
    void init() { m_device.emplace(); }
    void cleanup() { m_device.reset(); }

    void killedAtAnyMoment_data() {
        QTest::addColumn<bool>("separateStorage");
        QTest::newRow("one file system") << false;
        QTest::newRow("two file systems") << true;
    }
    void killedAtAnyMoment() {
        QFETCH(const bool, separateStorage);
        const QTemporaryDir memory(QStringLiteral("/dev/shm/secure-XXXXXX"));
        if (separateStorage) {
            if (!memory.isValid() || fileSystemOf(memory.path()) == fileSystemOf(m_device->path("/")))
                QSKIP("no second file system here");
            // A symbolic link stands for the mount point.
            const QString secure = m_device->path("/mnt/secure");
            QVERIFY(QDir(secure).removeRecursively() && QDir(memory.path()).mkdir(QStringLiteral("tspk")) &&
                    QFile::link(memory.path(), secure));
        }
        const PackageBuilder older = bigPackage(QStringLiteral("old text"));
        const PackageBuilder newer = bigPackage(QStringLiteral("new, quite different text"));
        older.write(m_device->packagePath());
        QElapsedTimer timer;
        timer.start();
        installAll(older);
        const qint64 duration = timer.nsecsElapsed();
        newer.write(m_device->packagePath());
        const auto check = [&] {
            for (int number = 0; number < 6; ++number) {
                const QByteArray content = readFile(m_device->dictionary(fileName(number)));
                QVERIFY(content == older.entries[number].content || content == newer.entries[number].content);
            }
            QVERIFY(m_device->status().code == int(Code::NotFinished) || m_device->status().progress == 100);
        };
        const auto start = [&](QProcess& process) { m_device->start(process); };
        QCOMPARE(killAtAnyMoment(20, duration, start, check), 20);
        installAll(newer);
    }

    void twoAtOnce() {
        const PackageBuilder package = bigPackage(QStringLiteral("text"));
        package.write(m_device->packagePath());
        QProcess first;
        m_device->start(first);
        while (m_device->status().code != int(Code::NotFinished))
            QVERIFY(!first.waitForFinished(0));
        QCOMPARE(m_device->run(QStringLiteral("/none.tsi")), 1);
        QVERIFY(first.state() == QProcess::NotRunning || first.waitForFinished(-1));
        QCOMPARE(first.exitCode(), 0);
        QCOMPARE(m_device->status().code, int(Code::PackageUnreadable));
        installAll(package);
    }
};

QTEST_GUILESS_MAIN(InstallerRunsTest)
#include "installer_runs_test.moc"
