#include "../support/bare_device.h"
#include "../support/canned_server.h"

#include <platform/vellum/testing.h>
#include <utilities/http_client.h>
#include <vellum/clock.h>

#include <QElapsedTimer>
#include <QTest>
#include <curl/curl.h>
#include <stop_token>
#include <thread>

using namespace tessaly;
using fixture::Fault;
using utilities::HttpClient;
using utilities::HttpLimits;
using utilities::HttpResponse;
using Kind = Fault::Kind;

Q_DECLARE_METATYPE(Fault)

class HttpClientTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.setFault({}); }
    void initTestCase() { qputenv("http_proxy", "http://127.0.0.1:1"); } // which nobody must use

    void answers_data() {
        QTest::addColumn<std::string>("path");
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<int>("curlCode");
        QTest::addColumn<QString>("expected"); // status and size
        const auto add = [](const char* name, const std::string& path, Fault fault, int curlCode,
                            const char* expected = "0 0") {
            QTest::newRow(name) << path << fault << curlCode << QString::fromLatin1(expected);
        };
        add("whole", "/page", {}, CURLE_OK, "200 50000");
        add("error status", "/missing", {}, CURLE_OK, "404 4");
        add("redirect", "/moved", {}, CURLE_OK, "200 50000");
        add("redirect to a file", "/file", {}, CURLE_UNSUPPORTED_PROTOCOL);
        add("redirect without end", "/loop", {}, CURLE_TOO_MANY_REDIRECTS);
        add("cut", "/page", {Kind::Close, 1000}, CURLE_PARTIAL_FILE);
        add("cut after the head", "/page", {Kind::Close, 0}, CURLE_PARTIAL_FILE);
        add("reset", "/page", {Kind::Reset, 1000}, CURLE_RECV_ERROR);
        add("stall", "/page", {Kind::Stall, 1000}, CURLE_OPERATION_TIMEDOUT);
        add("too slow", "/page", {Kind::None, 0, 1000}, CURLE_OPERATION_TIMEDOUT);
        add("too big", "/big", {}, CURLE_FILESIZE_EXCEEDED);
        add("endless trailers", "/trailers", {}, CURLE_FILESIZE_EXCEEDED);
        add("endless", "/page", {Kind::Endless}, CURLE_FILESIZE_EXCEEDED);
        add("not HTTP", "/rubbish", {}, CURLE_UNSUPPORTED_PROTOCOL);
        add("closed", "/nothing", {}, CURLE_GOT_NOTHING);
        add("line feed", "/page\r\nX: y", {}, CURLE_URL_MALFORMAT);
        add("NUL", std::string("/page\0", 6), {}, CURLE_URL_MALFORMAT);
    }
    void answers() {
        QFETCH(std::string, path);
        QFETCH(Fault, fault);
        m_server.setFault(fault);
        HttpLimits limits = m_limits;
        limits.totalSeconds = fault.bytesPerSecond > 0 ? 1 : 60;
        const HttpResponse answer = HttpClient(limits).get(m_server.url(path));
        QTEST(answer.curlCode, "curlCode");
        QTEST(QStringLiteral("%1 %2").arg(answer.status).arg(answer.body.size()), "expected");
    }

    void refusedAddresses() {
        const HttpClient client(m_limits);
        QCOMPARE(client.get("file:///etc/hostname").curlCode, int(CURLE_UNSUPPORTED_PROTOCOL));
        QCOMPARE(client.get("").curlCode, int(CURLE_URL_MALFORMAT));
        QCOMPARE(client.get("http://127.0.0.1:1/").curlCode, int(CURLE_COULDNT_CONNECT));
    }

    void sendsHeadersAndBody() {
        const HttpClient client(m_limits);
        const QByteArray echo = QByteArray::fromStdString(
            client.post(m_server.url("/echo?ids=12,40"), "a body", {{"X-Key", "k"}, {"X-Empty", ""}}).body);
        QVERIFY(echo.startsWith("POST /echo?ids=12,40 HTTP/1.1\r\n") && echo.endsWith("\r\n\r\na body"));
        QVERIFY(echo.contains("\r\nX-Key: k\r\n") && echo.contains("\r\nX-Empty:\r\n"));
        const QByteArray empty = QByteArray::fromStdString(client.post(m_server.url("/echo")).body);
        QVERIFY(empty.contains("\r\nContent-Length: 0\r\n"));
        QCOMPARE(client.get(m_server.url("/echo"), {{"X-Key", "k\r\nX-Other: o"}}).curlCode,
                 int(CURLE_BAD_FUNCTION_ARGUMENT));
    }

    void keepsHeadersFromOthers() {
        const HttpClient::Headers key{{"X-Key", "secret"}};
        const HttpClient client(m_limits);
        const HttpResponse near = client.get(m_server.url("/near"), key);
        QVERIFY(near.body.find("X-Key: secret") != std::string::npos);
        for (const char* const path : {"/far", "/farther"}) // another port, another host
            QCOMPARE(client.get(m_server.url(path), key).curlCode, int(CURLE_REMOTE_ACCESS_DENIED));
        QCOMPARE(m_elsewhere.requests(), 0);
        QCOMPARE(client.get(m_server.url("/far")).status, 200);
        QCOMPARE(m_elsewhere.requests(), 1);
    }

    void endsInTheMiddle_data() {
        QTest::addColumn<int>("curlCode");
        QTest::newRow("stop") << int(CURLE_ABORTED_BY_CALLBACK);
        QTest::newRow("quit") << int(CURLE_ABORTED_BY_CALLBACK);
        QTest::newRow("network gone") << int(CURLE_RECV_ERROR);
    }
    void endsInTheMiddle() {
        const QByteArray how = QTest::currentDataTag();
        m_server.setFault({Kind::Stall, 10});
        std::stop_source stop;
        QElapsedTimer timer;
        std::thread ender([&, before = m_server.requests()] {
            while (m_server.requests() == before)
                std::this_thread::yield();
            timer.start();
            if (how == "stop")
                stop.request_stop();
            else if (how == "quit")
                vellum::clock::beginQuit();
            else
                vellum::state::setNetworkReachable(false);
        });
        const HttpResponse answer = HttpClient().get(m_server.url("/page"), {}, stop.get_token());
        ender.join();
        vellum::testing::resume();
        vellum::state::setNetworkReachable(true);
        QTEST(answer.curlCode, "curlCode");
        QVERIFY(timer.elapsed() < (how == "network gone" ? 3000 : 1000)); // of 10 seconds
    }

    void doesNotBegin() {
        const int before = m_server.requests();
        std::stop_source stop;
        stop.request_stop();
        const HttpClient client(m_limits);
        QCOMPARE(client.get(m_server.url("/page"), {}, stop.get_token()).curlCode,
                 int(CURLE_ABORTED_BY_CALLBACK));
        vellum::clock::beginQuit();
        QCOMPARE(client.get(m_server.url("/page")).curlCode, int(CURLE_ABORTED_BY_CALLBACK));
        vellum::testing::resume();
        vellum::state::setNetworkReachable(false);
        QCOMPARE(client.get(m_server.url("/page")).curlCode, int(CURLE_COULDNT_CONNECT));
        vellum::state::setNetworkReachable(true);
        QCOMPARE(m_server.requests(), before);
        QCOMPARE(client.get(m_server.url("/page")).status, 200);
    }

