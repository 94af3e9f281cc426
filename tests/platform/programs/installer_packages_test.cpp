#include "installer_device.h"
#include "package_builder.h"

#include <failure.h>
#include <vellum/device_state.h>

#include <QJsonObject>
#include <QTest>
#include <functional>
#include <optional>

using namespace tessaly::tests;
using tessaly::installer::Code;
/// Spoils a good package.
using Spoil = std::function<void(PackageBuilder&)>;

Q_DECLARE_METATYPE(Spoil)
Q_DECLARE_METATYPE(Code)

namespace {

QByteArray dictionary(int entries = 50) {
    return makeDictionary(u"A title"_qs, entries, [] { return u"an old explanation"_qs; });
}

PackageBuilder goodPackage() {
    PackageBuilder package;
    package.add(u"Czech - German.tsdict"_qs, dictionary(80));
    package.add(u"Ελληνικά (ὡς) [1].tsdict"_qs, dictionary());
    return package;
}

} // namespace

class InstallerPackagesTest : public QObject {
    Q_OBJECT

    std::optional<InstallerDevice> m_device;

    /// The installer must tell this code, and leave an older dictionary and everything else as it was.
    void compareUnchanged(Code code, const QString& name = u"/dicts_1.tsi"_qs) {
        writeFile(m_device->dictionary(u"Czech - German.tsdict"_qs), "older");
        const auto before = m_device->content();
        QByteArray log;
        QCOMPARE(m_device->run(name, &log), 1);
        QCOMPARE(m_device->status().code, int(code));
        QVERIFY(m_device->status().progress >= 0 && m_device->status().progress < 100);
        QCOMPARE(m_device->content(), before);
        QVERIFY(log.startsWith("[error]") && !log.contains("\n[")); // one record, whatever it quotes
        QVERIFY2(log.contains("(" + QByteArray::number(int(code)) + ")"), log.constData());
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
                [key, value](auto& package) { package.relist(key, value); });
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
    }
    void refusesPackage() {
        QFETCH(const Spoil, spoil);
        QFETCH(const Code, code);
        PackageBuilder package = goodPackage();
        spoil(package);
        package.write(m_device->packagePath());
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
        goodPackage().write(m_device->packagePath());
        vellum::state::setSecureFreeBytes(10'000);
        compareUnchanged(Code::NoSpace);
    }

    void installs() {
        const auto before = m_device->content();
        const PackageBuilder package = goodPackage();
        package.write(m_device->packagePath());
        writeFile(m_device->dictionary(package.entries[0].name), "older");
        qputenv("LC_ALL", "C"); // names don't depend on the user's language
        QCOMPARE(m_device->run(), 0);
        QCOMPARE(m_device->status().code, int(Code::Installed));
        QCOMPARE(m_device->status().progress, 100);
        for (const PackageBuilder::Entry& wanted : package.entries) {
            QCOMPARE(readFile(m_device->dictionary(wanted.name)), wanted.content);
            QVERIFY(OpenDictionary(wanted.name.chopped(7).toUtf8().constData()) != 0);
            QVERIFY(QFile::remove(m_device->dictionary(wanted.name)));
        }
        QCOMPARE(m_device->content(), before);
    }

    void takesBackWhatItDid() {
        PackageBuilder package = goodPackage();
        package.add(u"New.tsdict"_qs, dictionary());
        package.add(u"Taken.tsdict"_qs, dictionary());
        package.write(m_device->packagePath());
        QVERIFY(QDir().mkpath(m_device->dictionary(u"Taken.tsdict/inside"_qs)));
        compareUnchanged(Code::PlacingFailed);
    }
};

QTEST_GUILESS_MAIN(InstallerPackagesTest)
#include "installer_packages_test.moc"
