#pragma once

#include "http/answer.h"

#include <memory>

class QHttpServerRequest;
class QHttpServerResponder;

namespace tessaly::server {

/// A request that waits for its answer, now or later; copies stand for the same one. For the server's thread.
/// A client that goes away meanwhile costs nothing, an exchange that is never answered keeps the client
/// waiting.
class Exchange {
public:
    /// Answers will wait for another `delayMs` before they are sent.
    Exchange(const QHttpServerRequest& request, QHttpServerResponder&& responder, int delayMs);

    /// To be called once.
    void send(const Answer& answer) const;

private:
    struct Pending;

    static void write(Pending& pending, Answer answer);

    std::shared_ptr<Pending> m_pending;
};

} // namespace tessaly::server
