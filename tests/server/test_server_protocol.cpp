#include "server_process.h"
#include "zip_listing.h"

#include <QCryptographicHash>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

/// What a device sees of the server, over real HTTP and with the installed dictionaries.
class TestServerProtocol : public QObject {
    Q_OBJECT

private:
    ServerProcess m_server;
    QJsonArray m_records;

    QJsonObject record(const char* file) const {
        for (const QJsonValueConstRef value : m_records) {
            if (value[QLatin1String("file")].toString() == QString::fromUtf8(file))
                return value.toObject();
        }
        return {};
    }

    QString id(const char* file) const { return QString::number(record(file).value(u"id"_qs).toInt()); }

    static QString sha256(const QByteArray& data) {
        return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
    }

    static QVariant ask(const QSqlDatabase& database, const QString& question) {
        QSqlQuery query(database);
        return query.exec(question) && query.next() ? query.value(0) : QVariant();
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_server.start());
        m_records = QJsonDocument::fromJson(m_server.get(u"/v1/dictionaries"_qs).body).array();
    }

    void catalogue() {
        QVERIFY(m_records.size() >= 10);
        QSet<int> ids;
        QSet<QString> files;
        for (const QJsonValueConstRef value : qAsConst(m_records)) {
            const QJsonObject one = value.toObject();
            ids << one.value(u"id"_qs).toInt();
            files << one.value(u"file"_qs).toString();
            for (const QString& key :
                 {u"name"_qs, u"description"_qs, u"category"_qs, u"provider"_qs, u"set"_qs})
                QVERIFY2(!one.value(key).toString().isEmpty(), qPrintable(key));
            for (const QString& key : {u"language_from"_qs, u"language_to"_qs})
                QCOMPARE(one.value(key).toObject().value(u"code"_qs).toString().size(), 2);
            QVERIFY(one.value(u"thumbnail"_qs).toString().startsWith(m_server.address()));
        }
        QCOMPARE(ids.size(), m_records.size());
        QCOMPARE(files.size(), m_records.size());
        const QJsonObject czech = record("Czech-English.tsdict");
        QCOMPARE(czech.value(u"language_from"_qs).toObject(), QJsonObject({{u"code"_qs, u"cs"_qs}}));
        QCOMPARE(czech.value(u"version"_qs).toInt(), 203);
        QVERIFY(record("Latin-English.tsdict").isEmpty()); // devices have no name for the language
    }

    void catalogueTag() {
        const QByteArray tag = m_server.get(u"/v1/dictionaries"_qs).headers.value("etag");
        QVERIFY(tag.startsWith('"'));
        const auto status = [this](const QByteArray& known) {
            return m_server.get(u"/v1/dictionaries"_qs, {{"If-None-Match", known}}).status;
        };
        QCOMPARE(status(tag), 304);
        QCOMPARE(status("\"other\", W/" + tag), 304);
        QCOMPARE(status("\"other\""), 200);
    }

    void covers() {
        QSet<QByteArray> different;
        for (const QJsonValueConstRef value : qAsConst(m_records)) {
            const ServerProcess::Reply reply = m_server.get(value[QLatin1String("thumbnail")].toString());
            const QImage cover = QImage::fromData(reply.body, "PNG");
            QCOMPARE(cover.size(), QSize(300, 400));
            different << reply.body;
        }
        QCOMPARE(different.size(), m_records.size());
        QCOMPARE(m_server.get(u"/v1/dictionaries/9999/cover.png"_qs).status, 404);
    }

    void packageOfTwo() {
        const QString ids = id("Czech-English.tsdict") + u',' + id("ελληνικά-Русский.tsdict");
        const ServerProcess::Reply asked = m_server.post(u"/v1/packages?ids="_qs + ids);
        QCOMPARE(asked.status, 202);
        const ServerProcess::Reply ready = m_server.package(ids);
        QCOMPARE(ready.status, 200);
        const QByteArray zip = m_server.get(ready.object().value(u"url"_qs).toString()).body;
        QCOMPARE(zip.size(), ready.object().value(u"size"_qs).toInteger());
        QCOMPARE(sha256(zip), ready.object().value(u"sha256"_qs).toString());

        const QList<ZipEntry> entries = listZip(zip);
        QCOMPARE(entries.size(), 3);
        QCOMPARE(entries.at(0).name, u"manifest.json"_qs);
        const QJsonObject manifest = QJsonDocument::fromJson(entries.at(0).content).object();
        QCOMPARE(manifest.value(u"package_id"_qs), asked.object().value(u"task_id"_qs));
        const QJsonArray files = manifest.value(u"files"_qs).toArray();
        QCOMPARE(files.size(), 2);
        for (int i = 0; i < 2; ++i) {
            const QJsonObject listed = files.at(i).toObject();
            QCOMPARE(listed.value(u"name"_qs).toString(), entries.at(i + 1).name);
            QVERIFY(!record(entries.at(i + 1).name.toUtf8().constData()).isEmpty());
            QCOMPARE(listed.value(u"size"_qs).toInteger(), entries.at(i + 1).content.size());
            QCOMPARE(listed.value(u"sha256"_qs).toString(), sha256(entries.at(i + 1).content));
        }
        checkDictionary(entries.at(1).content);
    }

    void checkDictionary(const QByteArray& content) {
        QTemporaryDir folder;
        QFile file(folder.filePath(u"one.tsdict"_qs));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) > 0);
        file.close();
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_qs, u"one"_qs);
        database.setDatabaseName(file.fileName());
        QVERIFY(database.open());
        const QJsonObject czech = record("Czech-English.tsdict");
        const auto metadata = [&database](const QString& key) {
            return ask(database, u"SELECT value FROM metadata WHERE key = '%1'"_qs.arg(key)).toString();
        };
        QCOMPARE(metadata(u"title"_qs), czech.value(u"name"_qs).toString());
        QCOMPARE(metadata(u"version"_qs), u"203"_qs);
        QCOMPARE(metadata(u"language_from"_qs), u"cs"_qs);
        for (const QString& key : {u"description"_qs, u"category"_qs, u"provider"_qs, u"publish_date"_qs,
                                   u"set"_qs, u"thumbnail"_qs})
            QCOMPARE(metadata(key), czech.value(key).toString());
        QCOMPARE(ask(database, u"SELECT count(*) FROM entries"_qs).toInt(), 488);
        QCOMPARE(ask(database, u"SELECT headword FROM entries WHERE folded = 'švýcarsko'"_qs).toString(),
                 u"Švýcarsko"_qs);
        QVERIFY(ask(database, u"SELECT definition FROM entries WHERE headword = 'dýmka'"_qs)
                    .toString()
                    .endsWith(u"\npipe"));
        database.close();
        database = {};
        QSqlDatabase::removeDatabase(u"one"_qs);
    }

    void sameIdsSameTask() {
        int first = 0;
        int second = 0;
        const QString a = id("Czech-English.tsdict");
        const QString b = id("Turkish-English.tsdict");
        m_server.package(a + u',' + b, &first);
        m_server.package(b + u"%2C"_qs + a + u',' + b, &second);
        QVERIFY(first > 0);
        QCOMPARE(second, first);
        m_server.package(b, &second);
        QVERIFY(second != first);
    }

    void partsOfAPackage() {
        const ServerProcess::Reply ready = m_server.package(id("Serbian-English.tsdict"));
        const QString url = ready.object().value(u"url"_qs).toString();
        const ServerProcess::Reply whole = m_server.get(url);
        QCOMPARE(whole.headers.value("accept-ranges"), "bytes");
        const QByteArray size = QByteArray::number(whole.body.size());
        const ServerProcess::Reply middle = m_server.get(url, {{"Range", "bytes=1000-2999"}});
        QCOMPARE(middle.status, 206);
        QCOMPARE(middle.headers.value("content-range"), "bytes 1000-2999/" + size);
        QCOMPARE(middle.body, whole.body.mid(1000, 2000));
        const ServerProcess::Reply rest =
            m_server.get(url, {{"Range", "bytes=1000-"}, {"If-Range", whole.headers.value("etag")}});
        QCOMPARE(rest.status, 206);
        QCOMPARE(rest.body, whole.body.mid(1000));
        QCOMPARE(m_server.get(url, {{"Range", "bytes=1000-"}, {"If-Range", "\"old\""}}).body, whole.body);
        const ServerProcess::Reply behind = m_server.get(url, {{"Range", "bytes=" + size + "-"}});
        QCOMPARE(behind.status, 416);
        QCOMPARE(behind.headers.value("content-range"), "bytes */" + size);
    }

    void badRequests_data() {
        QTest::addColumn<bool>("post");
        QTest::addColumn<int>("status");
        const auto row = [](const QByteArray& path, bool post, int status) {
            QTest::newRow(path.constData()) << post << status;
        };
        row("/v1/packages", true, 400);
        row("/v1/packages?ids=", true, 400);
        row("/v1/packages?ids=1,", true, 400);
        row("/v1/packages?ids=1,x", true, 400);
        row("/v1/packages?ids=-1", true, 400);
        row("/v1/packages?ids=99999999999", true, 400);
        row("/v1/packages?ids=1" + QByteArray(",1").repeated(200), true, 400);
        row("/v1/packages?ids=1,9999", true, 404);
        row("/v1/packages/9999", false, 404);
        row("/v1/packages/0", false, 404);
        row("/v1/packages/9999/file.tsi", false, 404);
        row("/v1/packages/9999/installed", true, 404);
        row("/v1/packages/..%2F..%2Fstate.json/file.tsi", false, 404);
        row("/v1/dictionaries/x/cover.png", false, 404);
        row("/control", false, 404); // not without the option
        row("/", false, 404);
    }

    void badRequests() {
        QFETCH(bool, post);
        const QString path = QString::fromLatin1(QTest::currentDataTag());
        const ServerProcess::Reply reply = post ? m_server.post(path) : m_server.get(path);
        QTEST(reply.status, "status");
        QVERIFY(!reply.object().value(u"error"_qs).toString().isEmpty());
    }

    void morphology() {
        const ServerProcess::Headers key{{"X-Api-Key", "reader-development-key"}};
        const QString list = u"/v1/morphology"_qs;
        QCOMPARE(m_server.get(list).status, 401);
        QCOMPARE(m_server.get(list, {{"X-Api-Key", "wrong"}}).status, 401);
        QCOMPARE(m_server.get(list + u"/en.zip"_qs).status, 401);
        QCOMPARE(m_server.get(list + u"/xx.zip"_qs, key).status, 404);
        QCOMPARE(m_server.get(list + u"/en"_qs, key).status, 404);
        const QJsonObject urls = m_server.get(list, key).object();
        QVERIFY(urls.contains(u"en"_qs) && urls.contains(u"fr"_qs));
        const QList<ZipEntry> entries = listZip(m_server.get(urls.value(u"en"_qs).toString(), key).body);
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries.at(0).name, u"en.aff"_qs);
        QCOMPARE(entries.at(1).name, u"en.dic"_qs);
        QFile words(u"/usr/share/hunspell/en_US.dic"_qs);
        QVERIFY(words.open(QIODevice::ReadOnly));
        QCOMPARE(entries.at(1).content, words.readAll());
    }

    void installedReport() {
        int number = 0;
        m_server.package(id("Czech-English.tsdict"), &number);
        const ServerProcess::Reply reply = m_server.post(u"/v1/packages/%1/installed"_qs.arg(number));
        QCOMPARE(reply.status, 200);
        QVERIFY(!reply.body.isEmpty() && reply.body.size() < 200);
    }
};

QTEST_GUILESS_MAIN(TestServerProtocol)
#include "test_server_protocol.moc"
