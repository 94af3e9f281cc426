#pragma once

#include <vellum/export.h>

#include <cstdint>
#include <string>

/// What a real device has and a PC has not, kept in one small file under the device root, so that all
/// processes of the simulated device agree. Each call reads the file, or replaces it without losing what
/// another process changes at the same time; what can't be written is logged. Any thread.
namespace vellum::state {

enum class Input { Touch, Keys };
enum class NetworkNotice { None, Connecting, NoNetwork };

TESSALY_VELLUM_API bool isNetworkReachable();
TESSALY_VELLUM_API void setNetworkReachable(bool reachable);

/// 2 is connected, 0 is not. A network that is out of reach also ends the connection.
TESSALY_VELLUM_API int netState();
TESSALY_VELLUM_API void setNetState(int state);

TESSALY_VELLUM_API int connectDelayMs();
TESSALY_VELLUM_API void setConnectDelayMs(int milliseconds);

/// What the network agent has to say to the reader. Whoever shows it takes it back once it was read.
TESSALY_VELLUM_API NetworkNotice networkNotice();
TESSALY_VELLUM_API void setNetworkNotice(NetworkNotice notice);

/// Free bytes on the secure storage; negative (the default): what the host's disk has.
TESSALY_VELLUM_API std::int64_t secureFreeBytes();
TESSALY_VELLUM_API void setSecureFreeBytes(std::int64_t bytes);

TESSALY_VELLUM_API bool isDebugMode();
TESSALY_VELLUM_API void setDebugMode(bool on);

TESSALY_VELLUM_API Input input();
TESSALY_VELLUM_API void setInput(Input input);

/// Screen size in pixels as "WIDTHxHEIGHT", and the interface language as a two-letter code.
TESSALY_VELLUM_API std::string screen();
TESSALY_VELLUM_API void setScreen(const std::string& size);
TESSALY_VELLUM_API std::string language();
TESSALY_VELLUM_API void setLanguage(const std::string& code);

} // namespace vellum::state
