#pragma once
#include "jet/binding/SelectBinder.h"
#include "jet/binding/TargetColumn.h"

namespace jet {

/// Rows for a table: from a SELECT, or one row of values.
struct BoundInsert {
    const Table* table = nullptr;
    std::vector<TargetColumn> columns;
    const Column* missingKey = nullptr; ///< the key, where nothing is stored in it and no counter fills it
    std::optional<BoundSelect> select;
    std::vector<const Expression*> values;
};

struct BoundAssignment {
    TargetColumn column;
    const Expression* value;
};

/// The rows of a SELECT, and what becomes of one of its tables there.
struct BoundUpdate {
    BoundSelect rows;
    int target = 0; ///< number of the table
    std::vector<BoundAssignment> assignments;
};

struct BoundDelete {
    BoundSelect rows;
    int target = 0; ///< number of the table
};

struct BoundMakeTable {
    QString table;
    BoundSelect select;
};

/// Without a list of columns a SELECT fills those of its own column names. 3127 unknown target column, 3192 unknown
/// target table, 3346 another number of values than columns.
BoundInsert bindInsert(InsertStatement& insert, const Schema& schema, UnknownNames& unknown);
/// 3073 for columns of several tables, 3164 for a column that numbers itself.
BoundUpdate bindUpdate(UpdateStatement& update, const Schema& schema, UnknownNames& unknown);
/// 3128 where it is not clear which table loses rows.
BoundDelete bindDelete(DeleteStatement& statement, const Schema& schema, UnknownNames& unknown);
/// 3010 for a table that exists, 3141 for two columns of one name.
BoundMakeTable bindMakeTable(MakeTableStatement& statement, const Schema& schema, UnknownNames& unknown);

} // namespace jet
