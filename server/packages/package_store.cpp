#include "packages/package_store.h"

#include "catalogue/catalogue.h"
#include "packages/dictionary_converter.h"
#include "packages/dictionary_store.h"
#include "support/files.h"
#include "support/server_state.h"
#include "support/zip_writer.h"

#include <QDebug>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>
#include <QtConcurrent>

#include <algorithm>

namespace tessaly::server {

namespace {

// Old packages make room: a device asks for its package within minutes or not at all.
constexpr std::size_t keptPackages = 50;

struct Order {
    int number = 0;
    QList<DictionaryRecord> records;
    QString path;
    QString fault;
    int extraMilliseconds = 0;
};

const QByteArray hostileContent("not a dictionary");

QJsonObject listed(const QString& name, qint64 size, const QByteArray& sha256) {
    return {{QStringLiteral("name"), name},
            {QStringLiteral("size"), size},
            {QStringLiteral("sha256"), QString::fromLatin1(sha256)}};
}

QStringList hostileNames() {
    return {QStringLiteral("../../evil.tsdict"), QStringLiteral("/tmp/evil.tsdict"),
            QStringLiteral("Escape.tsdict")};
}

QByteArray makeManifest(const Order& order, const DictionaryStore& store) {
    QJsonArray files;
    for (const DictionaryRecord& record : order.records) {
        const ConvertedDictionary converted(store.path(record));
        const bool isDamaged = order.fault == u"damaged" && files.isEmpty();
        files << listed(record.file, converted.content().size,
                        isDamaged ? QByteArray(64, '0') : converted.content().sha256);
    }
    if (order.fault == u"hostile") {
        for (const QString& name : hostileNames())
            files << listed(name, hostileContent.size(), sha256(hostileContent));
    }
    return QJsonDocument(
               QJsonObject{{QStringLiteral("package_id"), order.number}, {QStringLiteral("files"), files}})
        .toJson();
}

void addHostileEntries(ZipWriter& zip, const Order& order) {
    // A careless reader would write the file of this name through the link.
    zip.addSymlink(hostileNames().constLast(), QStringLiteral("../../escaped.tsdict"));
    for (const QString& name : hostileNames())
        zip.addData(name, hostileContent);
    zip.addData(order.records.constFirst().file, hostileContent);
}

void wait(int milliseconds, const std::stop_token& stop) {
    constexpr int step = 20;
    for (int left = milliseconds; left > 0 && !stop.stop_requested(); left -= step)
        QThread::msleep(static_cast<unsigned long>(std::min(left, step)));
}

/// Leaves nothing behind when it fails or is stopped.
BuiltPackage buildPackage(const Order& order, DictionaryStore& store, const std::stop_token& stop) {
    try {
        wait(order.extraMilliseconds, stop);
        store.require(order.records, stop);
        ZipWriter zip(order.path);
        const QByteArray manifest = makeManifest(order, store);
        zip.addData(QStringLiteral("manifest.json"), manifest);
        for (const DictionaryRecord& record : order.records) {
            if (stop.stop_requested())
                throw Failure(QStringLiteral("stopped"));
            ConvertedDictionary converted(store.path(record));
            zip.addCompressed(record.file, converted.content(), converted.data());
        }
        if (order.fault == u"hostile")
            addHostileEntries(zip, order);
        zip.commit();
        return {{}, zip.size(), zip.sha256(), sha256(manifest)};
    } catch (const Failure& failure) {
        qWarning().noquote() << "package" << order.number << "failed:" << failure.message();
        return {failure.message(), 0, {}, {}};
    }
}

} // namespace

PackageStore::PackageStore(const Catalogue& catalogue, DictionaryStore& dictionaries, ServerState& state,
                           const QString& directory)
    : m_catalogue(catalogue)
    , m_dictionaries(dictionaries)
    , m_state(state)
    , m_directory(directory) {
    m_workers.setMaxThreadCount(2);
    makeDirectory(directory);
    removeOthers(directory, {});
}

PackageStore::~PackageStore() {
    m_stop.request_stop();
    m_workers.clear();
    m_workers.waitForDone();
}

int PackageStore::request(QList<int> ids, const QString& fault, int extraMilliseconds) {
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    Order order;
    QString key = fault;
    for (const int id : ids) {
        key += u',' + QString::number(id);
        order.records << *m_catalogue.find(id);
    }
    for (const auto& [number, package] : m_packages) {
        const bool hasFailed = package.building.isFinished() && !package.building.result().error.isEmpty();
        if (package.key == key && !hasFailed)
            return number;
    }

    dropOldest();
    order.number = m_state.takePackageNumber();
    order.path = QStringLiteral("%1/%2.tsi").arg(m_directory).arg(order.number);
    order.fault = fault;
    order.extraMilliseconds = extraMilliseconds;
    const auto build = [order, &store = m_dictionaries, stop = m_stop.get_token()] {
        return buildPackage(order, store, stop);
    };
    m_packages.emplace(order.number, Package{key, order.path, QtConcurrent::run(&m_workers, build)});
    return order.number;
}

const Package* PackageStore::find(int number) const {
    const auto found = m_packages.find(number);
    return found == m_packages.end() ? nullptr : &found->second;
}

void PackageStore::dropOldest() {
    if (m_packages.size() < keptPackages)
        return;
    const auto oldest = std::find_if(m_packages.begin(), m_packages.end(),
                                     [](const auto& entry) { return entry.second.building.isFinished(); });
    if (oldest == m_packages.end())
        return;
    QFile::remove(oldest->second.path); // a download that is under way goes on with the open file
    m_packages.erase(oldest);
}

} // namespace tessaly::server
