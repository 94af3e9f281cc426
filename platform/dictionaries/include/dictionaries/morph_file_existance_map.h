#pragma once

#include <dictionaries/export.h>
#include <dictionaries/morph_map.h>

#include <QFileSystemWatcher>

namespace tessaly::dictionary {

/// For which languages the folder holds morphology data: both CODE.aff and CODE.dic. Values are bools.
/// Follows the folder, also when it comes and goes as a whole. GUI thread.
class TESSALY_DICTIONARIES_API MorphFileExistanceMap : public MorphMap {
    Q_OBJECT

public:
    /// `directory` is a host path.
    MorphFileExistanceMap(const QString& directory, QObject* parent);

    /// Looks at the files now. Data of a language without a region serve each of its regions.
    [[nodiscard]] bool isInstalled(const QString& code) const;

protected:
    [[nodiscard]] QVariant find(const QString& code) const override { return isInstalled(code); }

private:
    void watchFolder();

    QString m_directory;
    QFileSystemWatcher m_watcher;
};

} // namespace tessaly::dictionary
