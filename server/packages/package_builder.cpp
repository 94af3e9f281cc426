#include "packages/package_builder.h"

#include "packages/dictionary_converter.h"
#include "support/failure.h"
#include "support/part_file.h"
#include "support/zip_writer.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>

#include <algorithm>

namespace tessaly::server {

namespace {

const QByteArray hostileContent("not a dictionary");

QByteArray sha256Of(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        throw Failure(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
    return hash.result().toHex();
}

QJsonObject listed(const QString& name, qint64 size, const QByteArray& sha256) {
    return {{QStringLiteral("name"), name},
            {QStringLiteral("size"), size},
            {QStringLiteral("sha256"), QString::fromLatin1(sha256)}};
}

QStringList hostileNames() {
    return {QStringLiteral("../../evil.tsdict"), QStringLiteral("/tmp/evil.tsdict"),
            QStringLiteral("Escape.tsdict")};
}

QByteArray makeManifest(const PackageOrder& order, const QStringList& files) {
    QJsonArray array;
    for (qsizetype i = 0; i < files.size(); ++i)
        array << listed(order.records.at(i).file, QFileInfo(files.at(i)).size(), sha256Of(files.at(i)));
    if (order.fault == PackageFault::Hostile) {
        const QByteArray hash = QCryptographicHash::hash(hostileContent, QCryptographicHash::Sha256).toHex();
        for (const QString& name : hostileNames())
            array << listed(name, hostileContent.size(), hash);
    }
    return QJsonDocument(
               QJsonObject{{QStringLiteral("package_id"), order.number}, {QStringLiteral("files"), array}})
        .toJson();
}

void addHostileEntries(ZipWriter& zip, const PackageOrder& order) {
    // A careless reader would write the file of this name through the link.
    zip.addSymlink(hostileNames().constLast(), QStringLiteral("../../escaped.tsdict"));
    for (const QString& name : hostileNames())
        zip.addData(name, hostileContent);
    zip.addData(order.records.constFirst().file, hostileContent);
}

void writePackage(const QString& path, const PackageOrder& order, const QStringList& files,
                  const std::stop_token& stop) {
    ZipWriter zip(path);
    zip.addData(QStringLiteral("manifest.json"), makeManifest(order, files));
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (stop.stop_requested())
            throw Failure(QStringLiteral("stopped"));
        std::optional<qint64> flipped;
        if (order.fault == PackageFault::Damaged && i == 0)
            flipped = QFileInfo(files.at(i)).size() / 2;
        zip.addFile(order.records.at(i).file, files.at(i), flipped);
    }
    if (order.fault == PackageFault::Hostile)
        addHostileEntries(zip, order);
    zip.close();
}

void wait(int milliseconds, const std::stop_token& stop) {
    constexpr int step = 20;
    for (int left = milliseconds; left > 0 && !stop.stop_requested(); left -= step)
        QThread::msleep(static_cast<unsigned long>(std::min(left, step)));
}

} // namespace

BuiltPackage buildPackage(const PackageOrder& order, const std::stop_token& stop) {
    BuiltPackage built;
    try {
        wait(order.extraMilliseconds, stop);
        QStringList files;
        for (const DictionaryRecord& record : order.records)
            files << convertDictionary(record, order.convertedFolder, stop);
        PartFile part(order.path);
        writePackage(part.path(), order, files, stop);
        built.size = QFileInfo(part.path()).size();
        built.sha256 = sha256Of(part.path());
        part.putInPlace();
    } catch (const Failure& failure) {
        built.error = failure.message();
    }
    return built;
}

} // namespace tessaly::server
