#pragma once

#include <simulator/fixture/fault_proxy.h>

#include <QStringList>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace tessaly::tests {

/// Answers each path with a fixed text, head included, and others with the request or what was set for all; a
/// FaultProxy stands in front.
class CannedServer {
public:
    explicit CannedServer(std::map<std::string, std::string> answers = {})
        : m_answers(std::move(answers))
        , m_server([this](QTcpSocket& client) {
            const auto send = [this, &client] {
                client.write(answerTo(QString::fromUtf8(client.readAll())));
                client.disconnectFromHost();
            };
            QObject::connect(&client, &QTcpSocket::readyRead, &client, send, Qt::SingleShotConnection);
        })
        , m_proxy(m_server.port()) {}

    static std::string ok(const std::string& body) { return withBody("200 OK", body); }
    static std::string withBody(const std::string& status, const std::string& body) {
        return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
               body;
    }
    static std::string redirect(const std::string& url) {
        return withBody("302 Found\r\nLocation: " + url, {});
    }

    [[nodiscard]] std::string url(const std::string& path = {}) const {
        return "http://127.0.0.1:" + std::to_string(m_proxy.port()) + path;
    }
    void setFault(const fixture::Fault& fault) { m_proxy.setFault(fault); }

    /// What paths without an answer of their own get. Single quotes in the body stand for double ones.
    void setAnswer(int status, QByteArray body, const std::string& header = {}) {
        const std::lock_guard lock(m_mutex);
        m_answer = withBody(std::to_string(status) + " " + header, body.replace('\'', '"').toStdString());
    }

    [[nodiscard]] int requests() const {
        const std::lock_guard lock(m_mutex);
        return int(m_requests.size());
    }
    /// Those since the last call, as "METHOD PATH KEY", with an ETag that is known in place of the key.
    QStringList takeRequests() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_requests, {});
    }

private:
    QByteArray answerTo(const QString& request) {
        const auto found = m_answers.find(request.section(u' ', 1, 1).toStdString());
        const std::lock_guard lock(m_mutex);
        m_requests << request.section(u' ', 0, 1) + u' ' +
                          request.section(u"\r\nX-Api-Key: "_qs, 1).section(u'\r', 0, 0) +
                          request.section(u"\r\nIf-None-Match: "_qs, 1).section(u'\r', 0, 0);
        if (found != m_answers.end())
            return QByteArray::fromStdString(found->second);
        return QByteArray::fromStdString(m_answer.empty() ? ok(request.toStdString()) : m_answer);
    }

    const std::map<std::string, std::string> m_answers;
    mutable std::mutex m_mutex;
    std::string m_answer;
    QStringList m_requests;
    fixture::LoopbackServer m_server;
    fixture::FaultProxy m_proxy;
};

} // namespace tessaly::tests
