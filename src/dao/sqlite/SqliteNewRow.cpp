#include "dao/sqlite/SqliteNewRow.h"

#include "dao/Errors.h"
#include "dao/sqlite/SqliteSession.h"
#include "jet/model/Target.h"

#include <limits>

namespace dao {

RowStore SqliteNewRow::columns() const {
    RowStore rows;
    const StoredValue table = StoredValue::ofText(table_.name.toUtf8());
    connection_
        .prepared("SELECT name, dflt_value FROM pragma_table_xinfo(?1) WHERE hidden <> 1 ORDER BY cid",
                  Access::Internal)
        ->read({&table, 1}, rows);
    return rows;
}

ColumnValues SqliteNewRow::values(const RowStore& rows) {
    ColumnValues result;
    for (qsizetype row = 0; row < rows.size(); ++row) {
        const int column = table_.columnIndex(QString::fromUtf8(rows.value(row, 0).bytes));
        if (column < 0) continue;
        const StoredValue native = rows.value(row, 1);
        if (table_.columns[column].autoNumber)
            result.append({column, StoredValue::ofInteger(takeCounter(column))});
        else if (native.kind == StoredValue::Kind::Text)
            addDefault(result, column, native.bytes);
    }
    return result;
}

// The file may come from anywhere: the text gets no more rights than a query, and one that cannot be understood gives
// nothing. A failure of the engine is one here too.
void SqliteNewRow::addDefault(ColumnValues& values, int column, const QByteArray& native) {
    std::shared_ptr<Statement> statement;
    try {
        statement = connection_.prepared("SELECT " + native);
    } catch (const mkl::RunTimeError&) {
        return;
    }
    RowStore row;
    statement->read({}, row);
    const StoredValue plain = owned(row.value(0, 0));
    const jet::Column& target = table_.columns[column];
    try {
        values.append({column, encodeFor(decode(plain, target.type), target)});
    } catch (const mkl::RunTimeError&) {
        values.append({column, plain});
    }
}

qint64 SqliteNewRow::takeCounter(int column) {
    qint64 number = 0;
    const auto take = [&] {
        number = (isKnown() ? known_->number : lastCounter(column)) + 1;
        if (number > std::numeric_limits<mkl::Long>::max()) mkl::throwError(mkl::err::Overflow);
        keepCounter(number);
    };
    if (!known_) {
        connection_.transaction().atomically(take);
        return number;
    }
    take(); // nobody comes in between
    sqlite3_set_last_insert_rowid(session_.database(), 0);
    *known_ = {number, sqlite3_total_changes64(session_.database())};
    return number;
}

// Since then nothing was written, or that row alone.
bool SqliteNewRow::isKnown() const {
    if (!known_ || known_->number == 0) return false;
    const qint64 changes = sqlite3_total_changes64(session_.database()) - known_->changes;
    return changes == 0 || (changes == 1 && sqlite3_last_insert_rowid(session_.database()) == known_->number);
}

qint64 SqliteNewRow::lastCounter(int column) {
    const jet::Target& target = connection_.target();
    const StoredValue table = StoredValue::ofText(table_.name.toUtf8());
    RowStore row;
    connection_
        .prepared(
            "SELECT max(coalesce((SELECT max(seq) FROM sqlite_sequence WHERE name = ?1), 0), coalesce((SELECT max(" +
                target.name(table_.columns[column].name) + ") FROM " + target.name(table_.name) + "), 0))",
            Access::Internal)
        ->read({&table, 1}, row);
    return row.value(0, 0).integer;
}

void SqliteNewRow::keepCounter(qint64 number) {
    const StoredValue values[] = {StoredValue::ofInteger(number), StoredValue::ofText(table_.name.toUtf8())};
    const auto change = connection_.prepared("UPDATE sqlite_sequence SET seq = ?1 WHERE name = ?2", Access::Internal);
    if (change->run(values) > 0) return;
    connection_.prepared("INSERT INTO sqlite_sequence (seq, name) VALUES (?1, ?2)", Access::Internal)->run(values);
}

} // namespace dao
