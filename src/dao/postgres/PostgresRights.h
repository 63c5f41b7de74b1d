#pragma once
#include "dao/postgres/PostgresSession.h"

namespace dao {

/// What the user may do, as the server tells it at the opening.
struct PostgresRights {
    bool isReadOnly = false; ///< a spare server, or a database that is set so
    bool mayWrite = true;    ///< rows of some table, or make the first table

    /// 3011 where there is no schema for the tables, 3112 where the user may not even look into the schemas.
    static PostgresRights of(PostgresSession& session);
};

/// Raises 3112 with the right that was lacking for the statement, where the result is that of a lacking right and the
/// server still answers.
void raiseMissingRight(PGconn* connection, const PGresult* result, const QByteArray& native);

} // namespace dao
