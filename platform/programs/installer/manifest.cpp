#include "manifest.h"

#include "failure.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <base/sha256.h>
#include <numeric>
#include <vellum/dictionary_files.h>

namespace tessaly::installer {

namespace {

constexpr qint64 maxFileBytes = 64LL * 1024 * 1024 * 1024;

[[noreturn]] void refuse(const QString& reason) {
    throw Failure(Code::BadManifest, "The manifest is not valid: " + reason.toStdString());
}

Manifest::File parseFile(const QJsonObject& json) {
    const QString name = json[u"name"].toString();
    if (!vellum::isDictionaryFileName(name.toStdString()))
        refuse(QStringLiteral("\"%1\" is not the name of a dictionary file").arg(name));
    const qint64 size = json[u"size"].toInteger(-1);
    if (size < 0 || size > maxFileBytes)
        refuse(QStringLiteral("no usable size for \"%1\"").arg(name));
    const QString sha256 = json[u"sha256"].toString().toLower();
    if (!base::Sha256::isChecksum(sha256.toStdString()))
        refuse(QStringLiteral("no SHA-256 for \"%1\"").arg(name));
    return {name.toStdString(), size, sha256.toStdString()};
}

/// Equal for names that some file system takes for one.
QString foldedName(const Manifest::File& file) {
    return QString::fromStdString(file.name).normalized(QString::NormalizationForm_KC).toCaseFolded();
}

} // namespace

std::int64_t Manifest::totalSize() const {
    return std::accumulate(files.begin(), files.end(), std::int64_t(0),
                           [](std::int64_t sum, const File& file) { return sum + file.size; });
}

Manifest parseManifest(const std::string& json) {
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(QByteArray::fromStdString(json), &error).object();
    if (error.error != QJsonParseError::NoError)
        refuse(QStringLiteral("%1 at %2").arg(error.errorString()).arg(error.offset));
    if (object[u"package_id"].toInteger(-1) < 0)
        refuse(QStringLiteral("no package_id"));
    const QJsonArray files = object[u"files"].toArray();
    if (files.isEmpty() || std::size_t(files.size()) > maxPackageFiles)
        refuse(QStringLiteral("%1 files").arg(files.size()));

    Manifest manifest;
    QSet<QString> names;
    for (const QJsonValue file : files) {
        manifest.files.push_back(parseFile(file.toObject()));
        const QString name = foldedName(manifest.files.back());
        if (names.contains(name))
            refuse(QStringLiteral("\"%1\" is listed twice").arg(name));
        names.insert(name);
    }
    return manifest;
}

} // namespace tessaly::installer
