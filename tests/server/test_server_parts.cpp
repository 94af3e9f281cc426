#include "catalogue/naming.h"
#include "dictd/dictd_dictionary.h"
#include "dictd/dictd_info.h"
#include "morphology/morphology_store.h"
#include "support/files.h"
#include "support/server_state.h"

#include <tests/support/files.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

using namespace tessaly::server;

namespace {

QString installed(const char* code, const char* suffix) {
    return u"/usr/share/dictd/freedict-%1.%2"_qs.arg(QLatin1String(code), QLatin1String(suffix));
}

/// The files of a dictionary, to be spoilt.
struct Files {
    QByteArray index = ::readFile(installed("ces-eng", "index"));
    QByteArray text = ::readFile(installed("ces-eng", "dict.dz"));
};
using Spoil = std::function<void(Files&)>;

} // namespace

Q_DECLARE_METATYPE(Spoil)

class TestServerParts : public QObject {
    Q_OBJECT

    const QTemporaryDir m_directory;
    const QString m_index = m_directory.filePath(u"freedict-ces-eng.index"_qs);
    const QString m_text = m_directory.filePath(u"freedict-ces-eng.dict.dz"_qs);

private Q_SLOTS:
    void readsInstalled_data() {
        QTest::addColumn<std::size_t>("words");
        QTest::addColumn<QString>("about");
        // The date: from the changes, as month and day, as numbers.
        QTest::newRow("ces-eng") << 488UL << u"Czech-English FreeDict Dictionary|203|FreeDict|2018-08-04"_qs;
        QTest::newRow("ell-rus")
            << 12853UL << u"ελληνικά-Русский FreeDict+WikDict dictionary|20221118|Karl Bartel|2022-11-18"_qs;
        QTest::newRow("spa-eng") << 4502UL
                                 << u"Spanish-English FreeDict Dictionary|301|FreeDict|2019-04-30"_qs;
    }
    void readsInstalled() {
        const DictdDictionary dictionary(installed(QTest::currentDataTag(), "index"));
        QTEST(dictionary.entries().size(), "words");
        const DictdInfo info =
            parseDictdInfo(dictionary.about(QLatin1String("short")), dictionary.about(QLatin1String("info")));
        const QString version = QString::number(info.version);
        QTEST(QStringList({info.title, version, info.provider, info.publishDate}).join(u'|'), "about");
        QVERIFY(info.description.contains(u"icense")); // its licence is kept
        QVERIFY(!info.description.contains(info.title) && !info.description.contains(u"Changelog"));
        static const QRegularExpression brokenLine(u"[^\\n]\\n[^\\n]|  "_qs);
        QVERIFY(!info.description.contains(brokenLine));
    }

    void refusesDamaged_data() {
        QTest::addColumn<Spoil>("spoil");
        const auto row = [](const char* name, const Spoil& spoil) { QTest::newRow(name) << spoil; };
        row("text cut off", [](Files& files) { files.text.chop(files.text.size() / 2); });
        row("text without its checksum", [](Files& files) { files.text.chop(8); });
        row("a byte of the text changed",
            [](Files& files) { files.text[files.text.size() - 100] ^= '\x55'; });
        row("text not compressed", [](Files& files) { files.text = QByteArray(100000, 'x'); });
        row("no text file", [](Files& files) { files.text.clear(); });
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
        writeFile(m_text, files.text);
        if (files.text.isEmpty())
            QFile::remove(m_text);
        QVERIFY_THROWS_EXCEPTION(Failure, DictdDictionary{m_index});
    }

    void editions() {
        const std::pair<const char*, int> editions[] = {
            {"0.2", 200},     {"1.12.3", 11203},  {"2", 20000},   {"2022-11-18", 20221118},
            {"0.1.3beta", 1}, {"999999999.1", 1}, {"1.2.3.4", 1}, {"unknown", 1}};
        for (const auto& [text, version] : editions) {
            const QString edition = QString::fromLatin1(text);
            QCOMPARE(parseDictdInfo(u"A-B"_qs, u"Edition: %1\n"_qs.arg(edition)).version, version);
            QCOMPARE(parseDictdInfo(u"A-B ver. "_qs + edition, {}).version, version);
        }
    }

    void names() {
        QSet<QString> taken;
        QSet<QString> takenCategories;
        const std::tuple<QString, QString, QString> rows[] = {
            {u"Serbian - English FreeDict Dictionary"_qs, u"Serbian-English"_qs, u"FreeDict"_qs},
            {u"ελληνικά-Русский FreeDict+WikDict dictionary"_qs, u"ελληνικά-Русский"_qs,
             u"FreeDict+WikDict"_qs},
            {u"SERBIAN-english"_qs, u"SERBIAN-english (abc-def)"_qs, u"SERBIAN-english"_qs},
            {u"../../etc/pass\twd\x01"_qs, u"etc pass wd"_qs, u"../../etc/pass\twd\x01"_qs},
            {u"FreeDict"_qs, u"abc-def"_qs, u"FreeDict abc-def"_qs},
            // Turned around, of no width, an invisible letter, a filler, a selector.
            {u"a\u202eb\u2066c\u200dd\u00ade\u3164f\u115fg\ufe0fh\ufeffi"_qs, u"a b c d e f g h i"_qs, {}}};
        for (const auto& [title, file, category] : rows) {
            QCOMPARE(uniqueFileName(title, u"abc-def"_qs, taken), file + u".tsdict"_qs);
            if (!category.isEmpty())
                QCOMPARE(uniqueCategory(title, u"abc-def"_qs, takenCategories), category);
        }
        QStringList codes;
        for (const QString& code :
             {u"ces"_qs, u"nob"_qs, u"tgl"_qs, u"jpn"_qs, u"srp"_qs, u"lat"_qs, u"ckb"_qs})
            codes << shortLanguageCode(code) + (isNamedLanguage(shortLanguageCode(code)) ? u'+' : u'-');
        QCOMPARE(codes.join(u' '), u"cs+ no+ tl+ ja+ sr+ la- ckb-"_qs);
        QVERIFY(uniqueFileName(u"длинно "_qs.repeated(90), {}, taken).toUtf8().size() <= 140);
    }

    void morphologyTakesTheMainRegion() {
        const QTemporaryDir data;
        const QTemporaryDir cache;
        writeFile(data.filePath(u"de.aff"_qs), "rules without words");
        for (const char* const name :
             {"es_AR", "es_ES", "es_US", "fr", "fr_FR", "en_GB", "la", "hyph_it_IT"}) {
            for (const char* const suffix : {".aff", ".dic"})
                writeFile(data.filePath(QLatin1String(name) + QLatin1String(suffix)), name);
        }
        const MorphologyStore store(data.path(), cache.path(), false);
        QCOMPARE(store.languages().join(u' '), u"en es fr"_qs);
        QCOMPARE(MorphologyStore(data.path(), cache.path(), true).languages().join(u' '), u"en es fr la"_qs);
        const QByteArray zip = ::readFile(store.archive(u"es"_qs));
        QVERIFY(zip.contains("es.aff") && zip.contains("es.dic") && !zip.contains("es_"));
    }

    void refusesADamagedState() {
        const QString path = m_directory.filePath(u"state.json"_qs);
        QCOMPARE(ServerState(path).takePackageNumber(), 1);
        QCOMPARE(ServerState(path).takePackageNumber(), 2);
        QVERIFY(QFile::resize(path, 20));
        QVERIFY_THROWS_EXCEPTION(Failure, ServerState{path});
    }
};

QTEST_GUILESS_MAIN(TestServerParts)
#include "test_server_parts.moc"
