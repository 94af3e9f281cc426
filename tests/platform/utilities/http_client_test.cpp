#include "../support/bare_device.h"
#include "canned_server.h"

#include <utilities/http_client.h>
#include <vellum/clock.h>

#include <QElapsedTimer>
#include <QTest>
#include <curl/curl.h>
#include <stop_token>
#include <thread>

using namespace tessaly;
using fixture::Fault;
using utilities::HttpAnswer;
using utilities::HttpClient;
using utilities::HttpLimits;

Q_DECLARE_METATYPE(Fault)
Q_DECLARE_METATYPE(HttpClient::Headers)

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

    void keepsHeadersFromOthers_data() {
        QTest::addColumn<std::string>("path");
        QTest::addColumn<HttpClient::Headers>("headers");
        QTest::addColumn<int>("curlCode");
        QTest::addColumn<int>("requestsElsewhere");
        const HttpClient::Headers key{{"X-Key", "secret"}};
        QTest::newRow("same server") << std::string("/near") << key << int(CURLE_OK) << 0;
        QTest::newRow("another port") << std::string("/far") << key << int(CURLE_REMOTE_ACCESS_DENIED) << 0;
        QTest::newRow("another host")
            << std::string("/farther") << key << int(CURLE_REMOTE_ACCESS_DENIED) << 0;
        QTest::newRow("nothing to keep")
            << std::string("/far") << HttpClient::Headers() << int(CURLE_OK) << 1;
    }
    void keepsHeadersFromOthers() {
        QFETCH(std::string, path);
        QFETCH(HttpClient::Headers, headers);
        m_server.setFault({});
        const int before = m_elsewhere.requests();
        const HttpAnswer answer = HttpClient(m_limits).get(m_server.url(path), headers);
        QTEST(answer.curlCode, "curlCode");
        QTEST(m_elsewhere.requests() - before, "requestsElsewhere");
        QCOMPARE(answer.body.find("X-Key: secret") != std::string::npos,
                 answer.curlCode == CURLE_OK && !headers.empty());
    }

    void endsWhenNobodyWaitsAnyMore_data() {
        QTest::addColumn<bool>("byStop");
        QTest::addColumn<bool>("isBefore");
        for (const bool byStop : {true, false}) {
            QTest::addRow("%s meanwhile", byStop ? "stop" : "quit") << byStop << false;
            QTest::addRow("%s before", byStop ? "stop" : "quit") << byStop << true;
        }
    }
    void endsWhenNobodyWaitsAnyMore() {
        QFETCH(bool, byStop);
        QFETCH(bool, isBefore);
        m_server.setFault({Fault::Kind::Stall, 10});
        std::stop_source stop;
        QElapsedTimer timer;
        std::thread ender([&, before = m_server.requests()] {
            while (!isBefore && m_server.requests() == before)
                std::this_thread::yield();
            timer.start();
            byStop ? static_cast<void>(stop.request_stop()) : vellum::clock::wakeAll();
        });
        if (isBefore)
            ender.join();
        const HttpAnswer answer = HttpClient().get(m_server.url("/page"), {}, stop.get_token());
        if (!isBefore)
            ender.join();
        vellum::clock::resume();
        QCOMPARE(answer.curlCode, int(CURLE_ABORTED_BY_CALLBACK));
        QVERIFY(timer.elapsed() < 1000); // of 10 seconds
        m_server.setFault({});
        QCOMPARE(HttpClient(m_limits).get(m_server.url("/page")).status, 200);
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
    tests::CannedServer m_elsewhere{{}};
    tests::CannedServer m_server{{
        {"/page", tests::CannedServer::ok(std::string(50'000, 'p'))},
        {"/big", tests::CannedServer::ok(std::string(100'001, 'b'))},
        {"/missing", "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone"},
        {"/moved", "HTTP/1.1 302 Found\r\nLocation: /page\r\nContent-Length: 0\r\n\r\n"},
        {"/near", "HTTP/1.1 302 Found\r\nLocation: /echo\r\nContent-Length: 0\r\n\r\n"},
        {"/far",
         "HTTP/1.1 302 Found\r\nLocation: " + m_elsewhere.url("/echo") + "\r\nContent-Length: 0\r\n\r\n"},
        {"/farther", "HTTP/1.1 302 Found\r\nLocation: http://localhost" +
                         m_elsewhere.url("/echo").substr(std::string("http://127.0.0.1").size()) +
                         "\r\nContent-Length: 0\r\n\r\n"},
        {"/loop", "HTTP/1.1 302 Found\r\nLocation: /loop\r\nContent-Length: 0\r\n\r\n"},
        {"/file", "HTTP/1.1 302 Found\r\nLocation: file:///etc/hostname\r\nContent-Length: 0\r\n\r\n"},
        {"/rubbish", "rubbish\r\n\r\n"},
        {"/nothing", ""},
    }};
};

QTEST_GUILESS_MAIN(HttpClientTest)
#include "http_client_test.moc"
