#include "installer_device.h"
#include "package_builder.h"

#include <installer_codes.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QDir>
#include <QJsonObject>
#include <QTest>
#include <functional>

using namespace tessaly::tests;
using tessaly::installer::Code;

namespace {

using Kind = PackageBuilder::Kind;
/// Spoils a good package; returns the bytes to install.
using Spoil = std::function<QByteArray(PackageBuilder&)>;

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

QByteArray dictionary(int entries = 50) {
    return makeDictionary(text("A title"), entries, [] { return text("an old explanation"); });
}

Spoil entry(const char* name, Kind kind = Kind::File, const char* content = "") {
    return [=](PackageBuilder& package) {
        package.entries.append({text(name), content, kind});
        return package.build();
    };
}

Spoil listed(const char* key, const QJsonValue& value) {
    return [=](PackageBuilder& package) {
        package.relist(text(key), value);
        return package.build();
    };
}

Spoil named(const QString& name) {
    return listed("name", name);
}

Spoil manifest(const QByteArray& json) {
    return [=](PackageBuilder& package) {
        package.manifest = json;
        return package.build();
    };
}

Spoil also(const char* name, const QByteArray& content) {
    return [=](PackageBuilder& package) {
        package.add(text(name), content);
        return package.build();
    };
}

} // namespace

Q_DECLARE_METATYPE(Spoil)
Q_DECLARE_METATYPE(Code)

class TestInstallerPackages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_device.emplace(); }
    void cleanup() { m_device.reset(); }
    void refusesPackage_data();
    void refusesPackage();
    void refusesName_data();
    void refusesName();
    void refusesWithoutSpace();
    void installs();
    void takesBackWhatItDid();

private:
    PackageBuilder goodPackage() const {
        PackageBuilder package;
        package.add(text("Czech - German.tsdict"), dictionary(80));
        package.add(text("Ελληνικά (ὡς) [1].tsdict"), dictionary());
        return package;
    }
    void compareUnchanged(Code code, const QString& name = QStringLiteral("/dicts_1.tsi"));

    std::optional<InstallerDevice> m_device;
};

/// Runs the installer: it must tell this code, and leave an older dictionary and everything else as it was.
void TestInstallerPackages::compareUnchanged(Code code, const QString& name) {
    QFile older(m_device->dictionary(text("Czech - German.tsdict")));
    QVERIFY(older.open(QIODevice::WriteOnly) && older.write("older") == 5 && older.flush());
    const auto before = m_device->content();
    QByteArray log;
    QCOMPARE(m_device->run(name, &log), 1);
    QCOMPARE(m_device->status().code, int(code));
    QVERIFY(m_device->status().progress >= 0 && m_device->status().progress < 100);
    QCOMPARE(m_device->content(), before);
    QCOMPARE(log.count('\n'), 1);
    QVERIFY2(log.contains("(" + QByteArray::number(int(code)) + ")"), log.constData());
}

