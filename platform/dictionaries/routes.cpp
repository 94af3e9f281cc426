#include <dictionaries/routes.h>

#include "catalogue_parser.h"
#include "server_request.h"

#include <QJsonObject>
#include <QRegularExpression>
#include <QUtf8StringView>
#include <utilities/cfg_wrapper.h>
#include <utilities/url.h>

namespace tessaly::dictionary {

namespace {

constexpr auto configPath = "/ebrmain/config/dictionary_server.cfg";
constexpr std::size_t longestText = 1024;

/// The fragment that announces size and checksum, of those that the answer has; nothing if either isn't one.
boost::optional<std::string> announcement(const QJsonObject& answer) {
    static const QRegularExpression sha256(QStringLiteral("\\A[0-9A-Fa-f]{64}\\z"));
    std::string fragment;
    const QJsonValue size = answer.value(QLatin1String("size"));
    if (!size.isUndefined()) {
        const qint64 bytes = size.toInteger(-1);
        if (bytes < 0)
            return boost::none;
        fragment = "size=" + std::to_string(bytes);
    }
    const QJsonValue checksum = answer.value(QLatin1String("sha256"));
    if (!checksum.isUndefined()) {
        if (!sha256.match(checksum.toString()).hasMatch())
            return boost::none;
        fragment += (fragment.empty() ? "sha256=" : "&sha256=") + checksum.toString().toStdString();
    }
    return fragment;
}

} // namespace

std::string default_base_url() {
    std::string url = utilities::CfgWrapper(configPath, 0).readIfExists<std::string>("url").value_or("");
    while (url.ends_with('/'))
        url.pop_back();
    return url;
}

namespace Routes {

Either<ApiError, std::vector<DictionaryInfo>> listDictionaries(const std::string& baseUrl) {
    const auto body = getBody(baseUrl, "/v1/dictionaries", 200, 0, utilities::HttpClient::defaultLimits());
    if (body.isLeft())
        return Left<ApiError>(body.getLeft());
    return parseCatalogue(body.getRight());
}

Either<ApiError, long long> requestDictionariesDownload(const std::string& ids, const std::string& baseUrl) {
    const auto body = postForBody(baseUrl, "/v1/packages?ids=" + escaped(ids), 202, 429);
    if (body.isLeft())
        return Left<ApiError>(body.getLeft());
    const auto json = parseJson(body.getRight(), "package request");
    if (json.isLeft())
        return Left<ApiError>(json.getLeft());
    const long long taskId = json.getRight().object().value(QLatin1String("task_id")).toInteger(0);
    if (taskId <= 0)
        return Left<ApiError>(parseError("package request", 0, "no task number"));
    return Right<long long>(taskId);
}

Either<ApiError, std::string> getDictionariesDownloadUrl(long long taskId, const std::string& baseUrl) {
    const auto body = getBody(baseUrl, "/v1/packages/" + std::to_string(taskId), 200, 202);
    if (body.isLeft())
        return Left<ApiError>(body.getLeft());
    const auto json = parseJson(body.getRight(), "package address");
    if (json.isLeft())
        return Left<ApiError>(json.getLeft());
    const QJsonObject answer = json.getRight().object();
    std::string url = answer.value(QLatin1String("url")).toString().toStdString();
    if (!utilities::isWebUrl(url))
        return Left<ApiError>(parseError("package address", 0, "no http or https address"));
    const auto fragment = announcement(answer);
    if (!fragment)
        return Left<ApiError>(parseError("package address", 0, "size or checksum is none"));
    url.erase(std::min(url.find('#'), url.size()));
    return Right<std::string>(fragment->empty() ? url : url + '#' + *fragment);
}

Either<ApiError, std::string> sendSuccessInstall(const std::string& taskId, const std::string& baseUrl) {
    auto body = postForBody(baseUrl, "/v1/packages/" + escaped(taskId) + "/installed", 200);
    if (body.isRight() &&
        (body.getRight().size() > longestText || !QUtf8StringView(body.getRight()).isValidUtf8()))
        return Left<ApiError>(parseError("installation report", 0, "not a short text"));
    return body;
}

} // namespace Routes

} // namespace tessaly::dictionary
