// tessaly-fuzz-seeds FOLDER: makes the targets' first inputs, in FOLDER/seeds/TARGET, of what the real server
// sends, and in FOLDER/attacks/TARGET files that once were too much for a device, most too long to be varied.

#include <simulator/fixture/test_device.h>
#include <tests/platform/programs/package_builder.h>
#include <tests/support/files.h>

#include <QCoreApplication>
#include <QThread>
#include <dictionaries/routes.h>
#include <utilities/http_client.h>
#include <utilities/sync_downloader.h>

using namespace tessaly;
using tests::makeDatabase;
using tests::PackageBuilder;

namespace {
void put(const char* folder, const QByteArray& content) {
    static int count = 0;
    writeFile(u"%1/%2/%3"_qs.arg(QCoreApplication::arguments().value(1), QLatin1String(folder)).arg(++count),
              content);
}

QByteArray response(char route, const QByteArray& body, const QByteArray& status = "200 OK") {
    return route + QByteArray("HTTP/1.1 ") + status +
           "\r\nETag: \"1\"\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

void fromServer() {
    fixture::TestDevice device;
    const std::string url = device.startServer().url().toStdString();
    device.setOnline(true);
    const auto get = [&](const char* path) {
        return QByteArray::fromStdString(
            utilities::HttpClient().get(url + path, {{"X-Api-Key", "reader-development-key"}}).body);
    };
    put("seeds/catalogue", get("/v1/dictionaries"));
    put("seeds/routes", response('0', get("/v1/dictionaries").left(1500) + "\"}]"));
    put("seeds/routes", response('3', get("/v1/morphology")));
    put("seeds/configuration", readFile(device.path("/var/device_state.cfg")));
    const long long task = dictionary::Routes::requestDictionariesDownload("1", url).getRight();
    auto package = dictionary::Routes::getDictionariesDownloadUrl(task, url);
    for (; package.isLeft(); package = dictionary::Routes::getDictionariesDownloadUrl(task, url))
        QThread::msleep(50);
    utilities::SyncDownloader("/mnt/ext1/Downloads").Download(package.getRight(), "/p.tsi", 0, "");
    put("seeds/package", readFile(device.path("/mnt/ext1/Downloads/p.tsi")));
    QProcess::execute(device.path("/ebrmain/bin/dictpackageinstaller.app"),
                      {u"-package_name"_qs, u"/p.tsi"_qs});
    put("seeds/dictionary", folderContent(device.path("/mnt/ext1/system/dictionaries")).first());
    PackageBuilder morphology;
    morphology.manifest = QByteArray();
    for (const QString& suffix : {u"aff"_qs, u"dic"_qs})
        morphology.entries.append(
            {u"de."_qs + suffix, readFile(u"/usr/share/hunspell/it_IT."_qs + suffix).left(3000)});
    put("seeds/morphology", morphology.build());
}

void responses() {
    for (const QByteArray member : {"name", "description", "thumbnail", "file"}) {
        const QByteArray record =
            R"([{"id": 1, "name": "A", "file": "a.tsdict", ")" + member + R"(": "http://h/)";
        put("attacks/catalogue", record + QByteArray(10 << 20, 'x') + R"(.tsdict"}])");
        put("seeds/catalogue", record + R"(\u202E\n[error] b.tsdict"}])");
    }
    QByteArray records = "[1";
    for (int id = 1; records.size() < 16 << 20; ++id)
        records += R"(,{"id": )" + QByteArray::number(id) + R"(, "name": "A", "file": "a.tsdict"})";
    put("attacks/catalogue", records + ']');
    put("attacks/catalogue", '[' + QByteArray("1,").repeated(2 << 20) + "1]");

    put("seeds/routes", response('1', R"({"task_id": 1})", "202 Accepted"));
    for (const char* const size : {"9223372036854775807", "2199023255552", "69", "-1"})
        put("seeds/routes", response('2', QByteArray(R"({"url": "http://h/p.tsi", "size": )") + size + '}'));
    put("seeds/routes", response('3', R"({"de": "http://h/de.zip", "x\n[error] y": 1})"));
    put("seeds/routes", "0HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n[]\r\n0\r\nA: b\r\n\r\n");
    for (const char route : {'0', '1', '2', '3'})
        put("attacks/routes", response(route, QByteArray(20 << 20, '[')));
}

void dictionariesAndPackages() {
    const QByteArray metadata =
        "CREATE TABLE metadata (key, value); INSERT INTO metadata VALUES ('title', 'T');";
    const QByteArray tables = metadata + "CREATE TABLE entries (headword, definition, folded);";
    const QByteArray numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ";
    put("seeds/dictionary",
        makeDatabase(metadata +
                     "CREATE TABLE entries (headword, folded, definition AS (hex(zeroblob(4e5))))"));
    for (const char* const sql :
         {"5000) INSERT INTO sqlite_schema SELECT 'view', 'v' || i, 'v' || i, 0, 'CREATE VIEW v' || i ||"
          "' AS SELECT*FROM v' || (i - 1) FROM n",
          "400) INSERT INTO sqlite_schema SELECT 'index', 'i' || i, 'entries', i + 5, 'CREATE INDEX i' || i "
          "||"
          "' ON entries (headword' || replace(hex(zeroblob(450)), '00', '+headword') || ')' FROM n",
          "50) INSERT INTO entries SELECT i, hex(zeroblob(4e5)), 'word' FROM n",
          "9) INSERT INTO metadata SELECT i, hex(zeroblob(4e5)) FROM n"})
        put("attacks/dictionary", makeDatabase(tables + "PRAGMA writable_schema = 1;" + numbers + sql));

    PackageBuilder good;
    good.add(u"Ελληνικά.tsdict"_qs, makeDatabase(tables));
    put("seeds/package", good.build());
    PackageBuilder bomb;
    bomb.addBomb(30'000'003);
    PackageBuilder folders = good;
    folders.entries = QList<PackageBuilder::Entry>(40'000, {u"folder/"_qs, {}});
    put("attacks/package", bomb.build());
    put("attacks/package", folders.build());
    put("attacks/morphology", folders.build());
    put("seeds/manifest", R"({"package_id": 1, "files": [{"name": "a.tsdict", "size": 1, "sha256": ")" +
                              QByteArray(64, '0') + "\"}]}");
    put("attacks/manifest", R"({"package_id": 1, "files": [)" + QByteArray("{},").repeated(300'000) + "{}]}");
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    fromServer();
    responses();
    dictionariesAndPackages();
}
