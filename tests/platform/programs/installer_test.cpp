#include "../support/killing.h"
#include "package_builder.h"

#include <failure.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QElapsedTimer>
#include <QJsonObject>
#include <QProcess>
#include <QStorageInfo>
#include <QTest>
#include <csignal>
#include <functional>
#include <optional>
#include <sys/resource.h>

using namespace tessaly::tests;
using tessaly::installer::Code;
/// Spoils a good package.
using Spoil = std::function<void(PackageBuilder&)>;

Q_DECLARE_METATYPE(Spoil)
Q_DECLARE_METATYPE(Code)

namespace {

QByteArray dictionary(int entries = 50, const QString& definition = u"an old explanation"_qs) {
    return makeDictionary(u"A title"_qs, entries, [&] { return definition; });
}

PackageBuilder goodPackage() {
    PackageBuilder package;
    package.add(u"Czech - German.tsdict"_qs, dictionary(80));
    package.add(u"Ελληνικά (ὡς) [1].tsdict"_qs, dictionary());
    return package;
}

/// Some megabytes, so that a run takes a while.
PackageBuilder bigPackage(const QString& definition) {
    PackageBuilder package;
    const QByteArray big = dictionary(20'000, definition);
    for (int i = 0; i < 6; ++i)
        package.add(u"Dictionary %1.tsdict"_qs.arg(i), big);
    return package;
}

} // namespace

/// The real installer: what it refuses, and what is on the device whenever it ends.
class InstallerTest : public QObject {
    Q_OBJECT

    std::optional<tessaly::fixture::TestDevice> m_device;

    [[nodiscard]] QString packagePath() const { return m_device->path("/mnt/ext1/Downloads/dicts_1.tsi"); }
    [[nodiscard]] QString installed(const QString& name) const {
        return m_device->path("/mnt/ext1/system/dictionaries/") + name;
    }
    /// All that lies where the installer writes.
    [[nodiscard]] QMap<QString, QByteArray> content() const {
        QMap<QString, QByteArray> found = folderContent(m_device->path("/mnt/secure"));
        found.insert(folderContent(installed({})));
        return found;
    }

