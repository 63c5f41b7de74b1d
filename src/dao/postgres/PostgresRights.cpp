#include "dao/postgres/PostgresRights.h"

#include "base/Texts.h"
#include "dao/Errors.h"

using namespace Qt::StringLiterals;

namespace dao {

namespace {

constexpr const char* closedSchemaText = "SELECT nspname FROM pg_namespace WHERE nspname IN ('public', 'mkl') AND NOT "
                                         "has_schema_privilege(oid, 'USAGE') ORDER BY nspname DESC";

// Rights on single columns count as well.
constexpr const char* rightsText =
    "SELECT current_setting('transaction_read_only'), coalesce(bool_or(has_table_privilege(c.oid, 'INSERT, UPDATE, "
    "DELETE') OR has_any_column_privilege(c.oid, 'INSERT, UPDATE')), has_schema_privilege('public', 'CREATE')) "
    "FROM pg_class c WHERE c.relnamespace = 'public'::regnamespace AND c.relkind IN ('r', 'p')";

// The table that is changed is named first; the others are read.
constexpr const char* namedTablesText =
    "SELECT c.relname, has_table_privilege(c.oid, $2), has_table_privilege(c.oid, 'SELECT') FROM pg_class c, "
    "LATERAL position('\"' || replace(c.relname, '\"', '\"\"') || '\"' IN $1) AS place "
    "WHERE c.relnamespace = 'public'::regnamespace AND c.relkind IN ('r', 'p', 'v') AND place > 0 ORDER BY place";

QString textAt(const PostgresResult& rows, int row, int column) {
    return QString::fromUtf8(PQgetvalue(rows.get(), row, column));
}

bool flagAt(const PostgresResult& rows, int row, int column) {
    return *PQgetvalue(rows.get(), row, column) == 't';
}

[[noreturn]] void raiseClosedSchema(const QString& schema, const QString& source) {
    throw mkl::RunTimeError(err::NotPermitted, mkl::text(mkl::TextId::ServerSchemaClosed, {schema}), source);
}

[[noreturn]] void raiseFor(const QString& right, const QString& table, const QString& source) {
    throw mkl::RunTimeError(err::NotPermitted, mkl::text(mkl::TextId::ServerRightMissing, {right, table}), source);
}

void raiseClosedSchemaOf(PGconn* connection, const QString& source) {
    const PostgresResult closed(PQexec(connection, closedSchemaText));
    if (PQntuples(closed.get()) > 0) raiseClosedSchema(textAt(closed, 0, 0), source);
}

void raiseClosedTableOf(PGconn* connection, const QByteArray& native, const QString& source) {
    const QByteArray verb = native.left(native.indexOf(' '));
    const bool changes = verb == "INSERT" || verb == "UPDATE" || verb == "DELETE";
    const QByteArray right = changes ? verb : "SELECT";
    const char* const values[] = {native.constData(), right.constData()};
    const PostgresResult tables(PQexecParams(connection, namedTablesText, 2, nullptr, values, nullptr, nullptr, 0));
    if (PQntuples(tables.get()) > 0 && !flagAt(tables, 0, 1))
        raiseFor(QString::fromLatin1(right), textAt(tables, 0, 0), source);
    for (int row = 0; row < PQntuples(tables.get()); ++row)
        if (!flagAt(tables, row, 2)) raiseFor(u"SELECT"_s, textAt(tables, row, 0), source);
}

} // namespace

PostgresRights PostgresRights::of(PostgresSession& session) {
    if (PQntuples(session.script("SELECT 1 FROM pg_namespace WHERE nspname = 'public'").get()) == 0)
        throw mkl::RunTimeError(err::ObjectNotFound, mkl::text(mkl::TextId::ServerSchemaMissing, {u"public"_s}));
    const PostgresResult closed = session.script(closedSchemaText);
    if (PQntuples(closed.get()) > 0) raiseClosedSchema(textAt(closed, 0, 0), {});
    const PostgresResult rights = session.script(rightsText);
    return {textAt(rights, 0, 0) == u"on", flagAt(rights, 0, 1)};
}

// Names in a schema that is closed are not found at all.
void raiseMissingRight(PGconn* connection, const PGresult* result, const QByteArray& native) {
    const char* const state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    const bool isRefused = qstrcmp(state, "42501") == 0, isNotFound = qstrcmp(state, "42P01") == 0;
    if (!isRefused && !isNotFound) return;
    const QString source = u"PostgreSQL %1: %2"_s.arg(
        QString::fromLatin1(state), QString::fromUtf8(PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY)));
    raiseClosedSchemaOf(connection, source);
    if (isRefused) raiseClosedTableOf(connection, native, source);
}

} // namespace dao
