#include "dao/sqlite/SqliteFaults.h"

#include "dao/FaultPoints.h"

#include <QByteArrayView>

namespace dao {

namespace {

// Undoing never fails in the engine: at worst the transaction is undone and an error told besides.
bool isUndoing(sqlite3_stmt* statement) {
    return QByteArrayView(sqlite3_sql(statement)).startsWith("ROLLBACK");
}

bool writesRows(sqlite3_stmt* statement) {
    return sqlite3_stmt_readonly(statement) == 0 && !QByteArrayView(sqlite3_sql(statement)).startsWith("BEGIN");
}

int codeOf(StatementFault fault) {
    switch (fault) {
    case StatementFault::Constraint: return SQLITE_CONSTRAINT_UNIQUE;
    case StatementFault::Busy: return SQLITE_BUSY;
    case StatementFault::DiskFull: return SQLITE_FULL;
    case StatementFault::Interrupt: return SQLITE_INTERRUPT;
    case StatementFault::LostConnection: return SQLITE_IOERR;
    }
    return SQLITE_INTERNAL;
}

bool endsTransaction(StatementFault fault, bool writes) {
    return fault == StatementFault::DiskFull || fault == StatementFault::LostConnection ||
           (fault == StatementFault::Interrupt && writes);
}

// Where another engine computes what it cannot do itself: no statement of the program's.
bool isInMemory(const SqliteSession& session) {
    const char* const file = sqlite3_db_filename(session.database(), "main");
    return !file || !*file;
}

} // namespace

void passFaultPoint(SqliteSession& session, sqlite3_stmt* statement) {
    if (isInMemory(session)) return;
    FaultPoints::observe(sqlite3_sql(statement));
    if (isUndoing(statement)) return;
    const bool writes = writesRows(statement);
    const auto fault = FaultPoints::next(writes);
    if (!fault) return;
    sqlite3* database = session.database();
    if (endsTransaction(*fault, writes) && sqlite3_get_autocommit(database) == 0) {
        const SqliteSession::AccessScope scope(session, Access::Internal);
        sqlite3_exec(database, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    session.check(codeOf(*fault));
}

void setLockWait(SqliteSession& session) {
    if (!FaultPoints::waitsForLocks()) return;
    const auto wait = [](void*, int) { return FaultPoints::waitForLock() ? 1 : 0; };
    sqlite3_busy_handler(session.database(), wait, nullptr);
}

} // namespace dao
