#pragma once
#include "jet/SelectBinder.h"

namespace jet {

struct BoundAssignment {
    const Column* column;
    const Expression* value;
};

/// Rows for a table: from a SELECT, or one row of values.
struct BoundInsert {
    const Table* table = nullptr;
    std::vector<const Column*> columns;
    std::optional<BoundSelect> select;
    std::vector<const Expression*> values;
};

struct BoundUpdate {
    Scope scope;
    std::vector<BoundAssignment> assignments;
    const Expression* where = nullptr;
};

struct BoundDelete {
    Scope scope;
    const Expression* where = nullptr;
};

/// 3127 unknown target column, 3192 unknown target table, 3346 another number of values than columns.
BoundInsert bindInsert(InsertStatement& insert, const Schema& schema, UnknownNames& unknown);
/// 3164 for a column that numbers itself.
BoundUpdate bindUpdate(UpdateStatement& update, const Schema& schema, UnknownNames& unknown);
BoundDelete bindDelete(DeleteStatement& statement, const Schema& schema, UnknownNames& unknown);

} // namespace jet
