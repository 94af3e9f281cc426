#include "catalogue/file_names.h"
#include "http/byte_range.h"
#include "morphology/morphology_store.h"
#include "support/failure.h"
#include "support/languages.h"
#include "support/server_state.h"

#include <tests/support/files.h>

#include <QTemporaryDir>
#include <QTest>

using namespace tessaly::server;

class TestServerParts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ranges() {
        // "offset+length", "whole" or "none", of 1000 bytes
        const std::pair<const char*, const char*> cases[] = {{"", "whole"},
                                                             {"bytes=0-", "0+1000"},
                                                             {"bytes=5-9", "5+5"},
                                                             {"BYTES=999-", "999+1"},
                                                             {"bytes=990-5000", "990+10"},
                                                             {"bytes=-10", "990+10"},
                                                             {"bytes=-5000", "0+1000"},
                                                             {"bytes=7-99999999999999999999999", "7+993"},
                                                             {"bytes=1000-", "none"},
                                                             {"bytes=99999999999999999999999-", "none"},
                                                             {"bytes=-0", "none"},
                                                             {"bytes=9-5", "whole"},
                                                             {"bytes=-", "whole"},
                                                             {"bytes=0-1,5-6", "whole"},
                                                             {"bytes=1x-", "whole"},
                                                             {"lines=1-2", "whole"}};
        for (const auto& [header, expected] : cases) {
            const ByteRange range = parseByteRange(header, 1000);
            QByteArray part = QByteArray::number(range.offset) + '+' + QByteArray::number(range.length);
            if (range.kind != ByteRange::Kind::Part)
                part = range.kind == ByteRange::Kind::Whole ? "whole" : "none";
            QVERIFY2(part == expected, header + (": " + part));
        }
    }

    void fileNames() {
        QSet<QString> taken;
        const auto name = [&taken](const char* title) {
            return uniqueFileName(QString::fromUtf8(title), QStringLiteral("abc-def"), taken);
        };
        QCOMPARE(name("Serbian - English FreeDict Dictionary"), QStringLiteral("Serbian-English.tsdict"));
        QCOMPARE(name("ελληνικά-Русский FreeDict+WikDict dictionary"),
                 QStringLiteral("ελληνικά-Русский.tsdict"));
        QCOMPARE(name("SERBIAN-english"), QStringLiteral("SERBIAN-english (abc-def).tsdict"));
        QCOMPARE(name("../../etc/pass\twd\x01"), QStringLiteral("etc pass wd.tsdict"));
        QCOMPARE(name("FreeDict"), QStringLiteral("abc-def.tsdict"));
        QVERIFY(name(QByteArray("длинно ").repeated(90).constData()).toUtf8().size() <= 140);
    }

    void languageCodes() {
        QStringList found;
        for (const char* const code : {"ces", "nob", "tgl", "jpn", "srp", "lat", "ckb"}) {
            const QString shortCode = shortLanguageCode(QString::fromLatin1(code));
            found << shortCode + (isNamedLanguage(shortCode) ? u'+' : u'-');
        }
        QCOMPARE(found.join(u' '), u"cs+ no+ tl+ ja+ sr+ la- ckb-"_qs);
    }

    void morphologyTakesTheMainRegion() {
        const QTemporaryDir data;
        const QTemporaryDir cache;
        writeFile(data.filePath(u"de.aff"_qs), "rules without words");
        for (const char* const name :
             {"es_AR", "es_ES", "es_US", "fr", "fr_FR", "en_GB", "la", "hyph_it_IT"}) {
            for (const char* const ending : {".aff", ".dic"})
                writeFile(data.filePath(QString::fromLatin1(name) + QString::fromLatin1(ending)), name);
        }
        const MorphologyStore store(data.path(), cache.path(), false);
        QCOMPARE(store.languages().join(u' '), u"en es fr"_qs);
        QCOMPARE(MorphologyStore(data.path(), cache.path(), true).languages().join(u' '), u"en es fr la"_qs);
        const QByteArray zip = readFile(store.archive(u"es"_qs));
        QVERIFY(zip.contains("es.aff") && zip.contains("es.dic") && !zip.contains("es_"));
    }

    void refusesADamagedState() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"state.json"_qs);
        QCOMPARE(ServerState(path).takePackageNumber(), 1);
        QCOMPARE(ServerState(path).takePackageNumber(), 2);
        QVERIFY(QFile::resize(path, 20));
        QVERIFY_THROWS_EXCEPTION(Failure, ServerState{path});
    }
};

QTEST_GUILESS_MAIN(TestServerParts)
#include "test_server_parts.moc"
