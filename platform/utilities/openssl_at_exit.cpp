#include <openssl/crypto.h>

namespace {

// Left to itself the library tidies up in exit(), and frees what a thread that ends at that moment frees too.
// It must be told so before anybody uses it.
[[maybe_unused]] const int withoutCleanup = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);

} // namespace
