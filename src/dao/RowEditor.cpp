#include "dao/RowEditor.h"

#include "dao/Errors.h"
#include "jet/model/Target.h"

#include <algorithm>

namespace dao {

RowEditor::RowEditor(std::shared_ptr<Connection> connection, const jet::Table& table)
    : connection_(std::move(connection))
    , table_(table)
    , nativeTable_(connection_->target().name(table.name)) {
    const jet::Target& target = connection_->target();
    for (const jet::Column& column : table_.columns)
        columnNames_.append(target.name(column.name));
    for (const int ordinal : table_.primaryKey)
        keyNames_.append(columnNames_[ordinal]);
    if (keyNames_.isEmpty()) keyNames_.append(target.rowIdentity(nativeTable_));
    const auto primary = std::ranges::find_if(table_.indexes, &jet::Index::primary);
    declaredKey_ = primary == table_.indexes.cend() ? table_.primaryKey : primary->columns;
}

bool RowEditor::read(const RowKey& key, RowStore& row) const {
    if (!reader_) {
        QByteArrayList columns = columnNames_;
        if (table_.primaryKey.isEmpty()) columns += keyNames_;
        reader_ = connection_->prepared("SELECT " + columns.join(", ") + " FROM " + nativeTable_ + keyCondition(0));
    }
    RowStore found;
    reader_->read(key, found);
    if (found.isEmpty()) return false;
    row = std::move(found);
    return true;
}

RowKey RowEditor::keyOf(const RowStore& row, qsizetype index) const {
    RowKey key;
    for (const int ordinal : table_.primaryKey)
        key.append(owned(row.value(index, ordinal)));
    if (key.isEmpty()) key.append(row.value(index, static_cast<int>(table_.columns.size())));
    return key;
}

ColumnValues RowEditor::initialValues() const {
    connection_->requireWritable();
    return connection_->initialValues(table_);
}

/// For an action that is a single statement.
template<class Action>
void RowEditor::atomically(Action&& action) const {
    if (connection_->failsAsAWhole(table_.name))
        action();
    else
        connection_->transaction().atomically(action);
}

RowKey RowEditor::insert(const ColumnValues& values) const {
    connection_->requireWritable();
    requireKeyValues(values, true);
    QList<StoredValue> stored;
    for (const ColumnValue& value : values)
        stored.append(value.value);
    RowKey key = givenKey(values);
    const bool isGiven = !key.isEmpty();
    const auto store = [&] {
        Statement& statement = latest(isGiven ? insertOfGivenKey_ : insert_, values,
                                      [&](const QList<int>& columns) { return insertText(columns, !isGiven); });
        if (!isGiven)
            key = keyFrom(statement, stored, keyNames_.size());
        else if (statement.run(stored) == 0)
            mkl::throwError(err::RecordDeleted);
    };
    atomically(store);
    return key;
}

// What the engine makes of other values than whole numbers only it knows.
RowKey RowEditor::givenKey(const ColumnValues& values) const {
    RowKey key;
    for (const int ordinal : table_.primaryKey) {
        const auto given = std::ranges::find(values, ordinal, &ColumnValue::column);
        const bool isWhole = given != values.cend() && given->value.kind == StoredValue::Kind::Integer &&
                             table_.columns[ordinal].type == jet::ColumnType::Int;
        if (!isWhole) return {};
        key.append(given->value);
    }
    return key;
}

QByteArray RowEditor::insertText(const QList<int>& columns, bool tellsKey) const {
    if (columns.isEmpty()) return "INSERT INTO " + nativeTable_ + " DEFAULT VALUES" + returningKey();
    QByteArrayList names;
    QByteArrayList parameters;
    for (const int column : columns) {
        names.append(columnNames_[column]);
        parameters.append(parameter(static_cast<int>(names.size()), column));
    }
    return "INSERT INTO " + nativeTable_ + " (" + names.join(", ") + ") VALUES (" + parameters.join(", ") + ')' +
           (tellsKey ? returningKey() : QByteArray());
}

RowKey RowEditor::update(const RowKey& key, const ColumnValues& changes, const std::optional<ColumnValues>& before,
                         RowStore* stored) const {
    connection_->requireWritable();
    requireKeyValues(changes, false);
    if (before && !stored && changedAtOnce(key, changes, *before)) return key;
    RowKey newKey = key;
    const auto store = [&] {
        if (before) requireUnchanged(key, *before);
        if (!changes.isEmpty()) newKey = change(key, changes);
        if (stored) read(newKey, *stored);
    };
    if (before || stored)
        connection_->transaction().atomically(store);
    else
        atomically(store);
    return newKey;
}

RowKey RowEditor::change(const RowKey& key, const ColumnValues& changes) const {
    const bool rekeys = changesKey(changes);
    Statement& statement =
        latest(update_, changes, [&](const QList<int>& columns) { return updateText(columns, rekeys); });
    QList<StoredValue> values;
    values.reserve(changes.size() + key.size());
    for (const ColumnValue& change : changes)
        values.append(change.value);
    values += key;
    if (rekeys) return keyFrom(statement, values, keyNames_.size());
    if (statement.run(values) == 0) mkl::throwError(err::RecordDeleted);
    return key;
}

// Saves the way to a server that asks for the row as it is now. Where no row is changed that way tells why.
bool RowEditor::changedAtOnce(const RowKey& key, const ColumnValues& changes, const ColumnValues& before) const {
    using jet::ColumnType;
    const auto isExact = [this](const ColumnValue& seen) {
        const ColumnType type = table_.columns[seen.column].type;
        return type == ColumnType::Int || type == ColumnType::Boolean || type == ColumnType::Date ||
               type == ColumnType::Text;
    };
    const bool isOneStatement = connection_->readsAhead() && connection_->failsAsAWhole(table_.name);
    if (!isOneStatement || changes.isEmpty() || changesKey(changes) || !std::ranges::all_of(before, isExact))
        return false;
    Statement& statement = latest(updateOfSeen_, changes + before, [&](const QList<int>& columns) {
        QByteArray text = updateText(columns.first(changes.size()), false);
        auto number = static_cast<int>(changes.size() + key.size());
        for (const int column : columns.sliced(changes.size()))
            text += " AND " + columnNames_[column] + " IS NOT DISTINCT FROM " + parameter(++number, column);
        return text;
    });
    QList<StoredValue> values;
    for (const ColumnValue& change : changes)
        values.append(change.value);
    values += key;
    for (const ColumnValue& seen : before)
        values.append(seen.value);
    return statement.run(values) == 1;
}

QByteArray RowEditor::parameter(int number, int column) const {
    return connection_->target().parameter(number, table_.columns[column].type);
}

QByteArray RowEditor::updateText(const QList<int>& columns, bool changesKey) const {
    QByteArrayList assignments;
    for (const int column : columns)
        assignments.append(columnNames_[column] + " = " + parameter(static_cast<int>(assignments.size()) + 1, column));
    return "UPDATE " + nativeTable_ + " SET " + assignments.join(", ") + keyCondition(columns.size()) +
           (changesKey ? returningKey() : QByteArray());
}

bool RowEditor::changesKey(const ColumnValues& changes) const {
    return std::ranges::any_of(changes,
                               [this](const ColumnValue& change) { return table_.primaryKey.contains(change.column); });
}

void RowEditor::remove(const RowKey& key) const {
    connection_->requireWritable();
    if (!remover_) remover_ = connection_->prepared("DELETE FROM " + nativeTable_ + keyCondition(0), Access::Write);
    atomically([&] {
        if (remover_->run(key) == 0) mkl::throwError(err::RecordDeleted);
    });
}

QByteArray RowEditor::keyCondition(qsizetype parametersBefore) const {
    QByteArrayList conditions;
    for (qsizetype part = 0; part < keyNames_.size(); ++part) {
        const jet::ColumnType type =
            table_.primaryKey.isEmpty() ? jet::ColumnType::Int : table_.columns[table_.primaryKey[part]].type;
        const auto number = static_cast<int>(parametersBefore + part + 1);
        conditions.append(keyNames_[part] + " = " + connection_->target().parameter(number, type));
    }
    return " WHERE " + conditions.join(" AND ");
}

// The engine would make a key up, or take Null for one.
void RowEditor::requireKeyValues(const ColumnValues& values, bool isNew) const {
    for (const int ordinal : declaredKey_) {
        const auto given = std::ranges::find(values, ordinal, &ColumnValue::column);
        const bool isGiven = given != values.cend();
        const bool lacks = isNew && !isGiven && !table_.columns[ordinal].autoNumber;
        if (lacks || (isGiven && given->value.kind == StoredValue::Kind::Null)) mkl::throwError(err::NullInKey);
    }
}

void RowEditor::requireUnchanged(const RowKey& key, const ColumnValues& before) const {
    RowStore row;
    if (!read(key, row)) mkl::throwError(err::RecordDeleted);
    for (const ColumnValue& seen : before)
        if (row.value(0, seen.column) != seen.value) mkl::throwError(err::ChangedByAnother);
}

template<class Text>
Statement& RowEditor::latest(Latest& latest, const ColumnValues& values, Text&& text) const {
    const bool isTheSame = latest.statement && std::ranges::equal(latest.columns, values, {}, {}, &ColumnValue::column);
    if (!isTheSame) {
        QList<int> columns;
        for (const ColumnValue& value : values)
            columns.append(value.column);
        latest = {columns, connection_->prepared(text(columns), Access::Write)};
    }
    return *latest.statement;
}

QByteArray RowEditor::returningKey() const {
    return " RETURNING " + keyNames_.join(", ");
}

RowKey RowEditor::keyFrom(Statement& statement, const QList<StoredValue>& values, qsizetype parts) {
    RowStore rows;
    statement.read(values, rows);
    if (rows.isEmpty()) mkl::throwError(err::RecordDeleted);
    RowKey key;
    for (int part = 0; part < parts; ++part)
        key.append(owned(rows.value(0, part)));
    return key;
}

} // namespace dao
