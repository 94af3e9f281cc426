#include "server.h"
#include "zip_listing.h"

#include <QTest>

/// The switches in ways that those who build on them would not notice.
class TestServerSwitches : public QObject {
    Q_OBJECT

    Server m_server;

private Q_SLOTS:
    void initTestCase() { m_server.start(); }
    void init() { m_server.resetSwitches(); }

    void catalogueFaults() {
        const auto withFault = [this](const QString& mode) {
            m_server.setSwitches({{u"catalogue"_qs, mode}});
            return m_server.get(u"/v1/dictionaries"_qs);
        };
        const QJsonArray wrong = withFault(u"wrong_records"_qs).json().array();
        QVERIFY(!wrong.isEmpty() && !wrong[0].isObject());
        QVERIFY(withFault(u"oversized"_qs).body.size() > 32000000);
    }

    void hostileArchive() {
        m_server.setSwitches({{u"package_fault"_qs, u"hostile"_qs}});
        const Reply archive = m_server.get(m_server.package(u"1"_qs)["url"].toString());
        QStringList names;
        int links = 0;
        for (const ZipEntry& entry : listZip(archive.body)) {
            names << entry.name;
            links += entry.isLink ? 1 : 0;
        }
        QCOMPARE(links, 1);
        QVERIFY(names.contains(u"../../evil.tsdict"_qs) && names.contains(u"/tmp/evil.tsdict"_qs));
        QVERIFY(names.removeDuplicates() >= 2);
    }

    void refusesWrongSwitches() {
        m_server.setSwitches({{u"package_build_ms"_qs, 7}});
        for (const char* const body :
             {"nothing", "[]", R"({"delay": 1})", R"({"delay_ms": -1})", R"({"delay_ms": "1"})",
              R"({"catalogue": "odd"})", R"({"catalogue": "status:abc"})",
              R"({"package_build_ms": 8, "package_fault": "status:500"})", R"({"unlisted": ["1"]})"})
            QVERIFY2(m_server.post(u"/control"_qs, body).status == 400, body);
        QCOMPARE(m_server.status()[u"switches"][u"package_build_ms"].toInt(), 7);
    }
};

QTEST_GUILESS_MAIN(TestServerSwitches)
#include "test_server_switches.moc"
