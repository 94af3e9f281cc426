#include "server.h"
#include "zip_listing.h"

#include <tests/support/files.h>

#include <QCryptographicHash>
#include <QImage>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

/// What a device sees of the server, over real HTTP and with the installed dictionaries.
class TestServerProtocol : public QObject {
    Q_OBJECT

    Server m_server;
    QJsonArray m_records;

    QJsonObject record(const QString& file) const {
        for (const QJsonValueConstRef value : m_records) {
            if (value[u"file"].toString() == file)
                return value.toObject();
        }
        return {};
    }
    QString id(const QString& file) const { return QString::number(record(file)[u"id"].toInt()); }

    static QString sha256(const QByteArray& data) {
        return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
    }

private Q_SLOTS:
    void initTestCase() {
        m_server.start();
        m_records = m_server.catalogue();
        QVERIFY(m_records.size() >= 10);
    }

    void catalogue() {
        QSet<int> ids;
        QSet<QString> files;
        for (const QJsonValueConstRef one : qAsConst(m_records)) {
            ids << one[u"id"].toInt();
            files << one[u"file"].toString();
            for (const QString& key :
                 {u"name"_qs, u"description"_qs, u"category"_qs, u"provider"_qs, u"set"_qs})
                QVERIFY2(!one[key].toString().isEmpty(), qPrintable(key));
            for (const QString& key : {u"language_from"_qs, u"language_to"_qs})
                QCOMPARE(one[key][u"code"].toString().size(), 2);
            QVERIFY(one[u"thumbnail"].toString().startsWith(m_server.url()));
        }
        QVERIFY(ids.size() == m_records.size() && files.size() == m_records.size());
        const QJsonObject czech = record(u"Czech-English.tsdict"_qs);
        QCOMPARE(czech[u"language_from"].toObject(), QJsonObject({{u"code"_qs, u"cs"_qs}}));
        QCOMPARE(czech[u"version"].toInt(), 203);
        QVERIFY(record(u"Latin-English.tsdict"_qs).isEmpty()); // devices have no name for the language
    }

    void catalogueTag() {
        const QByteArray tag = m_server.get(u"/v1/dictionaries"_qs).header("etag");
        const std::pair<QByteArray, int> known[] = {
            {tag, 304}, {"\"other\", W/" + tag, 304}, {"\"other\"", 200}};
        for (const auto& [header, status] : known)
            QCOMPARE(m_server.get(u"/v1/dictionaries"_qs, {{"If-None-Match", header}}).status, status);
    }

    void covers() {
        QSet<QByteArray> different;
        for (const QJsonValueConstRef value : qAsConst(m_records)) {
            const QByteArray cover = m_server.get(value[u"thumbnail"].toString()).body;
            QCOMPARE(QImage::fromData(cover, "PNG").size(), QSize(300, 400));
            different << cover;
        }
        QCOMPARE(different.size(), m_records.size());
    }

