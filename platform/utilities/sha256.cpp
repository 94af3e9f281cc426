#include "sha256.h"

#include <new>

namespace tessaly::utilities {

Sha256::Sha256()
    : m_context(EVP_MD_CTX_new()) {
    if (!m_context || EVP_DigestInit_ex(m_context.get(), EVP_sha256(), nullptr) != 1)
        throw std::bad_alloc();
}

void Sha256::add(std::string_view data) {
    EVP_DigestUpdate(m_context.get(), data.data(), data.size());
}

std::string Sha256::result() {
    unsigned char digest[EVP_MAX_MD_SIZE] = {};
    unsigned int length = 0;
    EVP_DigestFinal_ex(m_context.get(), digest, &length);
    std::string text;
    for (unsigned int i = 0; i < length; ++i) {
        text += "0123456789abcdef"[digest[i] >> 4];
        text += "0123456789abcdef"[digest[i] & 15];
    }
    return text;
}

} // namespace tessaly::utilities
