#pragma once
#include "dao/sqlite/SqliteSession.h"

namespace dao {

/// Asked by the engine about everything that a statement would touch, while it prepares it. It enforces Access, so that
/// a text which came past the grammar still cannot write, attach, load or see what is not the user's.
class SqliteAuthorizer {
public:
    /// From now on the engine asks; what counts as the user's tables stands in the session.
    static void watch(SqliteSession& session);
    /// Upper bounds of statements and values: beyond them they are errors (3360, 6) and no crash.
    static void limit(SqliteSession& session);
};

} // namespace dao