    void packageOfTwo() {
        int number = 0;
        const Reply ready = m_server.package(
            id(u"Czech-English.tsdict"_qs) + u',' + id(u"ελληνικά-Русский.tsdict"_qs), &number);
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
            QVERIFY(!record(entry.name).isEmpty());
            QCOMPARE(listed[u"name"].toString(), entry.name);
            QCOMPARE(listed[u"size"].toInteger(), entry.content.size());
            QCOMPARE(listed[u"sha256"].toString(), sha256(entry.content));
        }
        checkDictionary(entries[1].content);
        const Reply report = m_server.post(u"/v1/packages/%1/installed"_qs.arg(number));
        QVERIFY(report.status == 200 && !report.body.isEmpty() && report.body.size() < 200);
    }

    void sameIdsSameTask() {
        const QString a = id(u"Czech-English.tsdict"_qs);
        const QString b = id(u"Turkish-English.tsdict"_qs);
        QList<int> tasks;
        for (const QString& ids : {a + u',' + b, b + u"%2C"_qs + a + u',' + b, b})
            m_server.package(ids, &tasks.emplaceBack());
        QVERIFY(tasks[0] > 0 && tasks[1] == tasks[0] && tasks[2] != tasks[0]);
    }

    void partsOfAPackage() {
        const QString url = m_server.package(id(u"Serbian-English.tsdict"_qs))["url"].toString();
        const Reply whole = m_server.get(url);
        QCOMPARE(whole.header("accept-ranges"), "bytes");
        const QByteArray size = QByteArray::number(whole.body.size());
        const Reply middle = m_server.get(url, {{"Range", "bytes=1000-2999"}});
        QCOMPARE(middle.status, 206);
        QCOMPARE(middle.header("content-range"), "bytes 1000-2999/" + size);
        QCOMPARE(middle.body, whole.body.mid(1000, 2000));
        const Reply rest = m_server.get(url, {{"Range", "bytes=1000-"}, {"If-Range", whole.header("etag")}});
        QCOMPARE(rest.body, whole.body.mid(1000));
        QCOMPARE(m_server.get(url, {{"Range", "bytes=1000-"}, {"If-Range", "\"old\""}}).body, whole.body);
        const Reply behind = m_server.get(url, {{"Range", "bytes=" + size + "-"}});
        QCOMPARE(behind.status, 416);
        QCOMPARE(behind.header("content-range"), "bytes */" + size);
    }

    void badRequests_data() {
        QTest::addColumn<int>("status");
        for (const char* const ids : {"", "?ids=", "?ids=1,", "?ids=1,x", "?ids=-1", "?ids=99999999999"})
            QTest::addRow("POST /v1/packages%s", ids) << 400;
        const QByteArray many = "POST /v1/packages?ids=1" + QByteArray(",1").repeated(200);
        QTest::newRow(many.constData()) << 400;
        for (const char* const request :
             {"POST /v1/packages?ids=1,9999", "POST /v1/packages/9999/installed", "GET /v1/packages/9999",
              "GET /v1/packages/0", "GET /v1/packages/9999/file.tsi",
              "GET /v1/packages/..%2F..%2Fstate.json/file.tsi", "GET /v1/dictionaries/x/cover.png",
              "GET /v1/dictionaries/9999/cover.png", "GET /"})
            QTest::newRow(request) << 404;
    }
    void badRequests() {
        const QString request = QString::fromLatin1(QTest::currentDataTag());
        const QString path = request.section(u' ', 1);
        const Reply reply = request.startsWith(u"POST") ? m_server.post(path) : m_server.get(path);
        QTEST(reply.status, "status");
        QVERIFY(!reply["error"].toString().isEmpty());
    }

    void morphology() {
        const Server::Headers key{{"X-Api-Key", "reader-development-key"}};
        const QString list = u"/v1/morphology"_qs;
        QCOMPARE(m_server.get(list).status, 401);
        QCOMPARE(m_server.get(list, {{"X-Api-Key", "wrong"}}).status, 401);
        QCOMPARE(m_server.get(list + u"/en.zip"_qs).status, 401);
        QCOMPARE(m_server.get(list + u"/xx.zip"_qs, key).status, 404);
        QCOMPARE(m_server.get(list + u"/en"_qs, key).status, 404);
        const Reply urls = m_server.get(list, key);
        QVERIFY(urls.json().object().contains(u"fr"));
        const QList<ZipEntry> entries = listZip(m_server.get(urls["en"].toString(), key).body);
        QVERIFY(entries.size() == 2 && entries[0].name == u"en.aff" && entries[1].name == u"en.dic");
        QCOMPARE(entries[1].content, readFile(u"/usr/share/hunspell/en_US.dic"_qs));
    }

private:
    void checkDictionary(const QByteArray& content) const {
        const QTemporaryDir folder;
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_qs);
        database.setDatabaseName(folder.filePath(u"one.tsdict"_qs));
        writeFile(database.databaseName(), content);
        QVERIFY(database.open());
        const auto ask = [](const QString& question) {
            QSqlQuery query(question);
            return query.next() ? query.value(0).toString() : QString();
        };
        const auto metadata = [&ask](const QString& key) {
            return ask(u"SELECT value FROM metadata WHERE key = '%1'"_qs.arg(key));
        };
        const QJsonObject czech = record(u"Czech-English.tsdict"_qs);
        QCOMPARE(metadata(u"title"_qs), czech[u"name"].toString());
        QCOMPARE(metadata(u"version"_qs) + metadata(u"language_from"_qs), u"203cs"_qs);
        for (const QString& key : {u"description"_qs, u"category"_qs, u"provider"_qs, u"publish_date"_qs,
                                   u"set"_qs, u"thumbnail"_qs})
            QCOMPARE(metadata(key), czech[key].toString());
        QCOMPARE(ask(u"SELECT count(*) FROM entries"_qs), u"488"_qs);
        QCOMPARE(ask(u"SELECT headword FROM entries WHERE folded = 'švýcarsko'"_qs), u"Švýcarsko"_qs);
        QVERIFY(ask(u"SELECT definition FROM entries WHERE headword = 'dýmka'"_qs).endsWith(u"\npipe"));
    }
};

QTEST_GUILESS_MAIN(TestServerProtocol)
#include "test_server_protocol.moc"
