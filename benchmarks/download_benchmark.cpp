#include "benchmarks.h"
#include "compare.h"

#include <server/support/files.h>
#include <server/support/zip_writer.h>
#include <simulator/fixture/loopback_server.h>
#include <utilities/sync_downloader.h>
#include <vellum/device_state.h>

#include <QByteArray>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <stdexcept>
#include <vector>

namespace tessaly::benchmarks {

namespace {

constexpr int rounds = 11;
constexpr qsizetype contentSize = qsizetype{64} << 20;
const QByteArray manifest("{}"); // the installer's to look into

/// The bytes of a package as the server makes them.
QByteArray makePackage(const QString& path) {
    QByteArray content(contentSize, Qt::Uninitialized);
    quint32 number = 1;
    for (char& c : content)
        c = static_cast<char>((number = number * 1664525 + 1013904223) >> 24);
    server::ZipWriter zip(path);
    zip.addData(QStringLiteral("manifest.json"), manifest);
    zip.addData(QStringLiteral("Dictionary.tsdict"), content);
    zip.commit();
    return server::readFile(path);
}

template<class Download>
double megabytesPerSecond(Download download) {
    const double taken = seconds([&download] {
        if (!download())
            throw std::runtime_error("a download failed");
    });
    return double(contentSize) / 1e6 / taken;
}

} // namespace

Measurement measureDownload() {
    const QTemporaryDir root;
    const QDir folder(root.path());
    folder.mkpath(QStringLiteral("var"));
    folder.mkpath(QStringLiteral("mnt/ext1/Downloads"));
    const QByteArray rootBefore = qgetenv("TESSALY_DEVICE_ROOT");
    qputenv("TESSALY_DEVICE_ROOT", root.path().toLocal8Bit());
    vellum::state::setNetworkReachable(true);

    const QByteArray file = makePackage(folder.filePath(QStringLiteral("package")));
    const QByteArray head =
        "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(file.size()) + "\r\n\r\n";
    const fixture::LoopbackServer server([&](QTcpSocket& client) {
        const auto send = [&] {
            client.write(head);
            client.write(file);
            client.disconnectFromHost();
        };
        QObject::connect(&client, &QTcpSocket::readyRead, &client, send, Qt::SingleShotConnection);
    });
    const QString url = QStringLiteral("http://127.0.0.1:%1/file.tsi").arg(server.port());
    const std::string checkedUrl =
        url.toStdString() + "#manifest_sha256=" + server::sha256(manifest).toStdString();

    utilities::SyncDownloader downloader("/mnt/ext1/Downloads");
    const QString ourCopy = folder.filePath(QStringLiteral("mnt/ext1/Downloads/ours.tsi"));
    const QString curlsCopy = folder.filePath(QStringLiteral("mnt/ext1/Downloads/curls.tsi"));
    std::vector<double> ours;
    std::vector<double> reference;
    for (int i = 0; i < rounds; ++i) {
        QFile::remove(ourCopy);
        QFile::remove(curlsCopy);
        ours.push_back(
            megabytesPerSecond([&] { return downloader.Download(checkedUrl, "/ours.tsi", 0, "benchmark"); }));
        reference.push_back(megabytesPerSecond([&] {
            return QProcess::execute(QStringLiteral("curl"), {QStringLiteral("-sfo"), curlsCopy, url}) == 0;
        }));
    }
    if (rootBefore.isEmpty())
        qunsetenv("TESSALY_DEVICE_ROOT");
    else
        qputenv("TESSALY_DEVICE_ROOT", rootBefore);
    return compareMedians("download MB/s", ours, reference);
}

} // namespace tessaly::benchmarks
