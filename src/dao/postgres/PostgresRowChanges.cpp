#include "dao/postgres/PostgresRowChanges.h"

#include "base/RunTimeError.h"
#include "dao/Substitute.h"
#include "jet/model/Target.h"

#include <QByteArrayList>

namespace dao {

PostgresRowChanges::PostgresRowChanges(Connection& server, Connection& memory, const QByteArray& native,
                                       const std::vector<const jet::Table*>& tables)
    : server_(server)
    , memory_(memory) {
    qsizetype first = native.size();
    for (const jet::Table* table : tables) {
        const qsizetype at = native.indexOf(memory_.target().name(table->name));
        if (at >= first) continue;
        first = at;
        table_ = table;
    }
    const QByteArray columns = native.mid(first, native.indexOf(')', first) - first);
    for (int column = 0; table_ && column < table_->columns.size(); ++column)
        if (columns.contains(memory_.target().name(table_->columns[column].name))) given_.insert(column);
}

PostgresRowChanges::Rows PostgresRowChanges::read() const {
    QByteArrayList names{"_rowid_"};
    for (const jet::Column& column : table_->columns)
        names.append(memory_.target().name(column.name));
    RowStore rows;
    memory_.prepared("SELECT " + names.join(", ") + " FROM " + memory_.target().name(table_->name), Access::Internal)
        ->read({}, rows);
    Rows result;
    for (qsizetype row = 0; row < rows.size(); ++row) {
        Row& values = result[rows.value(row, 0).integer];
        for (int column = 1; column < names.size(); ++column)
            values.append(owned(rows.value(row, column)));
    }
    return result;
}

void PostgresRowChanges::noteBefore() {
    before_ = read();
}

qint64 PostgresRowChanges::carryOver(bool lenient) {
    const Rows after = read();
    qint64 refused = 0;
    const auto tried = [&](auto&& action) {
        try {
            action();
        } catch (const mkl::RunTimeError& error) {
            if (!lenient || !server_.inTransaction() || concernsAllRows(error.number())) throw;
            ++refused;
        }
    };
    server_.transaction().atomically([&] {
        for (auto row = before_.cbegin(); row != before_.cend(); ++row)
            if (!after.contains(row.key())) tried([&] { remove(row.key()); });
        for (auto row = after.cbegin(); row != after.cend(); ++row)
            if (before_.contains(row.key()) && before_[row.key()] != row.value())
                tried([&] { change(row.key(), row.value()); });
        for (auto row = after.cbegin(); row != after.cend(); ++row)
            if (!before_.contains(row.key())) tried([&] { insert(row.value()); });
    });
    return refused;
}

QByteArray PostgresRowChanges::condition(int firstParameter) const {
    const jet::Target& target = server_.target();
    QByteArrayList conditions;
    for (const int column : table_->primaryKey)
        conditions.append(target.name(table_->columns[column].name) + " = " +
                          target.parameter(firstParameter++, table_->columns[column].type));
    if (conditions.isEmpty())
        conditions.append(target.rowIdentity(target.name(table_->name)) + " = " +
                          target.parameter(firstParameter, jet::ColumnType::Int));
    return " WHERE " + conditions.join(" AND ");
}

PostgresRowChanges::Row PostgresRowChanges::keyOf(qint64 identity) const {
    Row key;
    for (const int column : table_->primaryKey)
        key.append(before_[identity][column]);
    if (key.isEmpty()) key.append(StoredValue::ofInteger(identity));
    return key;
}

void PostgresRowChanges::remove(qint64 identity) {
    server_.prepared("DELETE FROM " + server_.target().name(table_->name) + condition(1), Access::Write)
        ->run(keyOf(identity));
}

void PostgresRowChanges::change(qint64 identity, const Row& row) {
    const jet::Target& target = server_.target();
    QByteArrayList assignments;
    Row values;
    for (int column = 0; column < row.size(); ++column) {
        if (before_[identity][column] == row[column]) continue;
        values.append(row[column]);
        assignments.append(target.name(table_->columns[column].name) + " = " +
                           target.parameter(static_cast<int>(values.size()), table_->columns[column].type));
    }
    const QByteArray where = condition(static_cast<int>(values.size()) + 1);
    server_.prepared("UPDATE " + target.name(table_->name) + " SET " + assignments.join(", ") + where, Access::Write)
        ->run(values + keyOf(identity));
}

void PostgresRowChanges::insert(const Row& row) {
    const jet::Target& target = server_.target();
    QByteArrayList names, parameters;
    Row values;
    for (int column = 0; column < row.size(); ++column) {
        if (!given_.contains(column)) continue;
        values.append(row[column]);
        names.append(target.name(table_->columns[column].name));
        parameters.append(target.parameter(static_cast<int>(values.size()), table_->columns[column].type));
    }
    server_
        .prepared("INSERT INTO " + target.name(table_->name) + " (" + names.join(", ") + ") VALUES (" +
                      parameters.join(", ") + ')',
                  Access::Write)
        ->run(values);
}

} // namespace dao
