#include "installer_device.h"
#include "package_builder.h"

#include <failure.h>

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

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

class TestInstallerRuns : public QObject {
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
        const int duration = int(timer.nsecsElapsed() / 1000) + 1;

        newer.write(m_device->packagePath());
        int killed = 0;
        for (int i = 0; i < 200 && killed < 20; ++i) {
            QProcess process;
            m_device->start(process);
            ::usleep(unsigned(QRandomGenerator::global()->bounded(duration)));
            process.kill();
            process.waitForFinished(-1);
            killed += process.exitStatus() == QProcess::CrashExit ? 1 : 0;
            for (int number = 0; number < 6; ++number) {
                const QByteArray content = readFile(m_device->dictionary(fileName(number)));
                QVERIFY(content == older.entries[number].content || content == newer.entries[number].content);
            }
            QVERIFY(m_device->status().code == int(Code::NotFinished) || m_device->status().progress == 100);
        }
        QCOMPARE(killed, 20);
        installAll(newer);
    }

    void statusIsAlwaysWhole() {
        bigPackage(QStringLiteral("text")).write(m_device->packagePath());
        QCOMPARE(m_device->run(QStringLiteral("/none.tsi")), 1); // there is a result to be overwritten
        QProcess process;
        m_device->start(process);
        int last = 0;
        bool hasBegun = false;
        while (!process.waitForFinished(0)) {
            const Status status = m_device->status();
            hasBegun = hasBegun || status.code == int(Code::NotFinished);
            if (!hasBegun)
                continue;
            QVERIFY(status.progress >= last);
            QCOMPARE(status.code, int(status.progress == 100 ? Code::Installed : Code::NotFinished));
            last = status.progress;
        }
        QVERIFY(hasBegun);
        QCOMPARE(m_device->status().progress, 100);
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

    void fullDisk_data() {
        QTest::addColumn<bool>("isBomb");
        QTest::addColumn<int>("code");
        QTest::newRow("too big") << false << int(Code::NoSpace);
        QTest::newRow("bomb stops at its listed size") << true << int(Code::WrongSize);
    }
    /// The disk turns out to be full only while it is written to.
    void fullDisk() {
        QFETCH(const bool, isBomb);
        QFETCH(const int, code);
        PackageBuilder package;
        if (isBomb)
            package.addBomb(50'000'003);
        else
            package = bigPackage(QStringLiteral("text"));
        package.write(m_device->packagePath());
        const QString script =
            QStringLiteral("mount -t tmpfs -o size=1m none '%1' && mkdir '%1/tspk' && "
                           "echo secure_free_bytes=1000000000 >> '%2' && echo mounted && '%3' "
                           "-package_name /dicts_1.tsi")
                .arg(m_device->path("/mnt/secure"), m_device->path("/var/device_state.cfg"),
                     m_device->path("/ebrmain/bin/dictpackageinstaller.app"));
        QProcess process;
        process.start(QStringLiteral("unshare"),
                      {QStringLiteral("-Urm"), QStringLiteral("sh"), QStringLiteral("-c"), script});
        process.waitForFinished(-1);
        if (!process.readAllStandardOutput().contains("mounted"))
            QSKIP("may not mount here");
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(m_device->status().code, code);
    }
};

QTEST_GUILESS_MAIN(TestInstallerRuns)
#include "tst_installer_runs.moc"
