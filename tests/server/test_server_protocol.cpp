#include "server.h"

#include <tests/support/files.h>

#include <QCryptographicHash>
#include <QImage>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTcpSocket>
#include <QTest>

namespace {

const QString list = u"/v1/dictionaries"_qs;

QString sha256(const QByteArray& data) {
    return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
}

} // namespace

/// What a device sees of the server, over real HTTP and with the installed dictionaries.
class TestServerProtocol : public QObject {
    Q_OBJECT

    Server m_server;
    QJsonArray m_records;

    QJsonObject record(const QString& file) const {
        for (const QJsonValueConstRef value : m_records) {
            if (value[u"file"].toString() == file + u".tsdict"_qs)
                return value.toObject();
        }
        return {};
    }
    QString id(const QString& file) const { return QString::number(record(file)[u"id"].toInt()); }

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
            for (const QString& key :
                 {u"name"_qs, u"description"_qs, u"category"_qs, u"provider"_qs, u"set"_qs})
                QVERIFY2(!one[key].toString().isEmpty(), qPrintable(key));
            for (const QString& key : {u"language_from"_qs, u"language_to"_qs})
                QCOMPARE(one[key][u"code"].toString().size(), 2);
            const QByteArray cover = m_server.get(one[u"thumbnail"].toString()).body;
            QCOMPARE(QImage::fromData(cover, "PNG").size(), QSize(300, 400));
            covers << cover;
        }
        QVERIFY(ids.size() == m_records.size() && files.size() == ids.size() && covers.size() == ids.size());
        const QJsonObject czech = record(u"Czech-English"_qs);
        QCOMPARE(czech[u"language_from"].toObject(), QJsonObject({{u"code"_qs, u"cs"_qs}}));
        QCOMPARE(czech[u"version"].toInt(), 203);
        QVERIFY(record(u"Latin-English"_qs).isEmpty()); // devices have no name for the language
    }

    void packageOfTwo() {
        int number = 0;
        const Reply ready =
            m_server.package(id(u"Czech-English"_qs) + u',' + id(u"ελληνικά-Русский"_qs), &number);
        QCOMPARE(ready.status, 200);
        const QByteArray zip = m_server.get(ready["url"].toString()).body;
        QCOMPARE(zip.size(), ready["size"].toInteger());
        QCOMPARE(sha256(zip), ready["sha256"].toString());

        const QList<ZipEntry> entries = listZip(zip);
        QCOMPARE(entries.size(), 3);
        QCOMPARE(entries[0].name, u"manifest.json"_qs);
        const QJsonDocument manifest = QJsonDocument::fromJson(entries[0].content);
        QVERIFY(number > 0 && manifest[u"package_id"].toInt() == number);
        QCOMPARE(manifest[u"files"].toArray().size(), 2);
        for (int i = 0; i < 2; ++i) {
            const QJsonValue listed = manifest[u"files"][i];
            const ZipEntry& entry = entries[i + 1];
            QVERIFY(!record(entry.name.chopped(7)).isEmpty());
            QCOMPARE(listed[u"name"].toString(), entry.name);
            QCOMPARE(listed[u"size"].toInteger(), entry.content.size());
            QCOMPARE(listed[u"sha256"].toString(), sha256(entry.content));
        }
        checkDictionary(entries[1].content);
        int same = 0;
        int other = 0;
        const QString czech = id(u"Czech-English"_qs);
        m_server.package(id(u"ελληνικά-Русский"_qs) + u"%2C"_qs + czech + u',' + czech, &same);
        m_server.package(czech, &other);
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
        for (const QString& url : {list, m_records[0][u"thumbnail"].toString(), u"/v1/morphology/en.zip"_qs,
                                   m_server.package(id(u"Serbian-English"_qs))["url"].toString()}) {
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
              "GET /v1/packages/0", "GET /v1/packages/9999/file.tsi",
              "GET /v1/packages/..%2F..%2Fstate.json/file.tsi", "GET /v1/dictionaries/x/cover.png",
              "GET /v1/dictionaries/9999/cover.png", "GET /", "KEY /v1/morphology/xx.zip",
              "KEY /v1/morphology/en"})
            QTest::newRow(request) << 404;
        for (const char* const request :
             {"GET /v1/morphology", "WRONG /v1/morphology", "GET /v1/morphology/en.zip"})
            QTest::newRow(request) << 401;
        for (const char* const body :
             {"nothing", "[]", R"({"delay":1})", R"({"delay_ms":-1})", R"({"delay_ms":"1"})",
              R"({"catalogue":"odd"})", R"({"catalogue":"status:abc"})", R"({"catalogue":"status:N"})",
              R"({"package_build_ms":8,"package_fault":"status:500"})", R"({"unlisted":["1"]})"})
            QTest::addRow("POST /control %s", body) << 400;
    }
    void refusals() {
        const QStringList words = QString::fromLatin1(QTest::currentDataTag()).split(u' ');
        Server::Headers headers;
        if (words[0] == u"KEY" || words[0] == u"WRONG")
            headers = {{"X-Api-Key", words[0] == u"KEY" ? "reader-development-key" : "wrong"}};
        const Reply reply = words[0] == u"POST" ? m_server.post(words[1], words.value(2).toLatin1())
                                                : m_server.get(words[1], headers);
        QTEST(reply.status, "status");
        QVERIFY(!reply["error"].toString().isEmpty());
        QCOMPARE(m_server.status()[u"switches"][u"package_build_ms"].toInt(), 0);
    }

    void morphology() {
        const Server::Headers key{{"X-Api-Key", "reader-development-key"}};
        const Reply urls = m_server.get(u"/v1/morphology"_qs, key);
        QVERIFY(urls.json().object().contains(u"fr"));
        const QList<ZipEntry> entries = listZip(m_server.get(urls["en"].toString(), key).body);
        QVERIFY(entries.size() == 2 && entries[0].name == u"en.aff" && entries[1].name == u"en.dic");
        QCOMPARE(entries[1].content, readFile(u"/usr/share/hunspell/en_US.dic"_qs));
    }

    void faultyPackages() {
        m_server.setSwitches({{u"package_fault"_qs, u"hostile"_qs}});
        QStringList names;
        int links = 0;
        for (const ZipEntry& entry :
             listZip(m_server.get(m_server.package(u"1"_qs)["url"].toString()).body)) {
            names << entry.name;
            links += entry.isLink ? 1 : 0;
        }
        QCOMPARE(links, 1);
        QVERIFY(names.contains(u"../../evil.tsdict"_qs) && names.contains(u"/tmp/evil.tsdict"_qs));
        QVERIFY(names.removeDuplicates() >= 2);

        m_server.setSwitches({{u"package_fault"_qs, u"damaged"_qs}});
        const QList<ZipEntry> damaged =
            listZip(m_server.get(m_server.package(u"1"_qs)["url"].toString()).body);
        const QJsonDocument manifest = QJsonDocument::fromJson(damaged.value(0).content);
        QVERIFY(damaged.size() == 2 &&
                manifest[u"files"][0][u"sha256"].toString() != sha256(damaged[1].content));
    }

    void pipelinedResponsesKeepTheirOrder() {
        m_server.setSwitches({{u"bytes_per_second"_qs, 50000}}); // 20 KB: the others could overtake it
        const Reply ready = m_server.package(id(u"Czech-English"_qs));
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

    void largeRequests_data() {
        QTest::addColumn<QByteArray>("start");
        QTest::newRow("URL") << QByteArray("GET /");
        QTest::newRow("header") << QByteArray("GET / HTTP/1.1\r\nX: ");
        QTest::newRow("body") << QByteArray("POST /control HTTP/1.1\r\nContent-Length: 900000000\r\n\r\n");
        QTest::newRow("chunk") << QByteArray(
            "POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\nfffffff\r\n");
    }
    void largeRequests() {
        QCOMPARE(m_server.get(u"/"_qs, {{"X", QByteArray(60000, 'x')}}).status, 404);
        QFETCH(QByteArray, start);
        QVERIFY(exchange(start + QByteArray(65536, 'x')).startsWith("HTTP/1.1 413 "));
    }

private:
    void checkDictionary(const QByteArray& content) const {
        const QTemporaryDir directory;
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_qs);
        database.setDatabaseName(directory.filePath(u"one.tsdict"_qs));
        writeFile(database.databaseName(), content);
        QVERIFY(database.open());
        const auto ask = [](const QString& question) {
            QSqlQuery query(question);
            return query.next() ? query.value(0).toString() : QString();
        };
        QJsonObject czech = record(u"Czech-English"_qs);
        czech[u"title"_qs] = czech[u"name"_qs];
        czech[u"language_from"_qs] = u"cs"_qs;
        for (const QString& key : {u"title"_qs, u"version"_qs, u"language_from"_qs, u"description"_qs,
                                   u"provider"_qs, u"publish_date"_qs, u"set"_qs, u"thumbnail"_qs})
            QCOMPARE(ask(u"SELECT value FROM metadata WHERE key = '%1'"_qs.arg(key)),
                     czech[key].toVariant().toString());
        QCOMPARE(ask(u"SELECT value FROM metadata WHERE key = 'category'"_qs), u"FreeDict"_qs);
        QCOMPARE(ask(u"SELECT count(*) FROM entries"_qs), u"488"_qs);
        QCOMPARE(ask(u"SELECT headword FROM entries WHERE folded = 'švýcarsko'"_qs), u"Švýcarsko"_qs);
        QVERIFY(ask(u"SELECT definition FROM entries WHERE headword = 'dýmka'"_qs).endsWith(u"\npipe"));
    }
};

QTEST_GUILESS_MAIN(TestServerProtocol)
#include "test_server_protocol.moc"
