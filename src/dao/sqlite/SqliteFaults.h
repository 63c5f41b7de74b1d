#pragma once
#include "dao/sqlite/SqliteSession.h"

namespace dao {

/// A point where a test may let the statement fail (see FaultPoints); nothing at all where these are left out.
#ifdef MKL_FAULT_POINTS
void passFaultPoint(SqliteSession& session, sqlite3_stmt* statement);
#else
inline void passFaultPoint(SqliteSession& /*session*/, sqlite3_stmt* /*statement*/) {}
#endif

} // namespace dao
