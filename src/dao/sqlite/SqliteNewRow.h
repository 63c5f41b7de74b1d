#pragma once
#include "dao/Connection.h"

namespace dao {

/// What a new row of a table holds before the program sets anything.
class SqliteNewRow {
public:
    SqliteNewRow(Connection& connection, const jet::Table& table)
        : connection_(connection)
        , table_(table) {}

    /// Defaults as the columns' types store them, and the next number of a counter. A default that is more than a
    /// value of the dialect's functions is left to the engine, which puts it in when the row is stored.
    ColumnValues values(const RowStore& rows);
    /// Names and defaults of the table's columns, for values().
    RowStore columns() const;

private:
    void addDefault(ColumnValues& values, int column, const QByteArray& native);
    /// Takes the next number. Kept in the file at once: two new rows begun at the same time get different ones.
    qint64 takeCounter(int column);
    qint64 lastCounter(int column);
    void keepCounter(qint64 number);

    Connection& connection_;
    const jet::Table& table_;
};

} // namespace dao
