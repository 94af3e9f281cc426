#include "server.h"

#include <QCryptographicHash>
#include <QTcpSocket>
#include <QTest>

namespace {

QString sha256(const QByteArray& data) {
    return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
}

} // namespace

/// What a device sees of the server, over real HTTP and with the installed dictionaries.
class ServerProtocolTest : public QObject {
    Q_OBJECT

    Server m_server;
    QJsonArray m_records;

    /// What comes back for bytes sent as they are, until the server has closed or nothing more comes.
    QByteArray exchange(const QByteArray& sent) const {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, quint16(m_server.port()));
        QByteArray received;
        if (!socket.waitForConnected() || socket.write(sent) < 0)
            return "no connection";
        while (socket.waitForReadyRead(1000))
            received += socket.readAll();
        return received;
    }

private Q_SLOTS:
    void initTestCase() {
        m_server.start();
        m_records = m_server.catalogue();
        QVERIFY(m_records.size() >= 10);
    }
    void init() { m_server.resetSwitches(); }

    void catalogue() {
        QSet<int> ids;
        QSet<QString> files;
        QSet<QByteArray> covers;
        for (const QJsonValueConstRef one : qAsConst(m_records)) {
            ids << one[u"id"].toInt();
            files << one[u"file"].toString();
            covers << m_server.get(one[u"thumbnail"].toString()).body;
        }
        QVERIFY(ids.size() == m_records.size() && files.size() == ids.size() && covers.size() == ids.size());
        QVERIFY(!files.contains(u"Latin-English.tsdict"_qs)); // devices have no name for the language
        QJsonObject czech = m_records[0].toObject();
        QVERIFY(czech.take(u"description"_qs).toString().contains(u"icense")); // its licence is kept
        QStringList values;
        for (const char* const key :
             {"id", "file", "name", "version", "publish_date", "provider", "category"})
            values << czech[QLatin1String(key)].toVariant().toString();
        QCOMPARE(values.join(u'|'),
                 u"1|Czech-English.tsdict|Czech-English FreeDict Dictionary|203|2018-08-04|"
                 "FreeDict|FreeDict"_qs);
        QCOMPARE(czech[u"language_from"].toObject(), QJsonObject({{u"code"_qs, u"cs"_qs}}));
    }

    void packages() {
        int number = 0;
        int same = 0;
        int other = 0;
        const Reply ready = m_server.package(u"1,2"_qs, &number);
        const QByteArray zip = m_server.get(ready["url"].toString()).body;
        QVERIFY(ready.status == 200 && number > 0);
        QCOMPARE(zip.size(), ready["size"].toInteger());
        QCOMPARE(sha256(zip), ready["sha256"].toString());
        m_server.package(u"2%2C1,1"_qs, &same);
        m_server.package(u"2"_qs, &other);
        QVERIFY(same == number && other != number);
        const Reply report = m_server.post(u"/v1/packages/%1/installed"_qs.arg(number));
        QVERIFY(report.status == 200 && !report.body.isEmpty() && report.body.size() < 200);
    }

    /// Catalogue, cover, package and morphology data are files to any cache on the way.
    void conditions_data() {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("first"); // from the end if negative
        QTest::addColumn<int>("length");
        for (const char* const known :
             {"If-None-Match: TAG", "If-None-Match: \"other\", W/TAG", "If-None-Match: *"})
            QTest::newRow(known) << 304 << 0 << 0;
        QTest::newRow("Range: bytes=0-") << 206 << 0 << -1;
        QTest::newRow("Range: bytes=5-9") << 206 << 5 << 5;
        QTest::newRow("Range: BYTES=-10") << 206 << -10 << 10;
        QTest::newRow("Range: bytes=7-99999999999999999999999") << 206 << 7 << -1;
        for (const char* const none : {"SIZE-", "99999999999999999999999-", "-0"})
            QTest::addRow("Range: bytes=%s", none) << 416 << 0 << 0;
        for (const char* const ignored :
             {"If-None-Match: \"other\"", "Range: bytes=9-5", "Range: bytes=-", "Range: bytes=0-1,5-6",
              "Range: bytes=1x-", "Range: lines=1-2", "Range: bytes=5-9\nIf-Range: \"other\""})
            QTest::newRow(ignored) << 200 << 0 << -1;
    }
    void conditions() {
        QFETCH(int, first);
        QFETCH(int, length);
        for (const QString& url :
             {u"/v1/dictionaries"_qs, m_records[0][u"thumbnail"].toString(), u"/v1/morphology/en.zip"_qs,
              m_server.package(u"1"_qs)["url"].toString()}) {
            Server::Headers headers{{"X-Api-Key", "reader-development-key"}};
            const Reply whole = m_server.get(url, headers);
            const QByteArray size = QByteArray::number(whole.body.size());
            QByteArray lines = QTest::currentDataTag();
            lines.replace("TAG", whole.header("etag")).replace("SIZE", size);
            for (const QByteArray& line : lines.split('\n'))
                headers << Server::RawHeader(line.left(line.indexOf(':')), line.mid(line.indexOf(' ') + 1));
            const Reply reply = m_server.get(url, headers);
            QTEST(reply.status, "status");
            const qsizetype start = first < 0 ? whole.body.size() + first : first;
            QCOMPARE(reply.body, length == 0 ? QByteArray() : whole.body.mid(start, length));
            const QByteArray part = "bytes " + QByteArray::number(start) + '-';
            const QByteArray range = reply.header("content-range");
            QVERIFY(reply.status == 206 ? range.startsWith(part) && range.endsWith('/' + size)
                                        : range == (reply.status == 416 ? "bytes */" + size : QByteArray()));
        }
    }

    void refusals_data() {
        QTest::addColumn<int>("status");
        for (const char* const ids : {"", "?ids=", "?ids=1,", "?ids=1,x", "?ids=-1", "?ids=99999999999"})
            QTest::addRow("POST /v1/packages%s", ids) << 400;
        const QByteArray many = "POST /v1/packages?ids=1" + QByteArray(",1").repeated(200);
        QTest::newRow(many.constData()) << 400;
        for (const char* const request :
             {"POST /v1/packages?ids=1,9999", "POST /v1/packages/9999/installed", "GET /v1/packages/9999",
              "GET /v1/packages/..%2F..%2Fstate.json/file.tsi", "GET /v1/dictionaries/x/cover.png", "GET /",
              "KEY /v1/morphology/xx.zip"})
            QTest::newRow(request) << 404;
        for (const char* const request :
             {"GET /v1/morphology", "WRONG /v1/morphology", "GET /v1/morphology/en.zip"})
            QTest::newRow(request) << 401;
    }
    void refusals() {
        const QStringList words = QString::fromLatin1(QTest::currentDataTag()).split(u' ');
        Server::Headers headers;
        if (words[0] == u"KEY" || words[0] == u"WRONG")
            headers = {{"X-Api-Key", words[0] == u"KEY" ? "reader-development-key" : "wrong"}};
        const Reply reply = words[0] == u"POST" ? m_server.post(words[1]) : m_server.get(words[1], headers);
        QTEST(reply.status, "status");
        QVERIFY(!reply["error"].toString().isEmpty());
    }

    void pipelinedResponsesKeepTheirOrder() {
        m_server.setSwitches({{u"bytes_per_second"_qs, 50000}}); // the others could overtake it
        const Reply ready = m_server.package(u"1"_qs);
        const QByteArray path = QUrl(ready["url"].toString()).path().toLatin1();
        QByteArray requests;
        for (const QByteArray& one : {path, QByteArray("/v1/dictionaries/1/cover.png"), QByteArray("/none")})
            requests += "GET " + one + " HTTP/1.1\r\nHost: server\r\n\r\n";
        const QByteArray received = exchange(requests);
        const qsizetype file = received.indexOf("\r\n\r\n") + 4;
        const QByteArray rest = received.mid(file + ready["size"].toInteger());
        QCOMPARE(sha256(received.mid(file, ready["size"].toInteger())), ready["sha256"].toString());
        QVERIFY(rest.startsWith("HTTP/1.1 200") && rest.indexOf("HTTP/1.1 404") > 1000);
    }

    void largeRequests() {
        QCOMPARE(m_server.get(u"/"_qs, {{"X", QByteArray(60000, 'x')}}).status, 404);
        for (const QByteArray& start :
             {QByteArray("GET /"), QByteArray("GET / HTTP/1.1\r\nX: "),
              QByteArray("POST /control HTTP/1.1\r\nContent-Length: 900000000\r\n\r\n"),
              QByteArray("POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\nfffffff\r\n")})
            QVERIFY2(exchange(start + QByteArray(65536, 'x')).startsWith("HTTP/1.1 413 "), start);
    }
};

QTEST_GUILESS_MAIN(ServerProtocolTest)
#include "server_protocol_test.moc"
