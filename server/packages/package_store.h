#pragma once

#include <QFuture>
#include <QList>
#include <QString>
#include <QThreadPool>

#include <map>
#include <stop_token>

namespace tessaly::server {

class Catalogue;
class DictionaryStore;
class ServerState;

struct BuiltPackage {
    QString error; ///< not empty: there is no package
    qint64 size = 0;
    QByteArray sha256; ///< hexadecimal
    QByteArray manifestSha256;
};

/// A package that was asked for: a zip of a manifest and the dictionaries' files.
struct Package {
    QString key; ///< the same for requests of the same content
    QString path;
    QFuture<BuiltPackage> building;
};

/// The packages of this run of the server, built by worker threads of its own. For one thread; destroying it
/// stops and waits for its workers.
class PackageStore {
public:
    /// Keeps its files in `directory`, which it makes (throws Failure) and clears of what an earlier run
    /// left. The others have to outlive it.
    PackageStore(const Catalogue& catalogue, DictionaryStore& dictionaries, ServerState& state,
                 const QString& directory);
    ~PackageStore();
    PackageStore(const PackageStore&) = delete;
    PackageStore& operator=(const PackageStore&) = delete;

    /// The number of the package with these dictionaries (known ones, at least one, in any order); starts
    /// building it unless there is one. Throws Failure if the number can't be kept. For tests:
    /// `fault` is what is wrong with the package on purpose ("damaged", "hostile"), `extraMilliseconds` how
    /// much longer than needed it takes.
    int request(QList<int> ids, const QString& fault, int extraMilliseconds);

    /// Null for a number never given out, and for a package that made room for newer ones.
    const Package* find(int number) const;

private:
    void dropOldest();

    const Catalogue& m_catalogue;
    DictionaryStore& m_dictionaries;
    ServerState& m_state;
    const QString m_directory;
    std::map<int, Package> m_packages;
    QThreadPool m_workers;
    std::stop_source m_stop;
};

} // namespace tessaly::server
