#include "data_manager.h"

#include "db/dbholder.h"
#include "dictionarieslistmodel.h"

#include <common_utilities/log_line.h>
#include <common_utilities/time_measurement.h>
#include <dictionaries/routes.h>
#include <dictionaries/vl_api.h>
#include <vellum/vellum.h>

#include <algorithm>
#include <unordered_set>

namespace tessaly::dictionary {

namespace {

constexpr int connectedState = 2;
constexpr auto logFile = "dictpmplugin/data_manager";
constexpr std::size_t mostRecords = 20'000;

bool isSameDictionary(const DictionaryInfo& a, const DictionaryInfo& b) {
    return a.serverId == b.serverId;
}

DictionaryInfo keepDatabaseId(const DictionaryInfo& stored, const DictionaryInfo& fromServer) {
    return fromServer.withDatabaseId(stored.databaseId);
}

/// Stored records that the server lists no more would stay for ever. When there are too many, those go first
/// that it doesn't list and that aren't installed either.
void keepWithinBound(DataManager::Dictionaries& records, const DataManager::Dictionaries& fromServer) {
    if (records.size() <= mostRecords)
        return;
    std::unordered_set<std::int32_t> listed;
    for (const DictionaryInfo& record : fromServer)
        listed.insert(record.serverId);
    const auto installed = vl_api::enumDictionaries();
    const auto others =
        std::stable_partition(records.begin(), records.end(), [&](const DictionaryInfo& record) {
            return installed.findByFileName(record.file) != nullptr;
        });
    std::stable_partition(others, records.end(),
                          [&](const DictionaryInfo& record) { return listed.contains(record.serverId); });
    LogLine(log::cb::warn) << "catalogue: " << records.size() - mostRecords
                           << " stored records are left out, " << mostRecords << " are kept";
    records.erase(records.begin() + mostRecords, records.end());
}

} // namespace

bool DataManager::isConnecting = false;

DataManager::DataManager(const std::shared_ptr<DBHolder>& holder)
    : m_dbHolder(holder)
    , m_connector(holder, nullptr) {
    connect(&m_connector, &Connector::finished, this, &DataManager::handleConnetingFinished);
}

Either<DataManager::Error, bool> DataManager::netConnect() {
    const auto measurement = utilities::FuncTimeMeasurement::prettyLog(
        "static tessaly::Either<DataManager::Error, bool> tessaly::dictionary::DataManager::netConnect()",
        true, false);
    if (GetNetState() == connectedState)
        return Right<bool>(false);
    if (NetConnect2(nullptr, 1) == 0)
        return Right<bool>(true);
    return Left<Error>(NetworkNotAvailableError);
}

Either<DataManager::Error, DataManager::Dictionaries> DataManager::getDictionariesFromNet() {
    const auto connected = netConnect();
    if (connected.isLeft())
        return Left<Error>(connected.getLeft());
    const auto dictionaries = Routes::listDictionaries(default_base_url());
    if (dictionaries.isLeft())
        return Left<Error>(errorFromApiError(dictionaries.getLeft()));
    return Right<Dictionaries>(dictionaries.getRight());
}

Either<DataManager::Error, DataManager::Dictionaries> DataManager::getDictionariesFromDB() {
    if (!m_dbHolder->isDBValid() && !isConnecting) {
        isConnecting = true;
        m_agentTask = m_connector.connectToInet();
        return Left<Error>(DatabaseFileNotExist);
    }
    const auto dictionaries = m_dbHolder->dictionaryDAO().list();
    if (dictionaries.isLeft()) {
        ts_print_log2(2, logFile, __LINE__,
                      "tessaly::Either<DataManager::Error, std::vector<DictionaryInfo>> "
                      "tessaly::dictionary::DataManager::getDictionariesFromDB()",
                      "DataManager::getDictionariesFromDB error: %s",
                      qUtf8Printable(dictionaries.getLeft().toString()));
        return Left<Error>(DatabaseError);
    }
    return Right<Dictionaries>(dictionaries.getRight());
}

boost::optional<DataManager::Error> DataManager::synchronizeMetaData() {
    const auto connected = netConnect();
    if (connected.isLeft())
        return connected.getLeft();
    const auto fromServer = Routes::listDictionaries(default_base_url());
    if (fromServer.isLeft())
        return errorFromApiError(fromServer.getLeft());

    const DictionaryDAO& dao = m_dbHolder->dictionaryDAO();
    Dictionaries merged = DictionaryInfo::blitLists(dao.list().qGetOrErr({}), fromServer.getRight(),
                                                    isSameDictionary, keepDatabaseId);
    keepWithinBound(merged, fromServer.getRight());
    dao.deleteAll().qGetOrErr();
    dao.addMultiple(merged).qGetOrErr();
    return boost::none;
}

DataManager::Error DataManager::errorFromApiError(const ApiError& error) {
    return error.is<ApiError::CurlError>() ? NetworkError : UndefinedError;
}

void DataManager::killInetConnect() {
    CloseTask(m_agentTask, 0, 1);
}

void DataManager::handleConnetingFinished(bool is_ok) {
    if (is_ok)
        DictionariesListModel::instance()->refreshData();
}

void DataManager::stopConnecting() {
    constexpr auto function = "void tessaly::dictionary::DataManager::stopConnecting()";
    ts_print_log2(4, logFile, __LINE__, function,
                  "============================================== IN stopConnecting");
    if (!isConnecting)
        return;
    ts_print_log2(4, logFile, __LINE__, function,
                  "============================================== SET CLOSE FLAG");
    m_connector.setClose();
    killInetConnect();
}

} // namespace tessaly::dictionary
