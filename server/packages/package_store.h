#pragma once

#include "packages/package_builder.h"

#include <QObject>
#include <QThreadPool>

#include <map>
#include <stop_token>

namespace tessaly::server {

class Catalogue;
class ServerState;

/// A package that was asked for.
struct Package {
    enum class Stage { Building, Ready, Failed };

    QString key; ///< the same for requests of the same content
    QString path;
    Stage stage = Stage::Building;
    BuiltPackage built; ///< once the stage is not Building
};

/// The packages of this run of the server, built by worker threads of its own. For one thread; destroying it
/// stops and waits for its workers.
class PackageStore : public QObject {
public:
    /// Keeps its files in `folder`, which it makes (throws Failure) and clears of what an earlier run left.
    /// `catalogue` and `state` have to outlive it.
    PackageStore(const Catalogue& catalogue, ServerState& state, const QString& folder);
    ~PackageStore() override;

    /// The number of the package with these dictionaries (known ones, at least one, in any order); starts
    /// building it unless there is one. Throws Failure if the number can't be kept.
    int request(QList<int> ids, PackageFault fault, int extraMilliseconds);

    /// Null for a number never given out, and for a package that made room for newer ones.
    const Package* find(int number) const;

private:
    void finish(int number, const BuiltPackage& built);
    void dropOldest();

    const Catalogue& m_catalogue;
    ServerState& m_state;
    QString m_convertedFolder;
    QString m_packageFolder;
    std::map<int, Package> m_packages;
    QThreadPool m_workers;
    std::stop_source m_stop;
};

} // namespace tessaly::server
