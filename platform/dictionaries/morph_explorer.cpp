#include <dictionaries/morph_explorer.h>

#include <base/device_root.h>
#include <utilities/cfg_wrapper.h>

std::string tessaly::morphology::HunspellSearcher::defaultDir() {
    return "/mnt/ext1/system/hunspell";
}

namespace tessaly::dictionary {

QString MorphSecretProvider::apiKey() const {
    const utilities::CfgWrapper config("/ebrmain/config/dictionary_server.cfg", 0);
    return QString::fromStdString(config.readIfExists<std::string>("morphology_api_key").value_or(""));
}

MorphExplorer::MorphExplorer(const QString& directory, QObject* parent)
    : QObject(parent)
    , m_apiKeyProvider(new MorphSecretProvider(this))
    , m_urlMap(new MorphUrlMap(m_apiKeyProvider, this))
    , m_existanceMap(
          new MorphFileExistanceMap(QString::fromStdString(base::hostPath(directory.toStdString())), this)) {}

bool MorphExplorer::exists(const QString& iso) const {
    return m_existanceMap->isInstalled(iso);
}

} // namespace tessaly::dictionary
