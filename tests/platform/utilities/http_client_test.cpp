#include "../support/bare_device.h"
#include "canned_server.h"

#include <utilities/http_client.h>

#include <QTest>
#include <curl/curl.h>

using namespace tessaly;
using fixture::Fault;
using utilities::HttpAnswer;
using utilities::HttpClient;
using utilities::HttpLimits;

Q_DECLARE_METATYPE(Fault)

class HttpClientTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("http_proxy", "http://127.0.0.1:1"); } // which nobody must use

    void answers_data() {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<int>("curlCode");
        QTest::addColumn<int>("status");
        QTest::addColumn<qsizetype>("size");
        using Kind = Fault::Kind;
        const auto add = [](const char* name, const char* path, Fault fault, int curlCode, int status,
                            qsizetype size) {
            QTest::newRow(name) << QByteArray(path) << fault << curlCode << status << size;
        };
        add("whole", "/page", {}, CURLE_OK, 200, 50'000);
        add("error status", "/missing", {}, CURLE_OK, 404, 4);
        add("redirect", "/moved", {}, CURLE_OK, 200, 50'000);
        add("redirect to a file", "/file", {}, CURLE_UNSUPPORTED_PROTOCOL, 0, 0);
        add("redirect without end", "/loop", {}, CURLE_TOO_MANY_REDIRECTS, 0, 0);
        add("cut", "/page", {Kind::Close, 1000}, CURLE_PARTIAL_FILE, 0, 0);
        add("cut after the head", "/page", {Kind::Close, 0}, CURLE_PARTIAL_FILE, 0, 0);
        add("reset", "/page", {Kind::Reset, 1000}, CURLE_RECV_ERROR, 0, 0);
        add("stall", "/page", {Kind::Stall, 1000}, CURLE_OPERATION_TIMEDOUT, 0, 0);
        add("too slow", "/page", {Kind::None, 0, 1000}, CURLE_OPERATION_TIMEDOUT, 0, 0);
        add("too big", "/big", {}, CURLE_FILESIZE_EXCEEDED, 0, 0);
        add("endless", "/page", {Kind::Endless}, CURLE_FILESIZE_EXCEEDED, 0, 0);
        add("not HTTP", "/rubbish", {}, CURLE_UNSUPPORTED_PROTOCOL, 0, 0);
        add("closed", "/nothing", {}, CURLE_GOT_NOTHING, 0, 0);
    }
    void answers() {
        QFETCH(QByteArray, path);
        QFETCH(Fault, fault);
        m_server.setFault(fault);
        HttpLimits limits = m_limits;
        limits.totalSeconds = fault.bytesPerSecond > 0 ? 1 : 60;
        const HttpAnswer answer = HttpClient(limits).get(m_server.url(path.toStdString()));
        QTEST(answer.curlCode, "curlCode");
        QTEST(answer.status, "status");
        QTEST(qsizetype(answer.body.size()), "size");
    }

    void refusedAddresses_data() {
        QTest::addColumn<std::string>("url");
        QTest::addColumn<int>("curlCode");
        QTest::newRow("file") << std::string("file:///etc/hostname") << int(CURLE_UNSUPPORTED_PROTOCOL);
        QTest::newRow("line feed") << m_server.url("/page\r\nX: y") << int(CURLE_URL_MALFORMAT);
        QTest::newRow("NUL") << m_server.url(std::string("/page\0", 6)) << int(CURLE_URL_MALFORMAT);
        QTest::newRow("empty") << std::string() << int(CURLE_URL_MALFORMAT);
        QTest::newRow("nobody listens") << std::string("http://127.0.0.1:1/") << int(CURLE_COULDNT_CONNECT);
    }
    void refusedAddresses() {
        QFETCH(std::string, url);
        QTEST(HttpClient(m_limits).get(url).curlCode, "curlCode");
    }

    void sendsHeadersAndBody() {
        m_server.setFault({});
        const HttpClient client(m_limits);
        const std::string echo =
            client.post(m_server.url("/echo?ids=12,40"), "a body", {{"X-Key", "k"}, {"X-Empty", ""}}).body;
        QVERIFY(echo.starts_with("POST /echo?ids=12,40 HTTP/1.1\r\n"));
        QVERIFY(echo.ends_with("\r\n\r\na body"));
        QVERIFY(echo.find("\r\nX-Key: k\r\n") != std::string::npos);
        QVERIFY(echo.find("\r\nX-Empty:\r\n") != std::string::npos);
        QVERIFY(client.post(m_server.url("/echo")).body.find("\r\nContent-Length: 0\r\n") !=
                std::string::npos);
        QCOMPARE(client.get(m_server.url("/echo"), {{"X-Key", "k\r\nX-Other: o"}}).curlCode,
                 int(CURLE_BAD_FUNCTION_ARGUMENT));
    }

    void failsAtOnceWithoutNetwork() {
        const int before = m_server.requests();
        vellum::state::setNetworkReachable(false);
        QCOMPARE(HttpClient(m_limits).get(m_server.url("/page")).curlCode, int(CURLE_COULDNT_CONNECT));
        vellum::state::setNetworkReachable(true);
        QCOMPARE(m_server.requests(), before);
    }

    void failsWhenTheNetworkGoes() {
        m_server.setFault({Fault::Kind::Stall, 10});
        std::thread switchOff([this, before = m_server.requests()] {
            while (m_server.requests() == before)
                std::this_thread::yield();
            vellum::state::setNetworkReachable(false);
        });
        const HttpAnswer answer = HttpClient().get(m_server.url("/page"));
        switchOff.join();
        vellum::state::setNetworkReachable(true);
        QCOMPARE(answer.curlCode, int(CURLE_RECV_ERROR));
    }

private:
    tests::BareDevice m_device;
    const HttpLimits m_limits{1000, 1, 60, 100'000};
    tests::CannedServer m_server{{
        {"/page", tests::CannedServer::ok(std::string(50'000, 'p'))},
        {"/big", tests::CannedServer::ok(std::string(100'001, 'b'))},
        {"/missing", "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone"},
        {"/moved", "HTTP/1.1 302 Found\r\nLocation: /page\r\nContent-Length: 0\r\n\r\n"},
        {"/loop", "HTTP/1.1 302 Found\r\nLocation: /loop\r\nContent-Length: 0\r\n\r\n"},
        {"/file", "HTTP/1.1 302 Found\r\nLocation: file:///etc/hostname\r\nContent-Length: 0\r\n\r\n"},
        {"/rubbish", "rubbish\r\n\r\n"},
        {"/nothing", ""},
    }};
};

QTEST_GUILESS_MAIN(HttpClientTest)
#include "http_client_test.moc"
