#pragma once
// A database of the test's server gets what all programs need from the data layer, as with the first program that
// opens it. Included by what makes the databases of a test program.
#include "dao/Workspace.h"
#include "support/PostgresServer.h"

namespace mkl {

inline const bool preparesDatabases = [] {
    PostgresServer::preparation() = [](const QString& url) { dao::DBEngine::CreateWorkspace()->OpenDatabase(url); };
    return true;
}();

} // namespace mkl
