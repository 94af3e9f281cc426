#include "../support/canned_server.h"

#include <QTcpServer>
#include <QTest>
#include <QThreadPool>
#include <dictionaries/morph_explorer.h>
#include <memory>
#include <optional>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>
#include <vellum/clock.h>
#include <vellum/device_state.h>

using namespace tessaly;
using dictionary::MorphValue;

namespace {

const QString folder = QString::fromStdString(morphology::HunspellSearcher::defaultDir());

} // namespace

class MorphMapsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { vellum::clock::setSpeed(20); }

    void init() {
        m_device.emplace();
        useServer(m_server.url());
        m_explorer = std::make_unique<dictionary::MorphExplorer>(folder);
        m_urls = m_explorer->urlMap();
    }

    void urlsComeOnceTheDeviceIsConnected() {
        m_server.setAnswer(401, {});
        MorphValue* const german = m_urls->at(u"de_AT"_qs);
        QVERIFY(m_server.takeRequests().isEmpty());

        vellum::state::setNetState(2);
        const QString failure = u"Failed to list morphology data: HTTP status 401"_qs;
        QVERIFY(QTest::qWaitFor([&] { return m_log.takeUnexpected().contains(failure); }));
        QVERIFY(!german->value().isValid());
        m_server.setAnswer(200,
                           "{'de': 'http://h/de', 'pt_BR': 'http://h/br', 'xx': 1, '../a': 'http://h/'}");
        QTRY_COMPARE(german->value(), QVariant(u"http://h/de"_qs));
        QCOMPARE(m_urls->at(u"pt_BR"_qs)->value(), QVariant(u"http://h/br"_qs));
        for (const QString& code : {u"pt"_qs, u"xx"_qs, u"../a"_qs, QString()})
            QVERIFY(!m_urls->at(code)->value().isValid());
        QStringList warnings = m_log.takeUnexpected();
        warnings.removeAll(failure);
        QCOMPARE(warnings.size(), 2);

        QCOMPARE(m_server.takeRequests().last(), u"GET /v1/morphology secret"_qs);
    }

    void aSilentServerHoldsNobodyUp() {
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        useServer("http://127.0.0.1:" + std::to_string(silent.serverPort()));
        vellum::state::setNetState(2);
        m_urls->at(u"de"_qs);
        QVERIFY(silent.waitForNewConnection(5000));
        m_explorer.reset();
        // What the application object waits for at its end.
        QVERIFY(QThreadPool::globalInstance()->waitForDone(2000)); // of a stall of three seconds
        QCOMPARE(m_log.takeUnexpected(), QStringList());
    }

private:
    void useServer(const std::string& url) const {
        writeFile(m_device->path("/ebrmain/config/dictionary_server.cfg"),
                  "url=" + QByteArray::fromStdString(url) + "\nmorphology_api_key=secret\n");
    }

    tests::CannedServer m_server;
    std::optional<fixture::TestDevice> m_device;
    LogWatch m_log;
    std::unique_ptr<dictionary::MorphExplorer> m_explorer;
    dictionary::MorphUrlMap* m_urls = nullptr;
};

QTEST_GUILESS_MAIN(MorphMapsTest)
#include "morph_maps_test.moc"
