#pragma once

#include <dictionaries/export.h>
#include <utilities/error.h>

#include <boost/variant.hpp>
#include <cstdint>
#include <string>

namespace tessaly::dictionary {

/// What went wrong with a request to the dictionary server. The order of the alternatives is their index.
struct ApiError {
    struct ParseError { ///< the answer's body isn't what was asked for
        Error error;
    };
    struct Wait {}; ///< ask again later
    struct HttpError {
        std::int32_t status = 0;
    };
    struct RefreshFailed {};
    struct CurlError { ///< no answer, or not a whole one
        std::int32_t code = 0;
    };
    struct WrongEmailFormat {};
    struct UndefinedError {};

    boost::variant<ParseError, Wait, HttpError, RefreshFailed, CurlError, WrongEmailFormat, UndefinedError>
        value;

    template<class T>
    [[nodiscard]] bool is() const {
        return boost::get<T>(&value) != nullptr;
    }
};

TESSALY_DICTIONARIES_API std::string to_string(const ApiError& error);

} // namespace tessaly::dictionary