void TestInstallerPackages::refusesPackage_data() {
    QTest::addColumn<Spoil>("spoil");
    QTest::addColumn<Code>("code");
    const auto row = [](const char* name, Code code, const Spoil& spoil) {
        QTest::newRow(name) << spoil << code;
    };

    row("no zip", Code::NotAPackage, [](auto&) { return QByteArray(5000, 'x'); });
    row("empty", Code::NotAPackage, [](auto&) { return QByteArray(); });
    row("cut short", Code::NotAPackage, [](auto& package) { return package.build().chopped(30); });
    row("half", Code::NotAPackage, [](auto& package) { return package.build().left(2000); });
    row("damaged data", Code::NotAPackage, [](auto& package) {
        const QByteArray good = package.build();
        return QByteArray(good).replace(good.size() / 2, 8, QByteArray(8, '\xFF'));
    });

    row("no manifest", Code::NoManifest, manifest(QByteArray()));
    row("manifest too long", Code::BadManifest, manifest(QByteArray(2 << 20, ' ')));
    row("manifest no JSON", Code::BadManifest, manifest("{"));
    row("manifest no object", Code::BadManifest, manifest("[1]"));
    row("no files", Code::BadManifest, manifest(R"({"package_id": 1, "files": []})"));
    row("no package id", Code::BadManifest, manifest(R"({"files": [{"name": "X.tsdict"}]})"));
    row("too many files", Code::BadManifest, [](auto& package) {
        for (int i = 0; i < 500; ++i)
            package.listed.append(package.listed.last());
        return package.build();
    });
    row("other ending", Code::BadManifest, named(text("program.sh")));
    row("folder in name", Code::BadManifest, named(text("a/b.tsdict")));
    row("name leads out", Code::BadManifest, named(text("../../b.tsdict")));
    row("hidden name", Code::BadManifest, named(text(".tsdict")));
    row("control character", Code::BadManifest, named(text("a\nb.tsdict")));
    row("NUL", Code::BadManifest, named(QStringLiteral("a") + QChar(u'\0') + text(".tsdict")));
    row("name too long", Code::BadManifest, named(QString(250, u'a') + text(".tsdict")));
    row("same but for case", Code::BadManifest, also("CZECH - german.tsdict", dictionary()));
    row("negative size", Code::BadManifest, listed("size", -1));
    row("fractional size", Code::BadManifest, listed("size", 10.5));
    row("huge size", Code::BadManifest, listed("size", 1e18));
    row("no checksum", Code::BadManifest, listed("sha256", text("abc")));

    row("not listed", Code::BadEntry, entry("extra.tsdict", Kind::File, "x"));
    row("leads out", Code::BadEntry, entry("../../../../escaped.tsdict", Kind::File, "x"));
    row("absolute", Code::BadEntry, entry("/tmp/escaped.tsdict", Kind::File, "x"));
    row("link", Code::BadEntry, [](auto& package) {
        package.entries.last() = {package.entries.last().name, "/etc/passwd", Kind::Link};
        return package.build();
    });
    row("folder", Code::BadEntry, entry("folder", Kind::Folder));
    row("twice", Code::BadEntry, entry("Czech - German.tsdict", Kind::File, "x"));
    row("second manifest", Code::BadEntry, entry("manifest.json", Kind::File, "{}"));
    row("missing", Code::MissingFile, [](auto& package) {
        package.entries.removeLast();
        return package.build();
    });

    row("listed longer", Code::WrongSize, listed("size", 1'000'000));
    row("listed shorter", Code::WrongSize, listed("size", 100));
    row("bomb", Code::WrongSize, [](auto& package) {
        package.addBomb(50'000'003);
        return package.build();
    });
    row("checksum", Code::WrongChecksum, listed("sha256", QString(64, u'0')));

    row("no database", Code::NotADictionary, also("text.tsdict", QByteArray(10'000, 'x')));
    row("empty file", Code::NotADictionary, also("empty.tsdict", ""));
    row("cut database", Code::NotADictionary, also("cut.tsdict", dictionary(2000).left(5000)));
    row("no entries", Code::NotADictionary,
        also("table.tsdict", makeDatabase("CREATE TABLE metadata (key, value)")));
    row("virtual table", Code::NotADictionary,
        also("virtual.tsdict",
             makeDatabase("CREATE TABLE metadata (key, value);"
                          "CREATE VIRTUAL TABLE entries USING fts5(headword, definition)")));
    row("endless view", Code::NotADictionary,
        also("view.tsdict",
             makeDatabase("CREATE TABLE metadata (key, value);"
                          "CREATE VIEW entries AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i "
                          "+ 1 FROM n) SELECT i AS headword FROM n WHERE i < 0")));
}

void TestInstallerPackages::refusesPackage() {
    QFETCH(const Spoil, spoil);
    QFETCH(const Code, code);
    PackageBuilder package = goodPackage();
    const QByteArray bytes = spoil(package);
    QFile file(m_device->packagePath());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush());
    compareUnchanged(code);
}

void TestInstallerPackages::refusesName_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<Code>("code");
    QTest::newRow("empty") << QString() << Code::BadArguments;
    QTest::newRow("folder itself") << text("/") << Code::BadArguments;
    QTest::newRow("leads out") << text("/../dicts_1.tsi") << Code::BadArguments;
    QTest::newRow("absolute") << text("//etc/passwd") << Code::BadArguments;
    QTest::newRow("absent") << text("/none.tsi") << Code::PackageUnreadable;
    QTest::newRow("too long") << QString(300, u'a') << Code::PackageUnreadable;
    QTest::newRow("link") << text("/link.tsi") << Code::PackageUnreadable;
    QTest::newRow("folder") << text("/folder.tsi") << Code::PackageUnreadable;
}

void TestInstallerPackages::refusesName() {
    QFETCH(const QString, name);
    QFETCH(const Code, code);
    goodPackage().write(m_device->path("/mnt/ext1/package.tsi"));
    QFile::link(m_device->path("/mnt/ext1/package.tsi"), m_device->path("/mnt/ext1/Downloads/link.tsi"));
    QDir().mkpath(m_device->path("/mnt/ext1/Downloads/folder.tsi"));
    compareUnchanged(code, name);
}

void TestInstallerPackages::refusesWithoutSpace() {
    goodPackage().write(m_device->packagePath());
    vellum::state::setSecureFreeBytes(10'000);
    compareUnchanged(Code::NoSpace);
}

void TestInstallerPackages::installs() {
    const auto before = m_device->content();
    const PackageBuilder package = goodPackage();
    package.write(m_device->packagePath());
    QFile older(m_device->dictionary(package.entries[0].name));
    QVERIFY(older.open(QIODevice::WriteOnly) && older.write("older") == 5 && older.flush());
    qputenv("LC_ALL", "C"); // names don't depend on the user's language
    QCOMPARE(m_device->run(), 0);
    QCOMPARE(m_device->status().code, int(Code::Installed));
    QCOMPARE(m_device->status().progress, 100);
    for (const PackageBuilder::Entry& wanted : package.entries) {
        QFile file(m_device->dictionary(wanted.name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), wanted.content);
        QVERIFY(OpenDictionary(wanted.name.chopped(7).toUtf8().constData()) != 0);
        QVERIFY(file.remove());
    }
    QCOMPARE(m_device->content(), before);
}

void TestInstallerPackages::takesBackWhatItDid() {
    PackageBuilder package = goodPackage();
    package.add(text("New.tsdict"), dictionary());
    package.add(text("Taken.tsdict"), dictionary());
    package.write(m_device->packagePath());
    QVERIFY(QDir().mkpath(m_device->dictionary(text("Taken.tsdict/inside"))));
    compareUnchanged(Code::PlacingFailed);
}

QTEST_GUILESS_MAIN(TestInstallerPackages)
#include "tst_installer_packages.moc"
