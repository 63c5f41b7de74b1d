#pragma once
#include "dao/sqlite/SqliteSession.h"

namespace dao {

/// A point where a test may let the statement fail (see FaultPoints); nothing at all where these are left out.
#ifdef MKL_FAULT_POINTS
void passFaultPoint(SqliteSession& session, sqlite3_stmt* statement);
/// What a test does instead of waiting for another program's lock, if anything.
void setLockWait(SqliteSession& session);
#else
inline void passFaultPoint(SqliteSession& /*session*/, sqlite3_stmt* /*statement*/) {}
inline void setLockWait(SqliteSession& /*session*/) {}
#endif

} // namespace dao
