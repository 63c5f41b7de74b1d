#pragma once
#include "core/SessionHelper.h"
#include "dao/Database.h"

namespace mkl {

/// What a host sets as Helper when its catalogue keeps the replica digit itself (catalogue/CatalogueReplica). The
/// database is asked for each key, so that a digit which another program sets counts at once; ReplicaDigit() raises
/// the errors of replicaDigit(). Holds the database; 91 for an empty one.
Ref<SessionHelper> newSessionHelper(const Ref<dao::Database>& database);

} // namespace mkl
