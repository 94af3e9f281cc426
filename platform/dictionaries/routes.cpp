#include <dictionaries/routes.h>

#include "catalogue_parser.h"
#include "recent_catalogue.h"
#include "server_request.h"

#include <QJsonObject>
#include <QUtf8StringView>
#include <base/sha256.h>
#include <curl/curl.h>
#include <utilities/cfg_wrapper.h>
#include <utilities/url.h>

namespace tessaly::dictionary {

namespace {

constexpr auto configPath = "/ebrmain/config/dictionary_server.cfg";
constexpr std::size_t longestText = 1024;

/// The fragment that announces size and checksum, as far as the response has them; nothing if one of them
/// makes no sense.
boost::optional<std::string> announcement(const QJsonObject& response) {
    std::string fragment;
    const QJsonValue size = response.value(QLatin1String("size"));
    if (!size.isUndefined()) {
        const qint64 bytes = size.toInteger(-1);
        if (bytes < 0)
            return boost::none;
        fragment = "size=" + std::to_string(bytes);
    }
    const QJsonValue checksum = response.value(QLatin1String("manifest_sha256"));
    if (!checksum.isUndefined()) {
        if (!base::Sha256::isChecksum(checksum.toString().toStdString()))
            return boost::none;
        fragment +=
            (fragment.empty() ? "manifest_sha256=" : "&manifest_sha256=") + checksum.toString().toStdString();
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
    if (baseUrl.empty())
        return Left<ApiError>({ApiError::CurlError{CURLE_URL_MALFORMAT}});
    const std::string url = baseUrl + "/v1/dictionaries";
    auto recent = RecentCatalogue::take(url);
    auto response = utilities::HttpClient().getIfChanged(url, recent ? recent->etag : std::string());
    if (recent && response.status == 304)
        return Right<std::vector<DictionaryInfo>>(std::move(recent->records));
    const std::string etag = response.etag;
    const auto body = checkedBody(std::move(response), 200);
    if (body.isLeft())
        return Left<ApiError>(body.getLeft());
    auto records = parseCatalogue(body.getRight());
    if (records.isRight() && !etag.empty())
        RecentCatalogue::keep({url, etag, records.getRight()});
    return records;
}

Either<ApiError, long long> requestDictionariesDownload(const std::string& ids, const std::string& baseUrl,
                                                        const std::stop_token& stop) {
    const auto body = postForBody(baseUrl, "/v1/packages?ids=" + escaped(ids), 202, 429, stop);
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

Either<ApiError, std::string> getDictionariesDownloadUrl(long long taskId, const std::string& baseUrl,
                                                         const std::stop_token& stop) {
    const auto body =
        getBody(baseUrl, "/v1/packages/" + std::to_string(taskId), 200, 202, shortResponseLimits(), {}, stop);
    if (body.isLeft())
        return Left<ApiError>(body.getLeft());
    const auto json = parseJson(body.getRight(), "package address");
    if (json.isLeft())
        return Left<ApiError>(json.getLeft());
    const QJsonObject response = json.getRight().object();
    std::string url = response.value(QLatin1String("url")).toString().toStdString();
    if (!utilities::isWebUrl(url))
        return Left<ApiError>(parseError("package address", 0, "no http or https address"));
    const auto fragment = announcement(response);
    if (!fragment)
        return Left<ApiError>(parseError("package address", 0, "size or checksum makes no sense"));
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
