#include <base/sha256.h>

#include <array>
#include <new>
#include <openssl/crypto.h>
#include <openssl/evp.h>

namespace tessaly::base {

namespace {

// Left to itself the library tidies up in exit(), and frees what a thread that ends at that moment frees too.
// It must be told so before anybody uses it.
[[maybe_unused]] const int withoutCleanup = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);

} // namespace

void Sha256::Free::operator()(evp_md_ctx_st* context) const {
    EVP_MD_CTX_free(context);
}

Sha256::Sha256()
    : m_context(EVP_MD_CTX_new()) {
    if (!m_context || EVP_DigestInit_ex(m_context.get(), EVP_sha256(), nullptr) != 1)
        throw std::bad_alloc();
}

void Sha256::add(std::string_view data) {
    EVP_DigestUpdate(m_context.get(), data.data(), data.size());
}

std::string Sha256::finish() {
    std::array<unsigned char, 32> digest{};
    EVP_DigestFinal_ex(m_context.get(), digest.data(), nullptr);
    std::string text;
    for (const unsigned char byte : digest) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

} // namespace tessaly::base
