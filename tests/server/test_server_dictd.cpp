#include "dictd/dictd_dictionary.h"
#include "dictd/dictd_info.h"
#include "dictd/gzip_text.h"
#include "support/failure.h"

#include <tests/support/files.h>

#include <QTemporaryDir>
#include <QTest>
#include <functional>

using namespace tessaly::server;

namespace {

QString installed(const char* code, const char* ending) {
    return QStringLiteral("/usr/share/dictd/freedict-%1.%2")
        .arg(QString::fromLatin1(code), QString::fromLatin1(ending));
}

/// The files of a dictionary, to be spoilt.
struct Files {
    QByteArray index = readFile(installed("ces-eng", "index"));
    QByteArray compressed = readFile(installed("ces-eng", "dict.dz"));
};
using Spoil = std::function<void(Files&)>;

} // namespace

Q_DECLARE_METATYPE(Spoil)

class TestServerDictd : public QObject {
    Q_OBJECT

    const QTemporaryDir m_folder;
    const QString m_index = m_folder.filePath(QStringLiteral("freedict-ces-eng.index"));
    const QString m_text = m_folder.filePath(QStringLiteral("freedict-ces-eng.dict"));

private Q_SLOTS:
    void readsInstalled_data() {
        QTest::addColumn<std::size_t>("words");
        QTest::addColumn<QString>("about");
        const auto row = [](const char* code, std::size_t words, const char* about) {
            QTest::newRow(code) << words << QString::fromUtf8(about);
        };
        // The date: from the changes, as month and day, as numbers, in words.
        row("ces-eng", 488, "Czech-English FreeDict Dictionary|203|FreeDict|2018-08-04");
        row("fra-eng", 8505, "French-English FreeDict Dictionary|401|FreeDict|2018-08-11");
        row("ell-rus", 12853, "ελληνικά-Русский FreeDict+WikDict dictionary|20221118|Karl Bartel|2022-11-18");
        row("spa-eng", 4502, "Spanish-English FreeDict Dictionary|301|FreeDict|2019-04-30");
    }
    void readsInstalled() {
        const DictdDictionary dictionary(installed(QTest::currentDataTag(), "index"));
        QTEST(dictionary.entries().size(), "words");
        for (const DictdEntry& entry : dictionary.entries())
            QVERIFY(!dictionary.text(entry).trimmed().isEmpty());
        const DictdInfo info =
            parseDictdInfo(dictionary.about(QLatin1String("short")), dictionary.about(QLatin1String("info")));
        const QString version = QString::number(info.version);
        QTEST(QStringList({info.title, version, info.provider, info.publishDate}).join(u'|'), "about");
        QVERIFY(info.description.contains(u"icense")); // its licence is kept
        QVERIFY(!info.description.contains(info.title) && !info.description.contains(u"Changelog"));
        for (const QString& paragraph : info.description.split(QStringLiteral("\n\n")))
            QVERIFY2(!paragraph.contains(u'\n') && !paragraph.contains(u"  "), qPrintable(paragraph));
    }

    void readsPlainText() {
        writeFile(m_index, Files().index);
        writeFile(m_text, readGzipText(installed("ces-eng", "dict.dz")));
        const DictdDictionary plain(m_index);
        const DictdDictionary packed(installed("ces-eng", "index"));
        QCOMPARE(plain.text(plain.entries().back()), packed.text(packed.entries().back()));
        QVERIFY(QFile::remove(m_text));
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
        row("binary", [](Files& files) { files.index = QByteArray("\0\x01\x02\n\xff\t\t\n", 8); });
        // Offset outside, length outside, a sum that overflows, no number, a column missing.
        for (const char* const line : {"zzz\tzzzz\tB\n", "zzz\tB\tzzzz\n",
                                       "zzz\t////////////\t////////////\n", "zzz\tA.B\tB\n", "zzz\tB\n"})
            row(line, [line](Files& files) { files.index += line; });
    }
    void refusesDamaged() {
        QFETCH(Spoil, spoil);
        Files files;
        spoil(files);
        writeFile(m_index, files.index);
        const QString compressed = m_text + QStringLiteral(".dz");
        writeFile(compressed, files.compressed);
        if (files.compressed.isEmpty())
            QFile::remove(compressed);
        QVERIFY_THROWS_EXCEPTION(Failure, DictdDictionary{m_index});
    }

    void editions() {
        const std::pair<const char*, int> editions[] = {
            {"0.2", 200},     {"1.12.3", 11203},  {"2", 20000},   {"2022-11-18", 20221118},
            {"0.1.3beta", 1}, {"999999999.1", 1}, {"1.2.3.4", 1}, {"unknown", 1}};
        for (const auto& [text, version] : editions) {
            const QString edition = QString::fromLatin1(text);
            const QString line = QStringLiteral("Edition: %1\n").arg(edition);
            QCOMPARE(parseDictdInfo(QStringLiteral("A-B"), line).version, version);
            QCOMPARE(parseDictdInfo(QStringLiteral("A-B ver. ") + edition, {}).version, version);
        }
    }
};

QTEST_GUILESS_MAIN(TestServerDictd)
#include "test_server_dictd.moc"
