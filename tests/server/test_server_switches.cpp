#include "server_process.h"
#include "zip_listing.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

/// The switches that other tests build on: each has to make the server misbehave in just the promised way.
class TestServerSwitches : public QObject {
    Q_OBJECT

private:
    ServerProcess m_server;

    ServerProcess::Reply catalogue() { return m_server.get(u"/v1/dictionaries"_qs); }
    QJsonDocument catalogueJson() { return QJsonDocument::fromJson(catalogue().body); }

    /// The package of record 1 as it is under `fault`, without the faults that are in the way it is sent.
    QByteArray zip(const QString& fault) {
        m_server.control({{u"package_fault"_qs, fault}});
        return m_server.get(m_server.package(u"1"_qs).object().value(u"url"_qs).toString()).body;
    }

    static QString sha256(const QByteArray& data) {
        return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
    }

    static QJsonArray manifestFiles(const QList<ZipEntry>& entries) {
        return QJsonDocument::fromJson(entries.value(0).content).object().value(u"files"_qs).toArray();
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_server.start({u"--control"_qs})); }
    void init() { m_server.control({{u"reset"_qs, true}}); }

    void catalogueFaults() {
        const QJsonArray normal = catalogueJson().array();
        const auto set = [this](const QString& mode) { m_server.control({{u"catalogue"_qs, mode}}); };
        set(u"status:503"_qs);
        QCOMPARE(catalogue().status, 503);
        set(u"malformed"_qs);
        QVERIFY(!catalogue().body.isEmpty() && catalogueJson().isNull());
        set(u"wrong_type"_qs);
        QVERIFY(catalogueJson().isObject());
        set(u"wrong_records"_qs);
        QVERIFY(catalogueJson().isArray() && !catalogueJson().array().at(0).isObject());
        set(u"oversized"_qs);
        QVERIFY(catalogue().body.size() > 32000000);
        set(u"bad_record"_qs);
        QJsonArray bad = catalogueJson().array();
        QCOMPARE(bad.size(), normal.size() + 1);
        bad.removeAt(normal.size() / 2);
        QCOMPARE(bad, normal);
        set(u"extra_languages"_qs);
        const QJsonArray extra = catalogueJson().array();
        QCOMPARE(extra.size(), normal.size() + 2);
        QCOMPARE(extra.last()[QLatin1String("language_from")][QLatin1String("code")].toString(), u"e!"_qs);
        m_server.control({{u"reset"_qs, true}, {u"unlisted"_qs, QJsonArray{1, 3}}});
        QCOMPARE(catalogueJson().array().size(), normal.size() - 2);
    }

    void packageAnswers() {
        const QString request = u"/v1/packages?ids=1"_qs;
        int number = 0;
        QCOMPARE(m_server.package(u"1"_qs, &number).status, 200);
        const QString state = u"/v1/packages/%1"_qs.arg(number);
        m_server.control({{u"package_request"_qs, u"wait"_qs}, {u"package_state"_qs, u"wait"_qs}});
        QCOMPARE(m_server.post(request).status, 429);
        QCOMPARE(m_server.get(state).status, 202);
        m_server.control(
            {{u"package_request"_qs, u"status:418"_qs}, {u"package_state"_qs, u"status:500"_qs}});
        QCOMPARE(m_server.post(request).status, 418);
        QCOMPARE(m_server.get(state).status, 500);
        m_server.control({{u"package_request"_qs, u"malformed"_qs}, {u"package_state"_qs, u"malformed"_qs}});
        QVERIFY(m_server.post(request).object().isEmpty());
        QVERIFY(m_server.get(state).object().isEmpty());
    }

    void damagedContentInASoundArchive() {
        const QList<ZipEntry> sound = listZip(zip(u"normal"_qs));
        const QList<ZipEntry> damaged = listZip(zip(u"damaged"_qs));
        QCOMPARE(damaged.size(), 2);
        const QString listed = manifestFiles(damaged).at(0)[QLatin1String("sha256")].toString();
        QCOMPARE(listed, sha256(sound.at(1).content));
        QVERIFY(listed != sha256(damaged.at(1).content));
        QCOMPARE(damaged.at(1).content.size(), sound.at(1).content.size());
    }

    void hostileArchive() {
        const QList<ZipEntry> entries = listZip(zip(u"hostile"_qs));
        QStringList names;
        int links = 0;
        for (const ZipEntry& entry : entries) {
            names << entry.name;
            links += entry.isLink ? 1 : 0;
        }
        QVERIFY(names.contains(u"../../evil.tsdict"_qs));
        QVERIFY(names.contains(u"/tmp/evil.tsdict"_qs));
        QVERIFY(names.removeDuplicates() >= 2);
        QCOMPARE(links, 1);
        // The manifest, the real file, and three that lead elsewhere.
        QCOMPARE(manifestFiles(entries).size(), 4);
    }

    void truncatedAndWronglyAnnounced() {
        const QByteArray whole = zip(u"normal"_qs);
        QCOMPARE(zip(u"truncated"_qs), whole.left(whole.size() / 2));
        m_server.control({{u"package_fault"_qs, u"wrong_size"_qs}});
        const QJsonObject announced = m_server.package(u"1"_qs).object();
        QVERIFY(announced.value(u"size"_qs).toInteger() != whole.size());
        QVERIFY(announced.value(u"sha256"_qs).toString() != sha256(whole));
    }

    void takesItsTime() {
        QElapsedTimer clock;
        const auto timed = [&clock](const auto& action) {
            clock.start();
            action();
            return clock.elapsed();
        };
        m_server.control({{u"delay_ms"_qs, 400}});
        QVERIFY(timed([this] { catalogue(); }) >= 400);
        m_server.control({{u"reset"_qs, true}, {u"package_build_ms"_qs, 500}});
        QVERIFY(timed([this] { m_server.package(u"1,2"_qs); }) >= 500);
        const QByteArray url = m_server.package(u"1"_qs).object().value(u"url"_qs).toString().toUtf8();
        m_server.control({{u"reset"_qs, true}, {u"bytes_per_second"_qs, 40000}});
        qsizetype size = 0;
        const qint64 duration = timed([&] { size = m_server.get(QString::fromUtf8(url)).body.size(); });
        const qint64 expected = size * 1000 / 40000;
        QVERIFY2(duration > expected * 8 / 10 && duration < expected * 15 / 10 + 200,
                 qPrintable(QString::number(duration)));
    }

    void countsAndReports() {
        int number = 0;
        m_server.package(u"1"_qs, &number);
        catalogue();
        catalogue();
        m_server.post(u"/v1/packages/%1/installed"_qs.arg(number));
        const QJsonObject seen = m_server.get(u"/control"_qs).object();
        QCOMPARE(seen.value(u"reported"_qs).toArray(), QJsonArray{number});
        QCOMPARE(seen.value(u"requests"_qs).toObject().value(u"catalogue"_qs).toInt(), 2);
        QCOMPARE(seen.value(u"requests"_qs).toObject().value(u"package_request"_qs).toInt(), 1);
        QCOMPARE(seen.value(u"requests"_qs).toObject().value(u"installed"_qs).toInt(), 1);
        m_server.control({{u"reset"_qs, true}});
        QVERIFY(m_server.get(u"/control"_qs).object().value(u"requests"_qs).toObject().isEmpty());
    }

    void refusesWrongSwitches_data() {
        QTest::addColumn<QByteArray>("body");
        for (const char* body :
             {"nothing", "[]", R"({"delay": 1})", R"({"delay_ms": -1})", R"({"delay_ms": "1"})",
              R"({"catalogue": "odd"})", R"({"catalogue": "status:abc"})",
              R"({"package_fault": "status:500"})", R"({"unlisted": ["1"]})"})
            QTest::newRow(body) << QByteArray(body);
    }

    void refusesWrongSwitches() {
        QFETCH(QByteArray, body);
        m_server.control({{u"package_build_ms"_qs, 7}});
        QCOMPARE(m_server.post(u"/control"_qs, body).status, 400);
        const QJsonObject switches = m_server.get(u"/control"_qs).object().value(u"switches"_qs).toObject();
        QCOMPARE(switches.value(u"package_build_ms"_qs).toInt(), 7);
    }
};

QTEST_GUILESS_MAIN(TestServerSwitches)
#include "test_server_switches.moc"
