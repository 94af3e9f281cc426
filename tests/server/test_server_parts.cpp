#include "catalogue/file_names.h"
#include "http/byte_range.h"
#include "morphology/morphology_store.h"
#include "support/failure.h"
#include "support/languages.h"
#include "support/server_state.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tessaly::server;

class TestServerParts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ranges_data() {
        QTest::addColumn<QString>("part"); // "offset+length", "whole" or "none", of 1000 bytes
        const auto row = [](const char* header, const char* part) {
            QTest::newRow(header) << QString::fromLatin1(part);
        };
        row("", "whole");
        row("bytes=0-", "0+1000");
        row("bytes=5-9", "5+5");
        row("BYTES=999-", "999+1");
        row("bytes=990-5000", "990+10");
        row("bytes=-10", "990+10");
        row("bytes=-5000", "0+1000");
        row("bytes=7-99999999999999999999999", "7+993");
        row("bytes=1000-", "none");
        row("bytes=99999999999999999999999-", "none");
        row("bytes=-0", "none");
        row("bytes=9-5", "whole");
        row("bytes=-", "whole");
        row("bytes=0-1,5-6", "whole");
        row("bytes=1x-", "whole");
        row("lines=1-2", "whole");
    }

    void ranges() {
        const ByteRange range = parseByteRange(QTest::currentDataTag(), 1000);
        QString part = QStringLiteral("%1+%2").arg(range.offset).arg(range.length);
        if (range.kind != ByteRange::Kind::Part)
            part = range.kind == ByteRange::Kind::Whole ? QStringLiteral("whole") : QStringLiteral("none");
        QTEST(part, "part");
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
        const QStringList codes = {u"ces"_qs, u"nob"_qs, u"tgl"_qs, u"jpn"_qs,
                                   u"srp"_qs, u"lat"_qs, u"ckb"_qs};
        QStringList found;
        for (const QString& code : codes)
            found << shortLanguageCode(code) + (isNamedLanguage(shortLanguageCode(code)) ? u"+"_qs : u"-"_qs);
        QCOMPARE(found.join(u' '), u"cs+ no+ tl+ ja+ sr+ la- ckb-"_qs);
    }

    void morphologyTakesTheMainRegion() {
        const QTemporaryDir data;
        const QTemporaryDir cache;
        const QStringList names = {u"es_AR"_qs, u"es_ES"_qs, u"es_US"_qs, u"fr"_qs,        u"fr_FR"_qs,
                                   u"en_GB"_qs, u"la"_qs,    u"de"_qs,    u"hyph_it_IT"_qs};
        for (const QString& name : names) {
            for (const QString& ending : {u".aff"_qs, u".dic"_qs}) {
                QFile file(data.filePath(name + ending));
                if (name != u"de" || ending != u".dic")
                    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(name.toUtf8()) > 0);
            }
        }
        const MorphologyStore store(data.path(), cache.path(), false);
        QCOMPARE(store.languages().join(u' '), u"en es fr"_qs);
        QCOMPARE(MorphologyStore(data.path(), cache.path(), true).languages().join(u' '), u"en es fr la"_qs);
        QFile archive(store.archive(u"es"_qs));
        QVERIFY(archive.open(QIODevice::ReadOnly));
        const QByteArray zip = archive.readAll();
        QVERIFY(zip.contains("es.aff") && zip.contains("es.dic") && !zip.contains("es_"));
    }

    void stateIsKeptAndADamagedOneRefused() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"state.json"_qs);
        {
            ServerState state(path);
            state.setPort(4711);
            QCOMPARE(state.recordNumber(u"a"_qs), 1);
            QCOMPARE(state.recordNumber(u"b"_qs), 2);
            QCOMPARE(state.takePackageNumber(), 1);
        }
        ServerState state(path);
        QCOMPARE(state.port(), 4711);
        QCOMPARE(state.recordNumber(u"c"_qs), 3);
        QCOMPARE(state.recordNumber(u"b"_qs), 2);
        QCOMPARE(state.takePackageNumber(), 2);
        QVERIFY(QFile::resize(path, 20));
        QVERIFY_THROWS_EXCEPTION(Failure, ServerState{path});
    }
};

QTEST_GUILESS_MAIN(TestServerParts)
#include "test_server_parts.moc"
