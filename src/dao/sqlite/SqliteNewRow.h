#pragma once
#include "dao/Connection.h"

namespace dao {

class SqliteSession;

/// The number that a counter gave out last, and what had been written then.
struct SqliteCounter {
    qint64 number = 0; ///< 0 = none yet
    qint64 changes = 0;
};

/// What a new row of a table holds before the program sets anything.
class SqliteNewRow {
public:
    /// known: what to remember of the table's counter, while nobody else can write.
    SqliteNewRow(Connection& connection, SqliteSession& session, const jet::Table& table,
                 SqliteCounter* known = nullptr)
        : connection_(connection)
        , session_(session)
        , table_(table)
        , known_(known) {}

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
    bool isKnown() const;
    void keepCounter(qint64 number);

    Connection& connection_;
    SqliteSession& session_;
    const jet::Table& table_;
    SqliteCounter* known_;
};

} // namespace dao
