#include "morphology/morphology_store.h"

#include "catalogue/naming.h"
#include "support/files.h"
#include "support/zip_writer.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>

namespace tessaly::server {

namespace {

const QLatin1String rules(".aff");
const QLatin1String words(".dic");

/// Lower is better: the language as such, then its main region, then any other.
int rank(const QString& language, const QString& name) {
    if (name == language)
        return 0;
    return name == QLocale(language).name() ? 1 : 2;
}

} // namespace

MorphologyStore::MorphologyStore(const QString& hunspellDirectory, const QString& cacheDirectory,
                                 bool allLanguages) {
    static const QRegularExpression form(QStringLiteral("^([a-z]{2})(?:_[A-Z]{2})?$"));
    makeDirectory(cacheDirectory);
    QMap<QString, QString> best;
    const QFileInfoList files =
        QDir(hunspellDirectory).entryInfoList({QStringLiteral("*.aff")}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        const QString name = file.completeBaseName();
        const QString language = form.match(name).captured(1);
        const bool offered = !language.isEmpty() && (allLanguages || isNamedLanguage(language));
        if (!offered || !QFileInfo(file.path() + u'/' + name + words).isFile())
            continue;
        QString& chosen = best[language];
        if (chosen.isEmpty() || rank(language, name) < rank(language, chosen))
            chosen = name;
    }
    QStringList current;
    for (auto language = best.begin(); language != best.end(); ++language) {
        const QString base = QDir(hunspellDirectory).absoluteFilePath(language.value());
        const QString name = language.key() + u'-' +
                             fingerprint({base, fileStamp({base + rules, base + words})}) +
                             QStringLiteral(".zip");
        current << name;
        m_pairs.insert(language.key(), {base, cacheDirectory + u'/' + name});
    }
    removeOthers(cacheDirectory, current);
}

QString MorphologyStore::archive(const QString& language) const {
    const Pair pair = m_pairs.value(language);
    if (QFileInfo::exists(pair.archive))
        return pair.archive;
    ZipWriter zip(pair.archive);
    zip.addFile(language + rules, pair.base + rules);
    zip.addFile(language + words, pair.base + words);
    zip.commit();
    return pair.archive;
}

} // namespace tessaly::server
