#include "../support/canned_server.h"

#include <QTest>
#include <dictionaries/routes.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>
#include <vellum/device_state.h>

using namespace tessaly::dictionary;

namespace {

template<class T>
QString text(const tessaly::Either<ApiError, T>& result) {
    if (result.isLeft())
        return QStringLiteral("error %1: ").arg(result.getLeft().value.which()) +
               QString::fromStdString(to_string(result.getLeft()));
    if constexpr (std::is_same_v<T, std::string>)
        return QString::fromStdString(result.getRight());
    else if constexpr (std::is_same_v<T, long long>)
        return QString::number(result.getRight());
    else
        return QStringLiteral("%1 records").arg(result.getRight().size());
}

QString call(const QString& route, const std::string& base) {
    if (route == u"list")
        return text(Routes::listDictionaries(base));
    if (route == u"request")
        return text(Routes::requestDictionariesDownload("12,40", base));
    if (route == u"address")
        return text(Routes::getDictionariesDownloadUrl(7, base));
    return text(Routes::sendSuccessInstall("7", base));
}

const QStringList routes = {u"list"_qs, u"request"_qs, u"address"_qs, u"report"_qs};

} // namespace

class RoutesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answers_data() {
        QTest::addColumn<QString>("route");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("expected"); ///< the result's text, of an error its begin

        const auto row = [](const QString& route, int status, const QByteArray& body,
                            const QByteArray& expected) {
            QTest::addRow("%s %d %s", qPrintable(route), status, body.left(50).constData())
                << route << status << body << QString::fromUtf8(expected);
        };
        const std::pair<QString, int> refusals[] = {
            {u"list"_qs, 202},    {u"list"_qs, 500},    {u"request"_qs, 200}, {u"request"_qs, 404},
            {u"address"_qs, 404}, {u"address"_qs, 429}, {u"report"_qs, 202},  {u"report"_qs, 500}};
        for (const auto& [route, status] : refusals)
            row(route, status, "{}", "error 2: HTTP status " + QByteArray::number(status));
        row(u"request"_qs, 429, {}, "error 1");
        row(u"address"_qs, 202, {}, "error 1");
        row(u"list"_qs, 200, "[" + QByteArray(200'000, ' ') + "{'id': 1, 'name': 'A', 'file': 'a.tsdict'}]",
            "1 records");
        row(u"list"_qs, 200, "[", "error 0");
        row(u"request"_qs, 202, "{'task_id': 9007199254740993}", "9007199254740993");
        for (const char* body :
             {"{'task_id': 0}", "{'task_id': -1}", "{'task_id': '3'}", "{}", "[3]", "3", ""})
            row(u"request"_qs, 202, body, "error 0");
        row(u"report"_qs, 200, "installed ✓", "installed ✓");
        for (const QByteArray& body : {QByteArray(1025, 'x'), QByteArray("\xff")})
            row(u"report"_qs, 200, body, "error 0");

        const QByteArray sha(64, 'A');
        const QByteArray announced = "'manifest_sha256': '" + sha;
        const std::pair<QByteArray, QByteArray> addresses[] = {
            {"'url': 'http://h/f.tsi'", "http://h/f.tsi"},
            {"'url': 'https://h/f.tsi#size=1', 'size': 0", "https://h/f.tsi#size=0"},
            {"'url': 'http://h/f', " + announced + "'", "http://h/f#manifest_sha256=" + sha},
            {"'size': 12, 'url': 'http://h/f', " + announced + "'",
             "http://h/f#size=12&manifest_sha256=" + sha}};
        for (const auto& [members, expected] : addresses)
            row(u"address"_qs, 200, '{' + members + '}', expected);
        for (const char* const members : {"", "'url': ''", "'url': 'file:///etc/passwd'", "'url': '/f.tsi'",
                                          "'url': 'http://'", "'url': 'http:// h/'"})
            row(u"address"_qs, 200, '{' + QByteArray(members) + '}', "error 0");
        for (const QByteArray& member :
             {QByteArray("'size': -1"), QByteArray("'size': '12'"), QByteArray("'size': null"),
              QByteArray("'manifest_sha256': 1"), announced + "A'", announced.chopped(1) + "g'"})
            row(u"address"_qs, 200, "{'url': 'http://h/f', " + member + '}', "error 0");
        for (const QString& route : {u"request"_qs, u"address"_qs, u"report"_qs})
            row(route, route == u"request" ? 202 : 200, QByteArray(100'000, ' '), "error 4");
    }

    void answers() {
        QFETCH(QString, route);
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(QString, expected);
        m_server.setAnswer(status, body);
        const QString result = call(route, m_server.url());
        QVERIFY2(result == expected || (expected.startsWith(u"error") && result.startsWith(expected)),
                 qPrintable(result));
        const QStringList requests = {u"GET /v1/dictionaries "_qs, u"POST /v1/packages?ids=12,40 "_qs,
                                      u"GET /v1/packages/7 "_qs, u"POST /v1/packages/7/installed "_qs};
        QCOMPARE(m_server.takeRequests(), QStringList(requests.at(routes.indexOf(route))));
    }

    void aCatalogueCrossesTheNetworkOnce() {
        const auto list = [this](int status, const char* body, const std::string& etag) {
            m_server.setAnswer(status, body, "\r\nETag: " + etag);
            return call(u"list"_qs, m_server.url());
        };
        const char* const one = "[{'id': 1, 'name': 'A', 'file': 'a.tsdict'}]";
        QCOMPARE(list(200, one, "\"1\""), u"1 records"_qs);
        QCOMPARE(list(304, "", "\"1\""), u"1 records"_qs); // used, and forgotten
        QVERIFY(list(304, "", "\"1\"").startsWith(u"error 2: HTTP status 304"));
        QCOMPARE(list(200, one, "\"1\""), u"1 records"_qs);
        QCOMPARE(list(200, "[]", "\"2\""), u"0 records"_qs);
        QCOMPARE(list(304, "", "\"2\""), u"0 records"_qs);
        const QString request = u"GET /v1/dictionaries "_qs;
        QCOMPARE(m_server.takeRequests(), QStringList({request, request + u"\"1\""_qs, request, request,
                                                       request + u"\"1\""_qs, request + u"\"2\""_qs}));
    }

    void addresses() {
        Routes::requestDictionariesDownload("1&x=2#", m_server.url());
        Routes::sendSuccessInstall("7/../8?", m_server.url());
        QCOMPARE(m_server.takeRequests(), QStringList({u"POST /v1/packages?ids=1%26x%3D2%23 "_qs,
                                                       u"POST /v1/packages/7%2F..%2F8%3F/installed "_qs}));
        writeFile(m_device.path("/ebrmain/config/dictionary_server.cfg"), "url=http://h:1/base//\n");
        QCOMPARE(default_base_url(), std::string("http://h:1/base"));
        vellum::state::setNetworkReachable(false);
        for (const QString& route : routes)
            QVERIFY(call(route, m_server.url()).endsWith(u"(7)"));
        QVERIFY(m_server.takeRequests().isEmpty());
    }

private:
    tessaly::fixture::TestDevice m_device;
    tessaly::tests::CannedServer m_server;
};

QTEST_GUILESS_MAIN(RoutesTest)
#include "routes_test.moc"
