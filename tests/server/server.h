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
    int status = 0; ///< 0: no whole answer came
    QByteArray body;
    std::shared_ptr<QNetworkReply> raw;

    QByteArray header(const char* name) const { return raw->rawHeader(name); }
    QJsonDocument json() const { return QJsonDocument::fromJson(body); }
    QJsonValue operator[](const char* key) const { return json()[QLatin1String(key)]; }
};

/// The real server and a client for it. The state folder outlives restarts.
class Server : public tessaly::fixture::ServerProcess {
public:
    using Headers = QList<QNetworkReply::RawHeaderPair>;

    void start(const QStringList& options = {}) {
        m_client.clearConnectionCache();
        ServerProcess::start(m_state.path(), options);
    }
    QString statePath(const QString& name = {}) const { return m_state.filePath(name); }

    Reply get(const QString& path, const Headers& headers = {}) { return send("GET", path, {}, headers); }
    Reply post(const QString& path, const QByteArray& body = {}) { return send("POST", path, body, {}); }
    QJsonArray catalogue() { return get(u"/v1/dictionaries"_qs).json().array(); }

    /// Asks for a package and waits until it is built or refused: the last answer.
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
        const std::shared_ptr<QNetworkReply> answer(m_client.sendCustomRequest(request, method, body));
        QEventLoop loop;
        QObject::connect(answer.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        const QNetworkReply::NetworkError error = answer->error();
        const bool isWhole = error == QNetworkReply::NoError || error >= QNetworkReply::ContentAccessDenied;
        return {isWhole ? answer->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() : 0,
                answer->readAll(), answer};
    }

    const QTemporaryDir m_state;
    QNetworkAccessManager m_client;
};
