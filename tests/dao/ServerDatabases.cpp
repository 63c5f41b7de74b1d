// Each new database on the server gets the types and functions of the dialect before a test makes its tables.
#include "dao/Workspace.h"
#include "support/PostgresServer.h"

namespace dao {

namespace {

const bool prepared = [] {
    mkl::PostgresServer::preparation() = [](const QString& url) { DBEngine::CreateWorkspace()->OpenDatabase(url); };
    return true;
}();

} // namespace

} // namespace dao
