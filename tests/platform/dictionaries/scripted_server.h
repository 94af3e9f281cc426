#pragma once

#include <QHttpServer>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QThread>
#include <utility>

namespace tessaly::tests {

/// An HTTP server on a thread of its own that gives every request the same answer.
class ScriptedServer {
public:
    ScriptedServer() {
        m_home.moveToThread(&m_thread);
        m_thread.start();
        inServer([this] {
            auto* const server = new QHttpServer(&m_home);
            server->setMissingHandler(
                [this](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
                    const bool isPost = request.method() == QHttpServerRequest::Method::Post;
                    m_requests << (isPost ? u"POST "_qs : u"GET "_qs) +
                                      request.url().toString(QUrl::RemoveScheme | QUrl::RemoveAuthority) +
                                      u' ' + QString::fromUtf8(request.value("X-Api-Key"));
                    responder.write(m_body, "application/json", QHttpServerResponder::StatusCode(m_status));
                });
            m_port = server->listen(QHostAddress::LocalHost);
        });
    }
    ~ScriptedServer() {
        inServer([this] { qDeleteAll(m_home.children()); });
        m_thread.quit();
        m_thread.wait();
    }

    [[nodiscard]] QByteArray url() const { return "http://127.0.0.1:" + QByteArray::number(m_port); }

    /// Single quotes in the body stand for double ones.
    void setAnswer(int status, QByteArray body) {
        body.replace('\'', '"');
        inServer([&] { std::tie(m_status, m_body) = std::tie(status, body); });
    }
    /// Requests since the last call, as "METHOD PATH KEY".
    QStringList takeRequests() {
        QStringList requests;
        inServer([&] { requests.swap(m_requests); });
        return requests;
    }

private:
    template<class Function>
    void inServer(const Function& function) {
        QMetaObject::invokeMethod(&m_home, function, Qt::BlockingQueuedConnection);
    }

    QThread m_thread;
    QObject m_home;
    quint16 m_port = 0;
    int m_status = 200;
    QByteArray m_body;
    QStringList m_requests;
};

} // namespace tessaly::tests
