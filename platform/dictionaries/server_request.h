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

/// Bounds for responses of a few lines.
utilities::HttpLimits shortResponseLimits();

/// The body of a response whose status is `expected`. The status `wait` (0 for none) is ApiError::Wait.
Either<ApiError, std::string> checkedBody(utilities::HttpResponse response, int expected, int wait = 0);

/// One request each, and the body of its response if the status is `expected`. The status `wait` (0 for none)
/// is ApiError::Wait, any other one ApiError::HttpError. An empty base URL is a malformed one.
Either<ApiError, std::string> getBody(const std::string& baseUrl, const std::string& path, int expected,
                                      int wait = 0,
                                      const utilities::HttpLimits& limits = shortResponseLimits(),
                                      const utilities::HttpClient::Headers& headers = {},
                                      const std::stop_token& stop = {});
Either<ApiError, std::string> postForBody(const std::string& baseUrl, const std::string& path, int expected,
                                          int wait = 0, const std::stop_token& stop = {});

Either<ApiError, QJsonDocument> parseJson(const std::string& body, const std::string& where);

/// The log of what is wrong with a list's entries: the first ten are named, the rest are counted, so that a
/// bad list can't fill the log.
class Complaints {
public:
    /// `list` begins each line, and outlives the object.
    explicit Complaints(const char* list)
        : m_list(list) {}
    ~Complaints();
    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;

    void add(const std::string& what);

private:
    const char* m_list;
    std::size_t m_count = 0;
};

/// Part of a URL, with everything that could change the URL's meaning escaped. Commas stay.
std::string escaped(const std::string& text);

} // namespace tessaly::dictionary
