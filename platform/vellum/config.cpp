#include "config_file.h"

#include <base/device_root.h>
#include <vellum/vellum.h>

struct vl_config {
    std::string hostPath;
    bool writable = false;
    vellum::ConfigFile file;
};

vl_config* OpenConfig(const char* path, int mode) {
    const std::string hostPath = tessaly::base::hostPath(path);
    return new vl_config{hostPath, mode == 1, vellum::ConfigFile::load(hostPath)};
}

int ReadInt(const vl_config* config, const char* key, int fallback) {
    return config->file.intValue(key, fallback);
}

std::string ReadString(const vl_config* config, const char* key, const char* fallback) {
    return config->file.value(key).value_or(fallback);
}

bool HasKey(const vl_config* config, const char* key) {
    return config->file.value(key).has_value();
}

void WriteInt(vl_config* config, const char* key, int value) {
    config->file.setValue(key, std::to_string(value));
}

void WriteString(vl_config* config, const char* key, const char* value) {
    config->file.setValue(key, value);
}

bool SaveConfig(vl_config* config) {
    return config->writable && config->file.save(config->hostPath);
}

void CloseConfig(vl_config* config) {
    delete config;
}
