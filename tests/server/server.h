#pragma once

#include <simulator/fixture/server_process.h>

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QThread>
#include <archive.h>
#include <archive_entry.h>
#include <memory>

struct Reply {
    int status = 0; ///< 0: no whole response came
    QByteArray body;
    std::shared_ptr<QNetworkReply> raw;

    QByteArray header(const char* name) const { return raw->rawHeader(name); }
    QJsonDocument json() const { return QJsonDocument::fromJson(body); }
    QJsonValue operator[](const char* key) const { return json()[QLatin1String(key)]; }
};

/// The real server and a client for it. The state directory outlives restarts.
class Server : public tessaly::fixture::ServerProcess {
public:
    using RawHeader = QNetworkReply::RawHeaderPair;
    using Headers = QList<RawHeader>;

    void start(const QStringList& options = {}) {
        m_client.clearConnectionCache();
        ServerProcess::start(m_state.path(), options);
    }
    QString statePath(const QString& name = {}) const { return m_state.filePath(name); }

    Reply get(const QString& path, const Headers& headers = {}) { return send("GET", path, {}, headers); }
    Reply post(const QString& path, const QByteArray& body = {}) { return send("POST", path, body, {}); }
    QJsonArray catalogue() { return get(u"/v1/dictionaries"_qs).json().array(); }

    /// Asks for a package and waits until it is built or refused: the last response.
    Reply package(const QString& ids, int* number = nullptr) {
        Reply reply = post(u"/v1/packages?ids="_qs + ids);
        const int task = reply["task_id"].toInt();
        if (number)
            *number = task;
        for (int i = 0; i < 400 && reply.status == 202; ++i) {
            QThread::msleep(25);
            reply = get(u"/v1/packages/%1"_qs.arg(task));
        }
        return reply;
    }

private:
    Reply send(const QByteArray& method, const QString& path, const QByteArray& body,
               const Headers& headers) {
        QNetworkRequest request(QUrl(path.startsWith(u'/') ? url() + path : path));
        request.setTransferTimeout(20000);
        request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_qs);
        for (const auto& [name, value] : headers)
            request.setRawHeader(name, value);
        const std::shared_ptr<QNetworkReply> reply(m_client.sendCustomRequest(request, method, body));
        QEventLoop loop;
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        const QNetworkReply::NetworkError error = reply->error();
        const bool isWhole = error == QNetworkReply::NoError || error >= QNetworkReply::ContentAccessDenied;
        return {isWhole ? reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() : 0,
                reply->readAll(), reply};
    }

    const QTemporaryDir m_state;
    QNetworkAccessManager m_client;
};

struct ZipEntry {
    QString name;
    QByteArray content;
    bool isLink = false;
};

/// The entries of a zip in their order, up to the first damaged one.
inline QList<ZipEntry> listZip(const QByteArray& zip) {
    QList<ZipEntry> entries;
    const std::unique_ptr<archive, int (*)(archive*)> reader(archive_read_new(), archive_read_free);
    archive_read_support_format_zip(reader.get());
    archive_read_open_memory(reader.get(), zip.constData(), std::size_t(zip.size()));
    archive_entry* entry = nullptr;
    while (archive_read_next_header(reader.get(), &entry) == ARCHIVE_OK) {
        const bool isLink = archive_entry_filetype(entry) == AE_IFLNK;
        QByteArray content(isLink ? 0 : qsizetype(archive_entry_size(entry)), '\0');
        if (archive_read_data(reader.get(), content.data(), std::size_t(content.size())) != content.size())
            break;
        entries.append({QString::fromUtf8(archive_entry_pathname_utf8(entry)), content, isLink});
    }
    return entries;
}
