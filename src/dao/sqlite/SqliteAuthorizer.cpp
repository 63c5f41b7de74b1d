#include "dao/sqlite/SqliteAuthorizer.h"

#include "base/Texts.h"
#include "dao/Errors.h"

#include <algorithm>
#include <array>

namespace dao {

namespace {

struct Request {
    SqliteSession& session;
    int action;
    const char* first;
    const char* second;
    const char* schema;
    const char* trigger; ///< or view, in whose text it stands; nullptr for the statement itself
};

// Of the engine's own functions the ones that native texts of the dialect are made of. All of ours begin with "mkl_"
// or, the marks of types, with "as_".
constexpr std::array<QByteArrayView, 17> nativeFunctions = {
    "abs", "avg", "coalesce", "count", "dense_rank", "first_value", "ifnull", "iif",  "last_value",
    "max", "min", "nullif",   "rank",  "round",      "row_number",  "sum",    "total"};

bool isDialectFunction(const char* name) {
    const QByteArray function = QByteArray(name).toLower();
    return function.startsWith("mkl_") || function.startsWith("as_") ||
           std::ranges::find(nativeFunctions, QByteArrayView(function)) != nativeFunctions.end();
}

// Carries the deletion of a row on to other tables, as "TABLE:delete" of the catalogue does. Any other trigger would
// let a file of unknown origin do things that the statement does not say.
bool isCascade(const char* trigger) {
    return QByteArrayView(trigger).endsWith(":delete");
}

bool isUserTable(const Request& request) {
    const bool isMain = !request.schema || qstrcmp(request.schema, "main") == 0;
    return isMain && request.first && request.session.isUserTable(request.first);
}

bool allowsWrite(const Request& request) {
    if (request.session.access() != Access::Write || !isUserTable(request)) return false;
    return !request.trigger || (request.action == SQLITE_DELETE && isCascade(request.trigger));
}

// A new table is a row of the engine's own table, which no statement can write directly in defensive mode.
bool allowsDefinition(const Request& request) {
    if (request.session.access() != Access::Define || request.trigger) return false;
    return request.action == SQLITE_CREATE_TABLE || qstrcmp(request.first, "sqlite_master") == 0;
}

bool allows(const Request& request) {
    const bool loads =
        request.action == SQLITE_FUNCTION && request.second && qstricmp(request.second, "load_extension") == 0;
    if (loads || request.action == SQLITE_ATTACH || request.action == SQLITE_DETACH) return false;
    if (request.session.access() == Access::Internal || allowsDefinition(request)) return true;
    switch (request.action) {
    case SQLITE_SELECT: return true;
    case SQLITE_READ: return isUserTable(request);
    case SQLITE_FUNCTION: return isDialectFunction(request.second);
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE: return allowsWrite(request);
    default: return false;
    }
}

mkl::RunTimeError refusal(const Request& request) {
    const bool namesFunction = request.action == SQLITE_FUNCTION && request.second;
    const char* refused = request.trigger ? request.trigger : namesFunction ? request.second : request.first;
    const QString source = QStringLiteral("SQLite: action %1 refused").arg(request.action);
    return {err::NotPermitted, mkl::runTimeText(err::NotPermitted, {QString::fromUtf8(refused)}), source};
}

int ask(void* session, int action, const char* first, const char* second, const char* schema, const char* trigger) {
    const Request request{*static_cast<SqliteSession*>(session), action, first, second, schema, trigger};
    if (allows(request)) return SQLITE_OK;
    request.session.keepFunctionError(refusal(request));
    return SQLITE_DENY;
}

} // namespace

void SqliteAuthorizer::watch(SqliteSession& session) {
    session.check(sqlite3_set_authorizer(session.database(), &ask, &session));
}

void SqliteAuthorizer::limit(SqliteSession& session) {
    constexpr std::pair<int, int> limits[] = {
        {SQLITE_LIMIT_LENGTH, 256 * 1024 * 1024}, // of one value and of one row
        {SQLITE_LIMIT_SQL_LENGTH, 16 * 1024 * 1024},
        {SQLITE_LIMIT_EXPR_DEPTH, 1000},
        {SQLITE_LIMIT_COMPOUND_SELECT, 500},
        {SQLITE_LIMIT_VDBE_OP, 10'000'000},
        {SQLITE_LIMIT_VARIABLE_NUMBER, 250'000},
        {SQLITE_LIMIT_TRIGGER_DEPTH, 50},
        {SQLITE_LIMIT_ATTACHED, 0},
        {SQLITE_LIMIT_WORKER_THREADS, 0},
    };
    for (const auto& [limit, value] : limits)
        sqlite3_limit(session.database(), limit, value);
}

} // namespace dao
