#include <dictionaries/api_error.h>

#include <sstream>
#include <utilities/http_client.h>

namespace tessaly::dictionary {

namespace {

struct Text : boost::static_visitor<std::string> {
    std::string operator()(const ApiError::ParseError& parseError) const {
        std::ostringstream text;
        text << "unexpected answer: " << parseError.error;
        return text.str();
    }
    std::string operator()(const ApiError::Wait&) const { return "not ready yet, ask again later"; }
    std::string operator()(const ApiError::HttpError& error) const {
        return "HTTP status " + std::to_string(error.status);
    }
    std::string operator()(const ApiError::RefreshFailed&) const { return "refresh failed"; }
    std::string operator()(const ApiError::CurlError& error) const {
        return "transfer failed: " + utilities::HttpClient::errorText(error.code) + " (" +
               std::to_string(error.code) + ')';
    }
    std::string operator()(const ApiError::WrongEmailFormat&) const { return "wrong e-mail format"; }
    std::string operator()(const ApiError::UndefinedError&) const { return "undefined error"; }
};

} // namespace

std::string to_string(const ApiError& error) {
    return boost::apply_visitor(Text(), error.value);
}

} // namespace tessaly::dictionary
