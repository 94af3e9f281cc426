#pragma once

#include <memory>
#include <openssl/evp.h>
#include <string>
#include <string_view>

namespace tessaly::utilities {

/// The SHA-256 of what was added. Throws std::bad_alloc.
class Sha256 {
public:
    Sha256();
    void add(std::string_view data);
    /// As 64 lower-case digits. Ends the object's use.
    std::string result();

private:
    struct Free {
        void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
    };
    std::unique_ptr<EVP_MD_CTX, Free> m_context;
};

} // namespace tessaly::utilities
