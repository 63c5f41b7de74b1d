#pragma once
#include <QString>
#include <sqlite3.h>

namespace dao {

/// Raises the run-time error for a result code of the engine. Its own words go into source() alone.
[[noreturn]] void raiseSqliteError(sqlite3* database, int code, const QString& fileName);

} // namespace dao
