#include "packages/package_store.h"

#include "catalogue/catalogue.h"
#include "packages/dictionary_converter.h"
#include "support/failure.h"
#include "support/file_stamp.h"
#include "support/server_state.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QtConcurrent>

#include <algorithm>

namespace tessaly::server {

namespace {

// Old packages make room: a device asks for its package within minutes or not at all.
constexpr std::size_t keptPackages = 50;

} // namespace

PackageStore::PackageStore(const Catalogue& catalogue, ServerState& state, const QString& folder)
    : m_catalogue(catalogue)
    , m_state(state)
    , m_convertedFolder(folder + QStringLiteral("/converted"))
    , m_packageFolder(folder + QStringLiteral("/packages")) {
    m_workers.setMaxThreadCount(2);
    for (const QString& path : {m_convertedFolder, m_packageFolder}) {
        if (!QDir().mkpath(path))
            throw Failure(QStringLiteral("cannot create the folder %1").arg(path));
    }
    QStringList current;
    for (const DictionaryRecord& record : catalogue.records())
        current << convertedName(record);
    removeOthers(m_convertedFolder, current);
    removeOthers(m_packageFolder, {});
}

PackageStore::~PackageStore() {
    m_stop.request_stop();
    m_workers.clear();
    m_workers.waitForDone();
}

int PackageStore::request(QList<int> ids, PackageFault fault, int extraMilliseconds) {
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    PackageOrder order;
    QString key = QString::number(static_cast<int>(fault));
    for (const int id : ids) {
        key += u',' + QString::number(id);
        order.records << *m_catalogue.find(id);
    }
    for (const auto& [number, package] : m_packages) {
        if (package.key == key && package.stage != Package::Stage::Failed)
            return number;
    }

    dropOldest();
    order.number = m_state.takePackageNumber();
    order.convertedFolder = m_convertedFolder;
    order.path = QStringLiteral("%1/%2.tsi").arg(m_packageFolder).arg(order.number);
    order.fault = fault;
    order.extraMilliseconds = extraMilliseconds;
    m_packages.emplace(order.number, Package{key, order.path, Package::Stage::Building, {}});
    QtConcurrent::run(&m_workers, [order, stop = m_stop.get_token()] {
        return buildPackage(order, stop);
    }).then(this, [this, number = order.number](const BuiltPackage& built) { finish(number, built); });
    return order.number;
}

const Package* PackageStore::find(int number) const {
    const auto found = m_packages.find(number);
    return found == m_packages.end() ? nullptr : &found->second;
}

void PackageStore::finish(int number, const BuiltPackage& built) {
    Package& package = m_packages.at(number);
    package.built = built;
    package.stage = built.error.isEmpty() ? Package::Stage::Ready : Package::Stage::Failed;
    if (!built.error.isEmpty())
        qWarning().noquote() << "package" << number << "failed:" << built.error;
}

void PackageStore::dropOldest() {
    if (m_packages.size() < keptPackages)
        return;
    const auto oldest = std::find_if(m_packages.begin(), m_packages.end(), [](const auto& entry) {
        return entry.second.stage != Package::Stage::Building;
    });
    if (oldest == m_packages.end())
        return;
    QFile::remove(oldest->second.path); // a download that is under way goes on with the open file
    m_packages.erase(oldest);
}

} // namespace tessaly::server
