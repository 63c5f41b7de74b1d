#pragma once
#include "dao/Connection.h"
#include "dao/Workspace.h"

#include <memory>

namespace dao {

/// Opens a database on a server; errors as of Workspace::OpenDatabase.
std::shared_ptr<Connection> openPostgres(const QString& url, const OpenOptions& options);

} // namespace dao
