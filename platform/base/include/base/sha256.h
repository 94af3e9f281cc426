#pragma once

#include <memory>
#include <string>
#include <string_view>

struct evp_md_ctx_st;

namespace tessaly::base {

/// The SHA-256 of data that comes in pieces, at the speed of the processor's own instructions. One thread at
/// a time.
class Sha256 {
public:
    /// Throws std::bad_alloc.
    Sha256();
    void add(std::string_view data);

    /// 64 lower-case hexadecimal digits. Ends the sum: nothing may be added afterwards.
    [[nodiscard]] std::string finish();

    /// Whether a text is what finish() returns; capitals count as well.
    [[nodiscard]] static bool isChecksum(std::string_view text) {
        return text.size() == 64 &&
               text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
    }

private:
    struct Free {
        void operator()(evp_md_ctx_st* context) const;
    };
    std::unique_ptr<evp_md_ctx_st, Free> m_context;
};

} // namespace tessaly::base
