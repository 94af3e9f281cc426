#include "../support/canned_server.h"

#include <simulator/fixture/test_device.h>
#include <utilities/http_client.h>

#include <QTest>
#include <curl/curl.h>

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
        add("redirect", "/moved", {}, CURLE_OK, "200 50000");
        add("redirect to a file", "/file", {}, CURLE_UNSUPPORTED_PROTOCOL);
        add("redirect without end", "/loop", {}, CURLE_TOO_MANY_REDIRECTS);
        add("cut", "/page", {Kind::Close, 1000}, CURLE_PARTIAL_FILE);
        add("reset", "/page", {Kind::Reset, 1000}, CURLE_RECV_ERROR);
        add("too slow", "/page", {Kind::None, 0, 1000}, CURLE_OPERATION_TIMEDOUT);
        add("too big", "/big", {}, CURLE_FILESIZE_EXCEEDED);
        add("endless trailers", "/trailers", {}, CURLE_FILESIZE_EXCEEDED);
        add("endless", "/page", {Kind::Endless}, CURLE_FILESIZE_EXCEEDED);
        add("not HTTP", "/rubbish", {}, CURLE_UNSUPPORTED_PROTOCOL);
        add("closed", "/nothing", {}, CURLE_GOT_NOTHING);
        add("other protocol", "file:///etc/hostname", {}, CURLE_UNSUPPORTED_PROTOCOL);
        add("nobody there", "http://127.0.0.1:1/", {}, CURLE_COULDNT_CONNECT);
        add("line feed", "/page\r\nX: y", {}, CURLE_URL_MALFORMAT);
        add("NUL", std::string("/page\0", 6), {}, CURLE_URL_MALFORMAT);
    }
    void answers() {
        QFETCH(std::string, path);
        QFETCH(Fault, fault);
        m_server.setFault(fault);
        HttpLimits limits = m_limits;
        limits.totalSeconds = fault.bytesPerSecond > 0 ? 1 : 60;
        const HttpResponse answer = HttpClient(limits).get(path[0] == '/' ? m_server.url(path) : path);
        QTEST(answer.curlCode, "curlCode");
        QTEST(QStringLiteral("%1 %2").arg(answer.status).arg(answer.body.size()), "expected");
    }

    void keepsHeadersFromOthers() {
        const HttpClient::Headers key{{"X-Key", "secret"}};
        const HttpClient client(m_limits);
        const HttpResponse near = client.get(m_server.url("/near"), key);
        QVERIFY(near.body.find("X-Key: secret") != std::string::npos);
        for (const char* const path : {"/far", "/farther"}) // another port, another host
            QCOMPARE(client.get(m_server.url(path), key).curlCode, int(CURLE_REMOTE_ACCESS_DENIED));
        QCOMPARE(client.get(m_server.url("/echo"), {{"X-Key", "k\r\nX-Other: o"}}).curlCode,
                 int(CURLE_BAD_FUNCTION_ARGUMENT));
        QCOMPARE(m_elsewhere.requests(), 0);
        QCOMPARE(client.get(m_server.url("/far")).status, 200);
        QCOMPARE(m_elsewhere.requests(), 1);
    }

private:
    /// A megabyte of them.
    static std::string trailers() {
        std::string text;
        for (int i = 0; i < 50'000; ++i)
            text += "X-" + std::to_string(100'000 + i) + ": trailer\r\n";
        return text;
    }

    fixture::TestDevice m_device;
    const HttpLimits m_limits{1000, 1, 60, 100'000};
    tests::CannedServer m_elsewhere;
    const std::string m_far = m_elsewhere.url("/echo");
    tests::CannedServer m_server{{
        {"/page", tests::CannedServer::ok(std::string(50'000, 'p'))},
        {"/big", tests::CannedServer::ok(std::string(100'001, 'b'))},
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
