#pragma once

// The system library of the device. Paths are device paths. All functions may be called from any thread.

#include <base/log.h>
#include <vellum/export.h>

#include <stop_token>
#include <string>

/// State of the network connection; only the value 2 means connected.
TESSALY_VELLUM_API int GetNetState();

/// Connects with the named connection (null: the default one) by running the network agent, and waits for it.
/// 0 is success; a failure has been said by the agent. Returns at once when connected already, or when the
/// process is about to quit.
TESSALY_VELLUM_API int NetConnect2(const char* name, int flags);

/// Starts a program as a process of its own and returns its task identifier, or -1. `argv` has `argc` entries
/// without the program name; a null entry ends it early. The flags choose priority and screen on a device;
/// here they do nothing.
TESSALY_VELLUM_API int OpenTask(const char* path, int argc, const char* const* argv, int flags);

/// The task identifier of a running program with this path, whoever started it, or -1.
TESSALY_VELLUM_API int FindTaskByAppName(const char* path);

/// Ends a task of this device and returns 0, or -1 if there is none with this identifier.
TESSALY_VELLUM_API int CloseTask(int task, int reserved, int force);

/// Calls `function(context)` once after `milliseconds` on the thread of the application object. Arming a name
/// again replaces its timer. Needs a QCoreApplication.
TESSALY_VELLUM_API void SetHardTimerEx(const char* name, void (*function)(void*), void* context,
                                       int milliseconds);

/// An open key-value file; owned by whoever opened it, until CloseConfig. One thread at a time.
struct vl_config;

/// Mode 0 reads, mode 1 reads and writes. A file that is absent or can't be read is empty. Never null.
TESSALY_VELLUM_API vl_config* OpenConfig(const char* path, int mode);
TESSALY_VELLUM_API int ReadInt(const vl_config* config, const char* key, int fallback);
TESSALY_VELLUM_API std::string ReadString(const vl_config* config, const char* key, const char* fallback);
TESSALY_VELLUM_API bool HasKey(const vl_config* config, const char* key);
TESSALY_VELLUM_API void WriteInt(vl_config* config, const char* key, int value);
TESSALY_VELLUM_API void WriteString(vl_config* config, const char* key, const char* value);
/// Replaces the file atomically. False, with the old file in place, if that fails or the mode is 0.
TESSALY_VELLUM_API bool SaveConfig(vl_config* config);
TESSALY_VELLUM_API void CloseConfig(vl_config* config);

/// Makes the reader use the installed dictionary of this name, or of this file name. Non-zero on success: it
/// is installed and its file opens.
TESSALY_VELLUM_API int OpenDictionary(const char* name);

/// A request that the device stay awake. The record is its owner's, and stays where it is from start to stop.
struct vl_sleep_preventor {
    const char* name;
    unsigned char state;
};
TESSALY_VELLUM_API void vl_sleep_preventor_start(vl_sleep_preventor* preventor);
TESSALY_VELLUM_API void vl_sleep_preventor_stop(vl_sleep_preventor* preventor);

TESSALY_VELLUM_API bool vl_debug_mode();

/// Waits. Ends early, and from then on at once, when a stop is requested or the process is about to quit.
TESSALY_VELLUM_API void vl_sleep(int milliseconds, const std::stop_token& stop = {});
