#pragma once

#include "connector.h"

#include <common_utilities/either.h>
#include <dictionaries/api_error.h>
#include <dictionaries/dictionary_info.h>

#include <QObject>
#include <boost/optional.hpp>
#include <memory>
#include <vector>

namespace tessaly::dictionary {

class DBHolder;

/// Where the server's catalogue meets the stored one.
///
///     DataManager manager(DBHolder::newDefault());
///     if (!manager.synchronizeMetaData()) // connects, fetches, merges, stores
///         const auto records = manager.getDictionariesFromDB();
///
/// It knows nothing of what is installed, but for what must not go when the catalogue is full, and fetches no
/// packages. The object and its slots belong to the thread of the interface; the operations that fetch and
/// synchronise block, and may run on a worker as long as no two that touch the database run at once.
class DataManager : public QObject {
    Q_OBJECT

public:
    enum Error {
        NetworkNotAvailableError = 0, ///< the device could not be connected
        NetworkError = 1,             ///< no response from the server
        DatabaseFileNotExist = 2,     ///< no database; a connection was started in the background
        DatabaseError = 3,            ///< the stored catalogue can't be read
        UndefinedError = 4            ///< any other response of the server
    };
    Q_ENUM(Error)

    using Dictionaries = std::vector<DictionaryInfo>;

    explicit DataManager(const std::shared_ptr<DBHolder>& holder);

    /// Makes sure that the device is online. True: it was connected just now.
    static Either<Error, bool> netConnect();

    /// The server's whole catalogue.
    Either<Error, Dictionaries> getDictionariesFromNet();

    /// The stored catalogue. Without a database it starts connecting in the background, once in the life of
    /// the process.
    Either<Error, Dictionaries> getDictionariesFromDB();

    /// Replaces the stored catalogue with what the server and the stored one have together, 20,000 records at
    /// most: installed ones are kept first, then those that the server lists. Empty on success; errors of the
    /// database are logged only. A process killed in between leaves a catalogue that the next
    /// run makes whole.
    boost::optional<Error> synchronizeMetaData();

    static Error errorFromApiError(const ApiError& error);

    /// Ends the network agent.
    void killInetConnect();

    /// Whether a background connection was ever started, by any instance. Never set back, on purpose.
    static bool isConnecting;

public Q_SLOTS:
    void handleConnetingFinished(bool is_ok);
    void stopConnecting();

private:
    std::shared_ptr<DBHolder> m_dbHolder;
    Connector m_connector;
    int m_agentTask = -1; ///< set when the background connection is started
};

} // namespace tessaly::dictionary
