#pragma once
#include <QString>
#include <functional>
#include <libpq-fe.h>

namespace dao {

/// What errors of the server cannot tell by themselves.
struct PostgresErrorContext {
    QString name;                                                    ///< of the database
    std::function<bool(const QString&, const QString&)> isKeyColumn; ///< of the table with that column
};

/// 3043 in words of a server.
[[noreturn]] void raiseServerLost(const PostgresErrorContext& context, const QString& source = {});

/// Raises the run-time error for a failed result, NotExpressible where the server does not understand the statement.
/// The server's own words go into source() alone. Without a result the connection is lost.
[[noreturn]] void raisePostgresError(PGconn* connection, const PGresult* result, const PostgresErrorContext& context);

/// Raises the run-time error for a connection that cannot be made.
[[noreturn]] void raisePostgresConnectionError(PGconn* connection, const PostgresErrorContext& context);

/// Whether the source() of an error says that a column or table of a prepared statement is no longer what it was.
bool isOfOldPreparation(const QString& source);

} // namespace dao
