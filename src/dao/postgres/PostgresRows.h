#pragma once
#include "dao/RowStore.h"

#include <libpq-fe.h>
#include <vector>

namespace dao {

/// Puts the rows that the server gives in binary into a store.
class PostgresRows {
public:
    /// untyped: columns whose values bear marks.
    PostgresRows(RowStore& rows, const std::vector<bool>& untyped)
        : rows_(rows)
        , untyped_(untyped) {}
    /// Rows of one statement, in one or several results.
    void append(const PGresult& result);
    /// Whether values of that type of the server stand for ones of ours.
    static bool givesType(Oid server, jet::ColumnType type);

private:
    RowStore& rows_;
    const std::vector<bool>& untyped_;
    std::vector<Oid> types_;
};

} // namespace dao
