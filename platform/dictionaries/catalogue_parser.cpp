#include "catalogue_parser.h"

#include "server_request.h"
#include "text_bounds.h"

#include <QJsonArray>
#include <QJsonObject>
#include <common_utilities/log_line.h>
#include <limits>
#include <unordered_set>
#include <utilities/locale.h>
#include <utilities/url.h>
#include <vellum/dictionary_files.h>

namespace tessaly::dictionary {

namespace {

constexpr qint64 largestNumber = std::numeric_limits<std::int32_t>::max();

/// Of all records. The interface has several copies of them for a moment.
constexpr std::size_t mostText = 8 << 20;

/// Good and bad ones; each takes many times its length in memory to read.
constexpr std::size_t mostEntries = 2 * mostCatalogueRecords;

/// Where the first so many entries of a JSON list end; nowhere if there are no more.
std::size_t endOfEntries(std::string_view list, std::size_t count) {
    int depth = 0;
    bool isInText = false;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const char c = list[i];
        if (isInText && c == '\\')
            ++i;
        else if (c == '"')
            isInText = !isInText;
        else if (!isInText && (c == '[' || c == '{'))
            ++depth;
        else if (!isInText && (c == ']' || c == '}'))
            --depth;
        else if (!isInText && c == ',' && depth == 1 && --count == 0)
            return i;
    }
    return std::string_view::npos;
}

/// Reads the members of one record; the first that is not what it has to be makes the record a bad one.
class RecordReader {
public:
    explicit RecordReader(const QJsonObject& record)
        : m_record(record) {}

    /// What is wrong with the record; empty if nothing is.
    [[nodiscard]] const std::string& fault() const { return m_fault; }
    /// What was left out of it all the same; empty if nothing was.
    [[nodiscard]] const std::string& note() const { return m_note; }

    std::string text(const char* member, qsizetype longest = longestText) {
        const QString whole = string(value(member), member);
        if (whole.size() > longest)
            m_note =
                std::string(member) + " is too long, it has " + std::to_string(whole.size()) + " characters";
        return cut(whole, longest).toStdString();
    }

    /// 0 for a member that is absent.
    qint64 number(const char* member, qint64 smallest, qint64 largest) {
        const QJsonValue found = value(member);
        if (found.isNull())
            return 0;
        constexpr qint64 none = std::numeric_limits<qint64>::min();
        const qint64 number = found.toInteger(none);
        if (number == none || number < smallest || number > largest)
            fail(std::string(member) + " is not a number in range");
        return number;
    }

    void require(bool condition, const char* what) {
        if (!condition)
            fail(what);
    }

    boost::optional<utilities::Locale> language(const char* member) {
        const QJsonValue found = value(member);
        if (!found.isNull() && !found.isObject())
            fail(std::string(member) + " is not a language");
        const QString code = string(found.toObject().value(QLatin1String("code")), member);
        const QString region = string(found.toObject().value(QLatin1String("region")), member);
        const QString text = region.isEmpty() ? code : code + u'_' + region;
        const auto locale = utilities::locale_parser::tagged_parse(text.toStdString(), '_');
        if (locale.isLeft())
            m_note = std::string(member) + " is left out, not a language code";
        if (locale.isLeft() || locale.getRight().language.empty())
            return boost::none;
        return locale.getRight();
    }

private:
    /// Null for a member that is absent.
    [[nodiscard]] QJsonValue value(const char* member) const {
        const QJsonValue found = m_record.value(QLatin1String(member));
        return found.isUndefined() ? QJsonValue() : found;
    }

    QString string(const QJsonValue& value, const char* member) {
        if (!value.isNull() && !value.isUndefined() && !value.isString())
            fail(std::string(member) + " is not a text");
        return value.toString();
    }

    void fail(const std::string& what) {
        if (m_fault.empty())
            m_fault = what;
    }

    const QJsonObject m_record;
    std::string m_fault;
    std::string m_note;
};

DictionaryInfo readRecord(RecordReader& reader) {
    DictionaryInfo info;
    info.serverId = std::int32_t(reader.number("id", 1, largestNumber));
    reader.require(info.serverId > 0, "no id");
    info.name = reader.text("name");
    reader.require(!info.name.empty(), "no name");
    info.file = reader.text("file");
    reader.require(vellum::isDictionaryFileName(info.file), "file is not a dictionary file's name");
    info.version = std::int32_t(reader.number("version", -largestNumber, largestNumber));
    reader.number("size", 0, std::numeric_limits<qint64>::max());
    info.thumbnail = reader.text("thumbnail", longestUrl + 1);
    if (qsizetype(info.thumbnail.size()) > longestUrl || !utilities::isWebUrl(info.thumbnail))
        info.thumbnail.clear();
    info.description = reader.text("description", longestDescription);
    info.category = reader.text("category");
    info.provider = reader.text("provider");
    info.publishDate = reader.text("publish_date");
    info.dictSet = reader.text("set");
    info.languageFrom = reader.language("language_from");
    info.languageTo = reader.language("language_to");
    return info;
}

} // namespace

Either<ApiError, std::vector<DictionaryInfo>> parseCatalogue(const std::string& body) {
    const std::size_t end = endOfEntries(body, mostEntries);
    std::string beginning; // instead of the whole
    if (end != std::string::npos) {
        LogLine(log::cb::warn) << "catalogue: only the first " << mostEntries << " entries are read";
        beginning = body.substr(0, end) + ']';
    }
    const auto json = parseJson(beginning.empty() ? body : beginning, "catalogue");
    if (json.isLeft())
        return Left<ApiError>(json.getLeft());
    if (!json.getRight().isArray())
        return Left<ApiError>(parseError("catalogue", 0, "not a list"));

    std::vector<DictionaryInfo> records;
    std::unordered_set<std::int32_t> serverIds;
    Complaints complaints("catalogue");
    std::size_t text = 0;
    const auto complain = [&](qsizetype place, const std::string& what) {
        complaints.add("record " + std::to_string(place) + ": " + what);
    };
    const QJsonArray list = json.getRight().array();
    for (qsizetype place = 0; place < list.size(); ++place) {
        if (records.size() == mostCatalogueRecords || text > mostText) {
            LogLine(log::cb::warn) << "catalogue: " << list.size() - place << " entries are left out, after "
                                   << records.size() << " records";
            break;
        }
        if (!list.at(place).isObject()) {
            complain(place, "left out, not a record");
            continue;
        }
        RecordReader reader(list.at(place).toObject());
        const DictionaryInfo info = readRecord(reader);
        if (!reader.fault().empty()) {
            complain(place, "left out, " + reader.fault());
        } else if (!serverIds.insert(info.serverId).second) {
            complain(place, "left out, id " + std::to_string(info.serverId) + " was there before");
        } else {
            if (!reader.note().empty())
                complain(place, reader.note());
            text += info.name.size() + info.file.size() + info.thumbnail.size() + info.description.size() +
                    info.category.size() + info.provider.size() + info.publishDate.size() +
                    info.dictSet.size();
            records.push_back(info);
        }
    }
    return Right<std::vector<DictionaryInfo>>(std::move(records));
}

} // namespace tessaly::dictionary
