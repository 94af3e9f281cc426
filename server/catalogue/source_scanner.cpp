#include "catalogue/source_scanner.h"

#include "dictd/dictd_dictionary.h"
#include "support/failure.h"
#include "support/file_stamp.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QtConcurrent>

namespace tessaly::server {

namespace {

// To be raised whenever the meaning of what is kept changes.
constexpr int cacheFormat = 1;

SourceInfo readSource(SourceInfo source) {
    try {
        const DictdDictionary dictionary(source.indexPath);
        source.info =
            parseDictdInfo(dictionary.about(QLatin1String("short")), dictionary.about(QLatin1String("info")));
        // A package holds the texts about as well compressed as here and two indexes in place of one.
        // Packages of real dictionaries have been from 1.2 to 1.6 times the size of the source files.
        const QString textPath = DictdDictionary::textPath(source.indexPath);
        source.packageSize = (QFileInfo(source.indexPath).size() + QFileInfo(textPath).size()) * 3 / 2;
    } catch (const Failure& failure) {
        source.error = failure.message();
    }
    return source;
}

QHash<QString, SourceInfo> readCache(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject cache = QJsonDocument::fromJson(file.readAll()).object();
    if (cache.value(QLatin1String("format")).toInt() != cacheFormat)
        return {};
    QHash<QString, SourceInfo> known;
    const QJsonArray sources = cache.value(QLatin1String("sources")).toArray();
    for (const QJsonValueConstRef value : sources) {
        const SourceInfo source = SourceInfo::fromJson(value.toObject());
        known.insert(source.indexPath, source);
    }
    return known;
}

void writeCache(const QString& path, const QList<SourceInfo>& sources) {
    QJsonArray array;
    for (const SourceInfo& source : sources)
        array << source.toJson();
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QJsonDocument(QJsonObject{{QStringLiteral("format"), cacheFormat},
                                             {QStringLiteral("sources"), array}})
                       .toJson(QJsonDocument::Compact));
        file.commit();
    }
}

} // namespace

QList<SourceInfo> scanSources(const QString& folder, const QString& cachePath) {
    const QHash<QString, SourceInfo> known = readCache(cachePath);
    QList<SourceInfo> sources;
    QList<SourceInfo> unread;
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("freedict-*.index")}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        SourceInfo source;
        source.indexPath = file.absoluteFilePath();
        source.stamp = fileStamp({source.indexPath, DictdDictionary::textPath(source.indexPath)});
        const SourceInfo kept = known.value(source.indexPath);
        if (kept.stamp == source.stamp)
            sources << kept;
        else
            unread << source;
    }
    if (unread.isEmpty())
        return sources;

    sources << QtConcurrent::blockingMapped(unread, readSource);
    std::sort(sources.begin(), sources.end(),
              [](const SourceInfo& a, const SourceInfo& b) { return a.indexPath < b.indexPath; });
    writeCache(cachePath, sources);
    return sources;
}

} // namespace tessaly::server
