#include "checksum.h"

#include "failure.h"

#include <array>
#include <openssl/evp.h>

namespace tessaly::installer {

namespace {

void require(int success) {
    if (success != 1)
        throw Failure(Code::Unexpected, "Can not compute a SHA-256");
}

} // namespace

Checksum::Checksum()
    : m_context(EVP_MD_CTX_new(), EVP_MD_CTX_free) {
    require(m_context && EVP_DigestInit_ex(m_context.get(), EVP_sha256(), nullptr) == 1);
}

void Checksum::add(std::span<const char> bytes) {
    require(EVP_DigestUpdate(m_context.get(), bytes.data(), bytes.size()));
}

std::string Checksum::finish() {
    std::array<unsigned char, 32> sum{};
    require(EVP_DigestFinal_ex(m_context.get(), sum.data(), nullptr));
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : sum) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

} // namespace tessaly::installer