    /// On disks that have no more room than this for a file. The log comes from stderr.
    void start(QProcess& process, const QString& packageName = u"/dicts_1.tsi"_qs) const {
        process.setChildProcessModifier([] {
            const rlimit room{5'000'000, 5'000'000};
            ::setrlimit(RLIMIT_FSIZE, &room);
            std::signal(SIGXFSZ, SIG_IGN);
        });
        process.start(m_device->path("/ebrmain/bin/dictpackageinstaller.app"),
                      {u"-package_name"_qs, packageName});
        process.waitForStarted();
    }
    /// The exit status of a whole run.
    int run(const QString& packageName = u"/dicts_1.tsi"_qs, QByteArray* log = nullptr) const {
        QProcess process;
        start(process, packageName);
        process.waitForFinished(-1);
        if (log)
            *log = process.readAllStandardError();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// Of the status file.
    static std::pair<Code, int> codeAndProgress() {
        vl_config* const config = OpenConfig("/mnt/ext1/system/tsdicts/installer_out_code.txt", 0);
        const std::pair status(Code(ReadInt(config, "out_code", -1000)), ReadInt(config, "progress", -1000));
        CloseConfig(config);
        return status;
    }

    /// The installer must tell this code, and leave an older dictionary and everything else as it was.
    void compareUnchanged(Code expected, const QString& name = u"/dicts_1.tsi"_qs) {
        writeFile(installed(u"Czech - German.tsdict"_qs), "older");
        const auto before = content();
        QByteArray log;
        QCOMPARE(run(name, &log), 1);
        const auto [code, progress] = codeAndProgress();
        QCOMPARE(code, expected);
        QVERIFY(progress >= 0 && progress < 100);
        QCOMPARE(content(), before);
        QVERIFY(log.startsWith("[error]") && !log.contains("\n[")); // one record, whatever it quotes
        QVERIFY2(log.contains("(" + QByteArray::number(int(code)) + ")"), log.constData());
    }

    /// A run that succeeds, with nothing but the package's dictionaries left behind.
    void installAll(const PackageBuilder& package) {
        QCOMPARE(run(), 0);
        QVERIFY(codeAndProgress() == std::pair(Code::Installed, 100));
        QMap<QString, QByteArray> wanted;
        for (const PackageBuilder::Entry& entry : package.entries)
            wanted[entry.name] = entry.content;
        QVERIFY(folderContent(installed({})) == wanted);
        QCOMPARE(folderContent(m_device->path("/mnt/secure/tspk")).keys(), QStringList());
        QCOMPARE(folderContent(m_device->path("/mnt/ext1/system/tsdicts")).keys(),
                 QStringList(u"installer_out_code.txt"_qs));
    }

private Q_SLOTS:
    void init() { m_device.emplace(); }
    void cleanup() { m_device.reset(); }

    void refusesPackage_data() {
        QTest::addColumn<Spoil>("spoil");
        QTest::addColumn<Code>("code");
        const auto row = [](const QString& name, Code code, const Spoil& spoil) {
            QTest::newRow(qPrintable(name)) << spoil << code;
        };

        row(u"no zip"_qs, Code::NotAPackage, [](auto& package) { package.bytes = QByteArray(5000, 'x'); });
        row(u"empty"_qs, Code::NotAPackage, [](auto& package) { package.bytes = QByteArray(); });
        const QByteArray good = goodPackage().build();
        for (const QByteArray& bytes : {good.chopped(30), good.left(2000),
                                        QByteArray(good).replace(good.size() / 2, 8, QByteArray(8, '\xFF'))})
            row(u"%1 bytes"_qs.arg(bytes.size()), Code::NotAPackage,
                [bytes](auto& package) { package.bytes = bytes; });
        row(u"no manifest"_qs, Code::NoManifest, [](auto& package) { package.manifest = QByteArray(); });
        for (const QByteArray& json : {QByteArray(2 << 20, ' '), QByteArray("{"), QByteArray("[1]"),
                                       QByteArray(R"({"package_id": 1, "files": []})"),
                                       QByteArray(R"({"files": [{"name": "X.tsdict"}]})")})
            row(u"manifest "_qs + QString::fromLatin1(json.left(40)), Code::BadManifest,
                [json](auto& package) { package.manifest = json; });
        const std::pair<QString, QJsonValue> fields[] = {
            {u"name"_qs, u"program.sh"_qs},
            {u"name"_qs, u"a/b.tsdict"_qs},
            {u"name"_qs, u"../../b.tsdict"_qs},
            {u"name"_qs, u".tsdict"_qs},
            {u"name"_qs, u"a\nb.tsdict"_qs},
            {u"name"_qs, u"a\0b.tsdict"_qs},
            {u"name"_qs, QString(250, u'a') + u".tsdict"_qs},
            {u"size"_qs, -1},
            {u"size"_qs, 10.5},
            {u"size"_qs, 1e18},
            {u"sha256"_qs, u"abc"_qs},
        };
        for (const auto& [key, value] : fields)
            row(key + u' ' + value.toVariant().toString(), Code::BadManifest,
                [key = key, value = value](auto& package) { package.relist(key, value); });
        row(u"too many files"_qs, Code::BadManifest, [](auto& package) {
            for (int i = 0; i < 500; ++i)
                package.listed.append(package.listed.last());
        });
        row(u"same but for case"_qs, Code::BadManifest,
            [](auto& package) { package.add(u"CZECH - german.tsdict"_qs, dictionary()); });

        for (const QString& name :
             {u"extra.tsdict"_qs, u"../../../../escaped.tsdict"_qs, u"/tmp/escaped.tsdict"_qs,
              u"Czech - German.tsdict"_qs, u"manifest.json"_qs})
            row(u"entry "_qs + name, Code::BadEntry, [name](auto& package) {
                package.entries.append({name, "x"});
            });
        row(u"folder"_qs, Code::BadEntry, [](auto& package) { package.entries.append({u"folder/"_qs, {}}); });
        row(u"link"_qs, Code::BadEntry, [](auto& package) {
            package.entries.last() = {package.entries.last().name, "/etc/passwd", true};
        });
        row(u"missing"_qs, Code::MissingFile, [](auto& package) { package.entries.removeLast(); });
        for (const int size : {100, 1'000'000})
            row(u"listed %1"_qs.arg(size), Code::WrongSize,
                [size](auto& package) { package.relist(u"size"_qs, size); });
        row(u"bomb"_qs, Code::WrongSize, [](auto& package) { package.addBomb(50'000'003); });
        row(u"full disk"_qs, Code::StagingFailed,
            [](auto& package) { package.add(u"large.tsdict"_qs, QByteArray(6'000'000, 'x')); });
        row(u"checksum"_qs, Code::WrongChecksum,
            [](auto& package) { package.relist(u"sha256"_qs, QString(64, u'0')); });

        const std::pair<QString, QByteArray> files[] = {
            {u"no database"_qs, QByteArray(10'000, 'x')},
            {u"cut database"_qs, dictionary(2000).left(5000)},
            {u"endless view"_qs,
             makeDatabase("CREATE TABLE metadata (key, value);"
                          "CREATE VIEW entries AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                          "SELECT i + 1 FROM n) SELECT i AS headword FROM n WHERE i < 0")},
        };
        for (const auto& [name, content] : files)
            row(name, Code::NotADictionary,
                [content = content](auto& package) { package.add(u"new.tsdict"_qs, content); });
        for (const char* const column : {"zeroblob(4e8)", "headword || headword || headword"})
            row(QLatin1String(column), Code::NotADictionary, [column](auto& package) {
                package.add(
                    u"new.tsdict"_qs,
                    makeDatabase(QByteArray("CREATE TABLE metadata (key, value);"
                                            "CREATE TABLE entries (headword, folded, definition AS (") +
                                 column + "))"));
            });
    }
    void refusesPackage() {
        QFETCH(const Spoil, spoil);
        QFETCH(const Code, code);
        PackageBuilder package = goodPackage();
        spoil(package);
        package.write(packagePath());
        compareUnchanged(code);
    }

    void refusesName_data() {
        QTest::addColumn<Code>("code");
        for (const char* const name : {"", "/", "/../dicts_1.tsi", "//etc/passwd"})
            QTest::newRow(name) << Code::BadArguments;
        for (const char* const name : {"/none.tsi", "/link.tsi", "/folder.tsi"})
            QTest::newRow(name) << Code::PackageUnreadable;
        QTest::newRow(QByteArray(300, 'a')) << Code::PackageUnreadable;
    }
    void refusesName() {
        QFETCH(const Code, code);
        const QString target = m_device->path("/mnt/ext1/package.tsi");
        goodPackage().write(target);
        QFile::link(target, m_device->path("/mnt/ext1/Downloads/link.tsi"));
        QDir().mkpath(m_device->path("/mnt/ext1/Downloads/folder.tsi"));
        compareUnchanged(code, QString::fromLatin1(QTest::currentDataTag()));
    }

    void refusesWithoutSpace() {
        goodPackage().write(packagePath());
        vellum::state::setSecureFreeBytes(10'000);
        compareUnchanged(Code::NoSpace);
    }

    void installs_data() {
        QTest::addColumn<quint32>("hole");
        QTest::newRow("a small package") << 0U;
        QTest::newRow("files beyond 2 GiB") << 2'500'000'000U;
    }
    void installs() {
        QFETCH(const quint32, hole);
        PackageBuilder package = goodPackage();
        package.hole = hole;
        package.write(packagePath());
        writeFile(installed(package.entries[0].name), "older");
        qputenv("LC_ALL", "C"); // names don't depend on the user's language
        installAll(package);
        for (const PackageBuilder::Entry& entry : package.entries)
            QVERIFY(OpenDictionary(entry.name.chopped(7).toUtf8().constData()) != 0);
    }

    void takesBackWhatItDid() {
        PackageBuilder package = goodPackage();
        package.add(u"New.tsdict"_qs, dictionary());
        package.add(u"Taken.tsdict"_qs, dictionary());
        package.write(packagePath());
        QVERIFY(QDir().mkpath(installed(u"Taken.tsdict/inside"_qs)));
        compareUnchanged(Code::PlacingFailed);
    }

    void killedAtAnyMoment_data() {
        QTest::addColumn<bool>("separateStorage");
        QTest::newRow("one file system") << false;
        QTest::newRow("two file systems") << true;
    }
    void killedAtAnyMoment() {
        QFETCH(const bool, separateStorage);
        const QTemporaryDir memory(u"/dev/shm/secure-XXXXXX"_qs);
        if (separateStorage) {
            if (!memory.isValid() || QStorageInfo(memory.path()) == QStorageInfo(m_device->root()))
                QSKIP("no second file system here");
            // A symbolic link stands for the mount point.
            const QString secure = m_device->path("/mnt/secure");
            QVERIFY(QDir(secure).removeRecursively() && QDir(memory.path()).mkdir(u"tspk"_qs) &&
                    QFile::link(memory.path(), secure));
        }
        const PackageBuilder older = bigPackage(u"old text"_qs);
        const PackageBuilder newer = bigPackage(u"new, quite different text"_qs);
        older.write(packagePath());
        QElapsedTimer timer;
        timer.start();
        installAll(older);
        const qint64 duration = timer.nsecsElapsed();
        newer.write(packagePath());
        const auto check = [&] {
            for (int i = 0; i < 6; ++i) {
                const QByteArray content = readFile(installed(older.entries[i].name));
                QVERIFY(content == older.entries[i].content || content == newer.entries[i].content);
            }
            QVERIFY(codeAndProgress().first == Code::NotFinished || codeAndProgress().second == 100);
        };
        const auto startOne = [this](QProcess& process) { start(process); };
        QCOMPARE(killAtAnyMoment(20, duration, startOne, check), 20);
        installAll(newer);
    }

    void twoAtOnce() {
        const PackageBuilder package = bigPackage(u"text"_qs);
        package.write(packagePath());
        QProcess first;
        start(first);
        while (codeAndProgress().first != Code::NotFinished)
            QVERIFY(!first.waitForFinished(0));
        QCOMPARE(run(u"/none.tsi"_qs), 1);
        QVERIFY(first.state() == QProcess::NotRunning || first.waitForFinished(-1));
        QCOMPARE(first.exitCode(), 0);
        QCOMPARE(codeAndProgress().first, Code::PackageUnreadable);
        installAll(package);
    }
};

QTEST_GUILESS_MAIN(InstallerTest)
#include "installer_test.moc"
