#pragma once

#include <common_utilities/either.h>
#include <dictionaries/api_error.h>
#include <utilities/http_client.h>

#include <QJsonDocument>
#include <cstdint>
#include <stop_token>
#include <string>

/// What all requests to the dictionary server have in common.
namespace tessaly::dictionary {

ApiError parseError(const std::string& where, std::int64_t position, const std::string& what);

/// Bounds for answers that are a few lines.
utilities::HttpLimits shortAnswerLimits();

/// The bodies of one request each: of the answer whose status is `expected`. The status `wait` (0 for none)
/// is ApiError::Wait, any other one ApiError::HttpError. Without a base address the request fails as
/// malformed.
Either<ApiError, std::string> getBody(const std::string& baseUrl, const std::string& path, int expected,
                                      int wait = 0, const utilities::HttpLimits& limits = shortAnswerLimits(),
                                      const utilities::HttpClient::Headers& headers = {},
                                      const std::stop_token& stop = {});
Either<ApiError, std::string> postForBody(const std::string& baseUrl, const std::string& path, int expected,
                                          int wait = 0);

Either<ApiError, QJsonDocument> parseJson(const std::string& body, const std::string& where);

/// Part of an address, with everything that could change the address's meaning escaped. Commas stay.
std::string escaped(const std::string& text);

} // namespace tessaly::dictionary
