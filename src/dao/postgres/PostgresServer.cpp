#include "dao/postgres/PostgresServer.h"

#include "dao/ServerAddress.h"
#include "dao/postgres/PostgresConnection.h"

namespace dao {

std::shared_ptr<Connection> openPostgres(const QString& url, const OpenOptions& options) {
    auto session = std::make_shared<PostgresSession>(url.toUtf8(), serverAddress(url), options.password);
    return std::make_shared<PostgresConnection>(std::move(session), options.readOnly, options.busyTimeoutMilliseconds);
}

} // namespace dao
