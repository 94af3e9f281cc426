#pragma once

#include <simulator/fixture/server_process.h>

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QThread>
#include <memory>

struct Reply {
    int status = 0; ///< 0: no whole response came
    QByteArray body;
    std::shared_ptr<QNetworkReply> raw;

    QByteArray header(const char* name) const { return raw->rawHeader(name); }
    QJsonValue operator[](const char* key) const { return QJsonDocument::fromJson(body)[QLatin1String(key)]; }
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
    QJsonArray catalogue() { return QJsonDocument::fromJson(get(u"/v1/dictionaries"_qs).body).array(); }

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
