#pragma once
#include "dao/ServerAddress.h"

#include <QByteArray>
#include <libpq-fe.h>
#include <memory>

namespace dao {

struct PostgresCloser {
    void operator()(PGconn* connection) const { PQfinish(connection); }
};
using PostgresHandle = std::unique_ptr<PGconn, PostgresCloser>;

/// Connects. The password goes to the server alone, never into an address. Errors as of Workspace::OpenDatabase.
PostgresHandle connectTo(const QByteArray& url, const ServerAddress& address, const QString& password);

/// Makes a lost connection anew; false where that fails.
bool connectAnew(PGconn* connection);

} // namespace dao
