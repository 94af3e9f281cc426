#include "dictd/dictd_dictionary.h"
#include "dictd/dictd_info.h"
#include "dictd/gzip_text.h"
#include "support/failure.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace tessaly::server;

namespace {

const QString installed = QStringLiteral("/usr/share/dictd/freedict-%1.%2");

QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& data) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(data);
}

/// The files of a dictionary, to be spoilt.
struct Files {
    QByteArray index;
    QByteArray compressed;
};
using Spoil = std::function<void(Files&)>;

} // namespace

Q_DECLARE_METATYPE(Spoil)

class TestServerDictd : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsInstalled_data() {
        QTest::addColumn<std::size_t>("words");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("provider");
        QTest::addColumn<QString>("date");
        const auto row = [](const char* code, std::size_t words, const char* title, int version,
                            const char* provider, const char* date) {
            QTest::newRow(code) << words << QString::fromUtf8(title) << version << QString::fromUtf8(provider)
                                << QString::fromUtf8(date);
        };
        // The date: from the changes, as month and day, as numbers, in words.
        row("ces-eng", 488, "Czech-English FreeDict Dictionary", 203, "FreeDict", "2018-08-04");
        row("fra-eng", 8505, "French-English FreeDict Dictionary", 401, "FreeDict", "2018-08-11");
        row("ell-rus", 12853, "ελληνικά-Русский FreeDict+WikDict dictionary", 20221118, "Karl Bartel",
            "2022-11-18");
        row("spa-eng", 4502, "Spanish-English FreeDict Dictionary", 301, "FreeDict", "2019-04-30");
    }

    void readsInstalled() {
        const QString code = QString::fromLatin1(QTest::currentDataTag());
        const DictdDictionary dictionary(installed.arg(code, QStringLiteral("index")));
        QTEST(dictionary.entries().size(), "words");
        for (const DictdEntry& entry : dictionary.entries())
            QVERIFY(!dictionary.text(entry).trimmed().isEmpty());
        const DictdInfo info =
            parseDictdInfo(dictionary.about(QLatin1String("short")), dictionary.about(QLatin1String("info")));
        QTEST(info.title, "title");
        QTEST(info.version, "version");
        QTEST(info.provider, "provider");
        QTEST(info.publishDate, "date");
        QVERIFY(info.description.contains(u"icense")); // its licence is kept
        QVERIFY(!info.description.contains(info.title));
        QVERIFY(!info.description.contains(u"Changelog"));
        for (const QString& paragraph : info.description.split(QStringLiteral("\n\n")))
            QVERIFY2(!paragraph.contains(u'\n') && !paragraph.contains(u"  "), qPrintable(paragraph));
    }

    void readsPlainText() {
        const QTemporaryDir folder;
        const QString base = folder.filePath(QStringLiteral("freedict-ces-eng."));
        const QString code = QStringLiteral("ces-eng");
        write(base + u"index"_qs, content(installed.arg(code, QStringLiteral("index"))));
        write(base + u"dict"_qs, readGzipText(installed.arg(code, QStringLiteral("dict.dz"))));
        const DictdDictionary plain(base + u"index"_qs);
        const DictdDictionary packed(installed.arg(code, QStringLiteral("index")));
        QCOMPARE(plain.text(plain.entries().back()), packed.text(packed.entries().back()));
    }

    void refusesDamaged_data() {
        QTest::addColumn<Spoil>("spoil");
        const auto row = [](const char* name, const Spoil& spoil) { QTest::newRow(name) << spoil; };
        row("text cut off", [](Files& files) { files.compressed.chop(files.compressed.size() / 2); });
        row("text without its checksum", [](Files& files) { files.compressed.chop(8); });
        row("a byte of the text changed",
            [](Files& files) { files.compressed[files.compressed.size() - 100] ^= '\x55'; });
        row("text not compressed", [](Files& files) { files.compressed = QByteArray(100000, 'x'); });
        row("no text file", [](Files& files) { files.compressed.clear(); });
        row("index empty", [](Files& files) { files.index.clear(); });
        row("index cut off", [](Files& files) { files.index.chop(3); });
        row("offset outside", [](Files& files) { files.index += "zzz\tzzzz\tB\n"; });
        row("length outside", [](Files& files) { files.index += "zzz\tB\tzzzz\n"; });
        row("sum overflows", [](Files& files) { files.index += "zzz\t////////////\t////////////\n"; });
        row("not a number", [](Files& files) { files.index += "zzz\tA.B\tB\n"; });
        row("columns missing", [](Files& files) { files.index += "zzz\tB\n"; });
        row("binary", [](Files& files) { files.index = QByteArray("\0\x01\x02\n\xff\t\t\n", 8); });
    }

    void refusesDamaged() {
        QFETCH(Spoil, spoil);
        const QTemporaryDir folder;
        const QString code = QStringLiteral("ces-eng");
        Files files{content(installed.arg(code, QStringLiteral("index"))),
                    content(installed.arg(code, QStringLiteral("dict.dz")))};
        spoil(files);
        const QString base = folder.filePath(QStringLiteral("freedict-ces-eng."));
        write(base + u"index"_qs, files.index);
        if (!files.compressed.isEmpty())
            write(base + u"dict.dz"_qs, files.compressed);
        QVERIFY_THROWS_EXCEPTION(Failure, DictdDictionary(base + u"index"_qs));
    }

    void editions_data() {
        QTest::addColumn<int>("version");
        QTest::newRow("0.2") << 200;
        QTest::newRow("1.12.3") << 11203;
        QTest::newRow("2") << 20000;
        QTest::newRow("2022-11-18") << 20221118;
        QTest::newRow("0.1.3beta") << 1;
        QTest::newRow("999999999.1") << 1;
        QTest::newRow("1.2.3.4") << 1;
        QTest::newRow("unknown") << 1;
    }

    void editions() {
        const QString edition = QString::fromLatin1(QTest::currentDataTag());
        QTEST(parseDictdInfo(QStringLiteral("A-B"), QStringLiteral("Edition: %1\n").arg(edition)).version,
              "version");
        QTEST(parseDictdInfo(QStringLiteral("A-B ver. ") + edition, {}).version, "version");
    }
};

QTEST_GUILESS_MAIN(TestServerDictd)
#include "test_server_dictd.moc"
