#include <dictionaries/morph_explorer.h>

#include <base/device_root.h>

namespace tessaly::dictionary {

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
