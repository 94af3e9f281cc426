#include <dictionaries/morph_secret_provider.h>

#include <utilities/cfg_wrapper.h>

namespace tessaly::dictionary {

QString MorphSecretProvider::apiKey() const {
    const utilities::CfgWrapper config("/ebrmain/config/dictionary_server.cfg", 0);
    return QString::fromStdString(config.readIfExists<std::string>("morphology_api_key").value_or(""));
}

} // namespace tessaly::dictionary
