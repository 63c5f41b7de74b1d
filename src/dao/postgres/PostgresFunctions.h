#pragma once
#include "dao/postgres/PostgresSession.h"

namespace dao {

/// The functions of the dialect that the server calls itself, in a schema of their own. What they cannot answer, and
/// all other functions, is left to PostgresLocalRows.
class PostgresFunctions {
public:
    /// Makes them where they are missing or of another version; 3112 where the user may not.
    static void install(PostgresSession& session);
};

} // namespace dao
