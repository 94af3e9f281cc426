#include "server_request.h"

#include <QByteArray>
#include <algorithm>
#include <common_utilities/log_line.h>
#include <curl/curl.h>
#include <limits>
#include <utility>

namespace tessaly::dictionary {

namespace {

constexpr std::size_t mostNamed = 10;

} // namespace

ApiError parseError(const std::string& where, std::int64_t position, const std::string& what) {
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    return {ApiError::ParseError{Error{{{where, std::int32_t(std::min(position, largest)), what}}}}};
}

utilities::HttpLimits shortResponseLimits() {
    utilities::HttpLimits limits = utilities::HttpClient::defaultLimits();
    limits.responseBytes = std::min(limits.responseBytes, 64LL << 10);
    return limits;
}

Either<ApiError, std::string> checkedBody(utilities::HttpResponse response, int expected, int wait) {
    if (response.isTransportFailure())
        return Left<ApiError>({ApiError::CurlError{response.curlCode}});
    if (wait != 0 && response.status == wait)
        return Left<ApiError>({ApiError::Wait()});
    if (response.status != expected)
        return Left<ApiError>({ApiError::HttpError{response.status}});
    return Right<std::string>(std::move(response.body));
}

Either<ApiError, std::string> getBody(const std::string& baseUrl, const std::string& path, int expected,
                                      int wait, const utilities::HttpLimits& limits,
                                      const utilities::HttpClient::Headers& headers,
                                      const std::stop_token& stop) {
    if (baseUrl.empty())
        return Left<ApiError>({ApiError::CurlError{CURLE_URL_MALFORMAT}});
    return checkedBody(utilities::HttpClient(limits).get(baseUrl + path, headers, stop), expected, wait);
}

Either<ApiError, std::string> postForBody(const std::string& baseUrl, const std::string& path, int expected,
                                          int wait, const std::stop_token& stop) {
    if (baseUrl.empty())
        return Left<ApiError>({ApiError::CurlError{CURLE_URL_MALFORMAT}});
    return checkedBody(utilities::HttpClient(shortResponseLimits()).post(baseUrl + path, {}, {}, stop),
                       expected, wait);
}

Either<ApiError, QJsonDocument> parseJson(const std::string& body, const std::string& where) {
    QJsonParseError error;
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(body.data(), qsizetype(body.size())), &error);
    if (error.error != QJsonParseError::NoError)
        return Left<ApiError>(parseError(where, error.offset, error.errorString().toStdString()));
    return Right<QJsonDocument>(document);
}

Complaints::~Complaints() {
    if (m_count > mostNamed)
        LogLine(log::cb::warn) << m_list << ": " << m_count - mostNamed << " more like these";
}

void Complaints::add(const std::string& what) {
    if (++m_count <= mostNamed)
        LogLine(log::cb::warn) << m_list << ": " << what;
}

std::string escaped(const std::string& text) {
    return QByteArray::fromStdString(text).toPercentEncoding(",").toStdString();
}

} // namespace tessaly::dictionary
