#include "benchmarks.h"
#include "compare.h"

#include <dictpmplugin/db/catalogue_file.h>
#include <dictpmplugin/db/dbholder.h>
#include <simulator/fixture/test_device.h>

#include <QSqlQuery>
#include <QVariant>
#include <algorithm>
#include <iterator>
#include <limits>
#include <malloc.h>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tessaly::benchmarks {

namespace {

using Records = std::vector<dictionary::DictionaryInfo>;

constexpr int rounds = 11;
constexpr int mergeRounds = 5;
constexpr auto columns = "dicts_id, name, file, lang_from, lang_iso_from, lang_to, lang_iso_to, thumbnail, "
                         "description, category, provider, dict_set, version";

Records makeRecords(int count) {
    const std::string codes[] = {"cs", "de", "el", "en", "es", "fr", "ga", "it", "ru", "sr", "tr"};
    Records records(static_cast<std::size_t>(count));
    for (int id = 1; dictionary::DictionaryInfo & info : records) {
        const std::string number = std::to_string(id);
        info.serverId = id;
        info.name = "Dictionary number " + number;
        info.file = info.name + ".tsdict";
        info.version = id % 10;
        info.languageFrom = utilities::Locale{codes[id % 11], boost::none};
        info.languageTo = utilities::Locale{codes[id / 11 % 11], boost::none};
        info.thumbnail = "http://127.0.0.1:8080/v1/dictionaries/" + number + "/cover.png";
        info.description =
            "Some 10,000 headwords with their translations, collected by volunteers. Edition " + number +
            ", corrected.";
        info.category = "Bilingual";
        info.provider = "FreeDict";
        info.dictSet = "Basics";
        ++id;
    }
    return records;
}

/// A catalogue in a file of its own.
class Catalogue {
public:
    Catalogue(const fixture::TestDevice& device, const char* name)
        : m_db(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QLatin1String(name))) {
        m_db.setDatabaseName(device.path("/mnt/ext1/system/tsdicts/") + QLatin1String(name));
        if (!dictionary::openCatalogueFile(m_db, dictionary::lockWaitMs))
            throw std::runtime_error("can not open a database for the benchmark");
        m_holder.emplace(m_db);
    }
    ~Catalogue() {
        const QString name = m_db.connectionName();
        m_holder.reset();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
    }
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    void replace(const Records& records) const {
        if (m_holder->dictionaryDAO().deleteAll().isLeft() ||
            m_holder->dictionaryDAO().addMultiple(records).isLeft())
            throw std::runtime_error("can not write the catalogue");
    }

    [[nodiscard]] Records list() const { return m_holder->dictionaryDAO().list().getRight(); }

    void replaceInOneTransaction(const std::vector<QVariantList>& rows) {
        m_db.transaction();
        QSqlQuery query(m_db);
        query.exec(QStringLiteral("DELETE FROM Dictionaries"));
        query.prepare(QStringLiteral("INSERT INTO Dictionaries (%1) VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?)")
                          .arg(QLatin1String(columns)));
        for (const QVariantList& row : rows) {
            for (const QVariant& value : row)
                query.addBindValue(value);
            if (!query.exec())
                throw std::runtime_error("can not write the reference");
        }
        m_db.commit();
    }

    /// Each row as it is stored.
    [[nodiscard]] std::vector<QVariantList> rows() const {
        QSqlQuery query(m_db);
        query.setForwardOnly(true);
        query.exec(QStringLiteral("SELECT %1 FROM Dictionaries").arg(QLatin1String(columns)));
        std::vector<QVariantList> result;
        while (query.next()) {
            QVariantList& row = result.emplace_back();
            for (int i = 0; i < 13; ++i)
                row << query.value(i);
        }
        return result;
    }

private:
    QSqlDatabase m_db;
    std::optional<dictionary::DBHolder> m_holder;
};

/// What a hurried merge is: the fetched records, with the stored numbers where there are any, after those
/// that aren't fetched.
Records mergeByTable(Records stored, Records fetched) {
    std::unordered_map<std::int32_t, std::int32_t> databaseIds;
    databaseIds.reserve(stored.size());
    for (const dictionary::DictionaryInfo& record : stored)
        databaseIds.emplace(record.serverId, record.databaseId);
    for (dictionary::DictionaryInfo& record : fetched) {
        const auto known = databaseIds.extract(record.serverId);
        if (!known.empty())
            record.databaseId = known.mapped();
    }
    std::erase_if(stored, [&](const auto& record) { return !databaseIds.contains(record.serverId); });
    stored.insert(stored.end(), std::make_move_iterator(fetched.begin()),
                  std::make_move_iterator(fetched.end()));
    return stored;
}

/// Seconds of a merge of lists of which two thirds are the same. Making the lists isn't counted, nor taking
/// them away.
template<class Merge>
double mergeSeconds(int count, Merge merge) {
    double least = std::numeric_limits<double>::max();
    const Records all = makeRecords(count * 4 / 3);
    for (int i = 0; i < mergeRounds; ++i) {
        Records stored(all.begin(), all.begin() + count);
        Records fetched(all.end() - count, all.end());
        Records merged;
        malloc_trim(0); // the lists before are taken away here, and not by the merge's first allocation
        least =
            std::min(least, processorSeconds([&] { merged = merge(std::move(stored), std::move(fetched)); }));
        if (merged.size() != all.size())
            throw std::runtime_error("the lists are merged in a wrong way");
    }
    return least;
}

Records mergeAsTheProductDoes(Records stored, Records fetched) {
    return dictionary::DictionaryInfo::blitLists(
        std::move(stored), std::move(fetched),
        [](const auto& a, const auto& b) { return a.serverId == b.serverId; },
        [](const auto& a, const auto& b) { return b.withDatabaseId(a.databaseId); });
}

Measurement compareMerges(const char* name, int count) {
    const double ours = mergeSeconds(count, mergeAsTheProductDoes);
    const double reference = mergeSeconds(count, mergeByTable);
    return {name, ours, reference, ours / reference};
}

} // namespace

Measurement measureMerge100k() {
    return compareMerges("merge 100k", 100'000);
}

Measurement measureMergeGrowth() {
    const Measurement few = compareMerges("merge 10k", 10'000);
    const Measurement many = compareMerges("merge 100k", 100'000);
    const double ours = many.ours / few.ours;
    const double reference = many.reference / few.reference;
    return {"merge growth", ours, reference, ours / reference};
}

Measurement measureCatalogueReplace() {
    const fixture::TestDevice device;
    const Records records = makeRecords(2000);
    Catalogue ours(device, "ours.db");
    Catalogue reference(device, "reference.db");
    ours.replace(records);
    const std::vector<QVariantList> rows = ours.rows();
    reference.replaceInOneTransaction(rows);
    std::vector<double> ourTimes;
    std::vector<double> referenceTimes;
    for (int i = 0; i < rounds; ++i) {
        ourTimes.push_back(seconds([&] { ours.replace(records); }));
        referenceTimes.push_back(seconds([&] { reference.replaceInOneTransaction(rows); }));
    }
    return compareMedians("catalogue replace", ourTimes, referenceTimes);
}

Measurement measureCatalogueList() {
    const fixture::TestDevice device;
    Catalogue catalogue(device, "catalogue.db");
    catalogue.replace(makeRecords(10'000));
    const auto check = [](std::size_t size) {
        if (size != 10'000)
            throw std::runtime_error("can not read the catalogue");
    };
    return compareFastest(
        "catalogue list", rounds, [&] { check(catalogue.list().size()); },
        [&] { check(catalogue.rows().size()); });
}

} // namespace tessaly::benchmarks
