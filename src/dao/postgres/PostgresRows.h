#pragma once
#include "dao/RowStore.h"

#include <libpq-fe.h>

namespace dao {

/// Reads the rows that the server gives in binary.
class PostgresRows {
public:
    static void append(const PGresult& result, RowStore& rows);
    /// Whether values of that type of the server stand for ones of ours.
    static bool givesType(Oid server, jet::ColumnType type);
};

} // namespace dao
