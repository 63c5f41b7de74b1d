#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "apps/mklart/QueryCommand.h"
#include "apps/mklart/ResultPrinter.h"
#include "base/RunTimeError.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long isActionQuery = 3219;

/// The rows of a query; empty for an action query.
Ref<dao::Recordset> openQuery(dao::Database& database, const QString& statement) {
    try {
        return database.OpenRecordset(statement, dao::dbOpenSnapshot);
    } catch (const RunTimeError& error) {
        if (error.number() != isActionQuery) throw;
    }
    return {};
}

void runStatement(dao::Database& database, const QString& statement, bool json) {
    if (const auto rows = openQuery(database, statement)) {
        const QueryResult result(rows);
        return json ? printJson(result) : printTable(result);
    }
    database.Execute(statement, dao::dbFailOnError);
    const QString affected = QString::number(database.RecordsAffected());
    printLine(json ? u"{\"affected\": %1}"_s.arg(affected) : text(TextId::ToolAffected, {affected}));
}

} // namespace

int runSql(const Invocation& call) {
    return runQuery(call, call.argument(1), [&call]() -> Answer {
        const auto file = std::make_shared<QueryFile>(call);
        return [file](const QString& statement, bool json) { runStatement(file->database(), statement, json); };
    });
}

} // namespace mkl
