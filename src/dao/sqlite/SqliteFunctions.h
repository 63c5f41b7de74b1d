#pragma once
#include "dao/sqlite/SqliteSession.h"
#include "jet/model/Schema.h"

namespace dao {

/// Makes the functions, operators, aggregates and the text order of the dialect known to the engine.
class SqliteFunctions {
public:
    /// The session must outlive the database's use of the functions.
    static void registerAll(SqliteSession& session);

    /// Subtype of a result that is of that type, 0 where the engine tells it itself.
    static unsigned int subtypeFor(jet::ColumnType type);
    /// Name of the function that marks a value as one of that type, nullptr where the engine tells it itself.
    static const char* markerFor(jet::ColumnType type);
};

} // namespace dao
