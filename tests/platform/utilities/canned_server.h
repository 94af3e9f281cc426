#pragma once

#include <simulator/fixture/fault_proxy.h>

#include <atomic>
#include <map>
#include <string>
#include <utility>

namespace tessaly::tests {

/// Answers each path with a fixed text, head included, and "/echo" with the request; a FaultProxy stands in
/// front.
class CannedServer {
public:
    explicit CannedServer(std::map<std::string, std::string> answers)
        : m_answers(std::move(answers))
        , m_server([this](fixture::Connection& client) { answer(client); })
        , m_proxy(m_server.port()) {}

    static std::string ok(const std::string& body) {
        return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    }
    [[nodiscard]] std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(m_proxy.port()) + path;
    }
    void setFault(const fixture::Fault& fault) { m_proxy.setFault(fault); }
    [[nodiscard]] int requests() const { return m_requests; }

private:
    void answer(fixture::Connection& client) {
        const std::string request = client.receive();
        if (request.empty()) // a connection that nothing is asked on
            return;
        ++m_requests;
        const auto pathStart = request.find(' ') + 1;
        const auto found =
            m_answers.find(request.substr(pathStart, request.find(' ', pathStart) - pathStart));
        client.send(found == m_answers.end() ? ok(request) : found->second);
    }

    const std::map<std::string, std::string> m_answers;
    std::atomic<int> m_requests{0};
    fixture::LoopbackServer m_server;
    fixture::FaultProxy m_proxy;
};

} // namespace tessaly::tests
