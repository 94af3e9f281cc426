#pragma once

#include <memory>
#include <span>
#include <string>

struct evp_md_ctx_st;

namespace tessaly::installer {

/// SHA-256 of bytes that come in pieces.
class Checksum {
public:
    Checksum();
    void add(std::span<const char> bytes);

    /// 64 lower-case hexadecimal digits. Ends the sum: nothing may be added afterwards.
    [[nodiscard]] std::string finish();

private:
    std::unique_ptr<evp_md_ctx_st, void (*)(evp_md_ctx_st*)> m_context;
};

} // namespace tessaly::installer
