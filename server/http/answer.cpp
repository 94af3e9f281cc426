#include "http/answer.h"

#include <QJsonDocument>

namespace tessaly::server {

Answer Answer::json(const QJsonObject& object, int status) {
    Answer answer;
    answer.status = status;
    answer.contentType = "application/json";
    answer.body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return answer;
}

Answer Answer::text(const QString& text) {
    Answer answer;
    answer.contentType = "text/plain; charset=utf-8";
    answer.body = text.toUtf8();
    return answer;
}

Answer Answer::error(int status, const QString& message) {
    return json({{QStringLiteral("error"), message}}, status);
}

} // namespace tessaly::server