private:
    /// A megabyte of them.
    static std::string trailers() {
        std::string text;
        for (int i = 0; i < 50'000; ++i)
            text += "X-" + std::to_string(100'000 + i) + ": trailer\r\n";
        return text;
    }

    tests::BareDevice m_device;
    const HttpLimits m_limits{1000, 1, 60, 100'000};
    tests::CannedServer m_elsewhere;
    const std::string m_far = m_elsewhere.url("/echo");
    tests::CannedServer m_server{{
        {"/page", tests::CannedServer::ok(std::string(50'000, 'p'))},
        {"/big", tests::CannedServer::ok(std::string(100'001, 'b'))},
        {"/missing", tests::CannedServer::withBody("404 Not Found", "none")},
        {"/moved", tests::CannedServer::redirect("/page")},
        {"/near", tests::CannedServer::redirect("/echo")},
        {"/far", tests::CannedServer::redirect(m_far)},
        {"/farther", tests::CannedServer::redirect("http://localhost" + m_far.substr(m_far.rfind(':')))},
        {"/loop", tests::CannedServer::redirect("/loop")},
        {"/file", tests::CannedServer::redirect("file:///etc/hostname")},
        {"/rubbish", "rubbish\r\n\r\n"},
        {"/trailers", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n" + trailers()},
        {"/nothing", ""},
    }};
};

QTEST_GUILESS_MAIN(HttpClientTest)
#include "http_client_test.moc"
