#include "script_runner.h"

#include <QSqlQuery>
#include <vector>

namespace tessaly::sqlutils {

namespace {

/// The index of the last character of each statement.
std::vector<qsizetype> statementEnds(const QString& script) {
    enum class State { Outside, InLiteral, AfterBackslash };
    State state = State::Outside;
    std::vector<qsizetype> ends;
    for (qsizetype i = 0; i < script.size(); ++i) {
        const QChar c = script[i];
        switch (state) {
        case State::Outside:
            if (c == u'\'')
                state = State::InLiteral;
            else if (c == u';')
                ends.push_back(i);
            break;
        case State::InLiteral:
            if (c == u'\\')
                state = State::AfterBackslash;
            else if (c == u'\'')
                state = State::Outside;
            break;
        case State::AfterBackslash:
            state = State::InLiteral;
            break;
        }
    }
    ends.push_back(script.size() - 1);
    return ends;
}

} // namespace

Either<QSqlError, int> execScript(const QSqlDatabase& db, const QString& script) {
    if (script.isEmpty())
        return Right<int>(0);
    int executed = 0;
    qsizetype start = 0;
    for (const qsizetype end : statementEnds(script)) {
        const QString statement = script.mid(start, end - start + 1).trimmed();
        start = end + 1;
        if (statement.isEmpty())
            continue;
        QSqlQuery query(db);
        if (!query.exec(statement))
            return Left<QSqlError>(query.lastError());
        ++executed;
    }
    return Right<int>(executed);
}

} // namespace tessaly::sqlutils
