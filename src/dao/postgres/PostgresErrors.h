#pragma once
#include <QString>
#include <libpq-fe.h>

namespace dao {

/// Raises the run-time error for a failed result, NotExpressible where the server does not understand the statement.
/// The server's own words go into source() alone. Without a result the connection is lost.
[[noreturn]] void raisePostgresError(PGconn* connection, const PGresult* result, const QString& name);

/// Raises the run-time error for a connection that cannot be made.
[[noreturn]] void raisePostgresConnectionError(PGconn* connection, const QString& name);

} // namespace dao
