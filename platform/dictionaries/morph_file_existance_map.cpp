#include <dictionaries/morph_file_existance_map.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace tessaly::dictionary {

MorphFileExistanceMap::MorphFileExistanceMap(const QString& directory, QObject* parent)
    : MorphMap(parent)
    , m_directory(directory) {
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        watchFolder();
        refresh();
    });
    watchFolder();
}

bool MorphFileExistanceMap::isInstalled(const QString& code) const {
    const QStringList codes = candidates(code);
    return std::any_of(codes.begin(), codes.end(), [this](const QString& name) {
        const QString path = m_directory + u'/' + name;
        return QFileInfo(path + QStringLiteral(".aff")).isFile() &&
               QFileInfo(path + QStringLiteral(".dic")).isFile();
    });
}

void MorphFileExistanceMap::watchFolder() {
    // While the folder is missing, the nearest one above it tells of its coming.
    QString folder = m_directory;
    while (!QFileInfo(folder).isDir() && folder != QFileInfo(folder).path())
        folder = QFileInfo(folder).path();
    if (m_watcher.directories() == QStringList(folder))
        return;
    if (!m_watcher.directories().isEmpty())
        m_watcher.removePaths(m_watcher.directories());
    m_watcher.addPath(folder);
}

} // namespace tessaly::dictionary
