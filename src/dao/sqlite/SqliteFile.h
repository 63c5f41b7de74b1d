#pragma once
#include "dao/Connection.h"
#include "dao/Workspace.h"

#include <memory>

namespace dao {

/// Opens an existing file; errors as of Workspace::OpenDatabase.
std::shared_ptr<Connection> openSqlite(const QString& name, const OpenOptions& options);
/// Makes an empty file, set for use by several programs at once, and opens it; errors as of Workspace::CreateDatabase.
std::shared_ptr<Connection> createSqlite(const QString& name);
/// An empty database without a file, gone with its connection.
std::shared_ptr<Connection> openSqliteInMemory();

} // namespace dao
