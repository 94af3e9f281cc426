#include "transfer_fixture.h"

#include <functional>

using namespace tessaly;
using tests::CannedServer;
using tests::TsiInstallationService;
using tests::TsiInstallationSummary;
using Entry = tests::PackageBuilder::Entry;
using Kind = tests::PackageBuilder::Kind;
using Spoil = std::function<void()>;

Q_DECLARE_METATYPE(Spoil)

namespace {

Entry entry(const char* name, const QByteArray& content = "content", Kind kind = Kind::File) {
    return {QString::fromUtf8(name), content, kind};
}

} // namespace

/// Transfers that fail, and leave everything as it was.
class MorphologyFailuresTest : public tests::TransferFixture {
    Q_OBJECT

private Q_SLOTS:
    void theServerRefuses() {
        const QString folder = m_device->startServer().url() + u"/v1/morphology/"_qs;
        verifyFails(folder + u"qq.zip"_qs, u"status 404"_qs);
        m_service->setApiKeyProvider(nullptr);
        verifyFails(folder + u"en.zip"_qs, u"status 401"_qs);
    }

    void badArchives_data() {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("reason");
        const QByteArray good = tests::archiveOf("new rules", tests::noise(5000));
        const auto add = [](const char* name, const QByteArray& archive, const char* reason) {
            QTest::newRow(name) << archive << QString::fromUtf8(reason);
        };
        const Entry rules = entry("de.aff");
        const Entry words = entry("de.dic");
        add("empty", {}, "damaged");
        add("no zip", QByteArray(5000, 'x'), "damaged");
        add("cut short", good.chopped(30), "damaged");
        add("half", good.left(good.size() / 2), "damaged");
        add("wrong checksum", QByteArray(good).replace(good.size() / 2, 1, "x"), "damaged");
        add("leads out", tests::archiveOf({rules, words, entry("../de.aff")}), "isn't of \"de\"");
        add("absolute", tests::archiveOf({rules, words, entry("/tmp/de.aff")}), "isn't of \"de\"");
        add("link", tests::archiveOf({rules, entry("de.dic", "/etc/passwd", Kind::Link)}), "plain files");
        add("folder", tests::archiveOf({rules, words, entry("de", "", Kind::Folder)}), "plain files");
        add("rules only", tests::archiveOf({rules}), "lacks");
        add("words only", tests::archiveOf({words}), "lacks");
        add("nothing in it", tests::archiveOf({}), "damaged");
        add("twice", tests::archiveOf({rules, rules, words}), "twice");
        add("other language", tests::archiveOf({entry("fr.aff"), entry("fr.dic")}), "isn't of \"de\"");
        add("empty words", tests::archiveOf({rules, entry("de.dic", "")}), "makes no sense");
        add("huge", tests::archiveOf({rules, entry("de.dic", QByteArray(70 << 20, '\0'))}), "makes no sense");
        add("bomb", tests::archiveOf({rules, entry("de.dic", QByteArray(20'000'003, '\0'))}, 20'000'003),
            "more of de.dic than it says");
    }
    void badArchives() {
        QFETCH(const QByteArray, archive);
        QFETCH(const QString, reason);
        CannedServer server({{"/v1/de.zip", CannedServer::ok(archive.toStdString())}});
        verifyFails(QString::fromStdString(server.url("/v1/de.zip")), reason);
    }

    void troubleOnTheWay_data() {
        QTest::addColumn<Spoil>("spoil");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char* reason, const Spoil& spoil) {
            QTest::newRow(reason) << spoil << QString::fromLatin1(reason);
        };
        row("offline", [this] { m_device->setOnline(false); });
        row("bytes remaining", [this] { m_files.setFault({fixture::Fault::Kind::Close, 50}); });
        row("Maximum file size exceeded", [this] { m_files.setFault({fixture::Fault::Kind::Endless}); });
        row("is a folder", [this] {
            QFile::remove(m_device->folder() + u"de.dic"_qs);
            QDir(m_device->folder()).mkdir(u"de.dic"_qs);
        });
        row("hunspell", [this] {
            QDir(m_device->folder()).removeRecursively();
            writeFile(m_device->path("/mnt/ext1/system/hunspell"), {});
        });
    }
    void troubleOnTheWay() {
        QFETCH(const Spoil, spoil);
        QFETCH(const QString, reason);
        verifyFails(m_url, reason, spoil);
    }

    void noAddresses() {
        m_log->allow(u"Not an address of morphology data"_qs);
        for (const char* const url :
             {"", "undefined", "de.zip", "http:///de.zip", "http://127.0.0.1:1/", "http://127.0.0.1:1/de.exe",
              "http://127.0.0.1:1/..zip", "file:///tmp/de.zip", "http://127.0.0.1:1/DE.zip",
              "http://127.0.0.1:1/%2e%2e%2fde.zip", "http://127.0.0.1:1/de.zip/"}) {
            m_log->clear();
            QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
            m_service->install(QString::fromUtf8(url));
            QVERIFY2(finished.size() == 1 && !finished[0][0].toBool(), url);
            QVERIFY2(!m_service->isRunning() && m_summary->runningCount() == 0, url);
            QVERIFY2(m_log->lines(u"Not an address"_qs).size() == 1, url);
        }
    }

private:
    /// It fails for this reason, and leaves everything as it was.
    void verifyFails(
        const QString& url, const QString& reason, const Spoil& spoil = [] {}) {
        m_log->clear();
        m_log->allow(u"Can not download"_qs);
        m_log->allow(u"No morphology data from"_qs);
        m_device->write(u"de.aff"_qs, "older rules");
        m_device->write(u"de.dic"_qs, "older words");
        spoil();
        const auto before = m_device->content();
        QSignalSpy counts(m_summary.get(), &TsiInstallationSummary::runningCountChanged);
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        m_service->install(url);
        QVERIFY(finished.size() == 1 || finished.wait(20'000));
        QVERIFY(!finished[0][0].toBool());
        QCOMPARE(counts.size(), 2);
        QVERIFY2(m_service->errorText().contains(reason), qPrintable(m_service->errorText()));
        QCOMPARE(m_log->lines(u"No morphology data from"_qs).size(), 1);
        QCOMPARE(m_device->content(), before);
    }
};

QTEST_GUILESS_MAIN(MorphologyFailuresTest)
#include "morphology_failures_test.moc"
