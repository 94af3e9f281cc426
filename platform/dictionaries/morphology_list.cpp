#include "morphology_list.h"

#include "server_request.h"

#include <QJsonObject>
#include <base/log.h>
#include <ostream>
#include <utilities/locale_parser.h>
#include <utilities/url.h>

namespace tessaly::dictionary {

namespace {

utilities::HttpLimits limits() {
    utilities::HttpLimits limits = utilities::HttpClient::defaultLimits();
    limits.connectTimeoutMs = std::min(limits.connectTimeoutMs, 3000L);
    limits.stallSeconds = std::min(limits.stallSeconds, 3L);
    limits.totalSeconds = 10;
    limits.responseBytes = std::min(limits.responseBytes, 1LL << 20);
    return limits;
}

bool isEntry(const QString& code, const QString& url) {
    const auto locale = utilities::locale_parser::tagged_parse(code.toStdString(), '_');
    return locale.isRight() && !locale.getRight().language.empty() && utilities::isWebUrl(url.toStdString());
}

} // namespace

Either<ApiError, QHash<QString, QString>>
listMorphology(const std::string& baseUrl, const std::string& apiKey, const std::stop_token& stop) {
    const auto body = getBody(baseUrl, "/v1/morphology", 200, 0, limits(), {{"X-Api-Key", apiKey}}, stop);
    if (body.isLeft())
        return Left<ApiError>(body.getLeft());
    const auto json = parseJson(body.getRight(), "morphology list");
    if (json.isLeft())
        return Left<ApiError>(json.getLeft());
    if (!json.getRight().isObject())
        return Left<ApiError>(parseError("morphology list", 0, "not an object"));

    QHash<QString, QString> urls;
    const QJsonObject list = json.getRight().object();
    for (auto entry = list.begin(); entry != list.end(); ++entry) {
        if (isEntry(entry.key(), entry.value().toString())) {
            urls.insert(entry.key(), entry.value().toString());
            continue;
        }
        log::cb::warn(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
            return out << "morphology list: \"" << entry.key().toStdString() << "\" is left out";
        });
    }
    return Right<QHash<QString, QString>>(urls);
}

} // namespace tessaly::dictionary
