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
    QByteArrayList columns = columnNames_;
    if (table_.primaryKey.isEmpty()) columns += keyNames_;
    QList<StoredValue> values;
    const QByteArray condition = keyCondition(values, key);
    RowStore found;
    connection_->prepared("SELECT " + columns.join(", ") + " FROM " + nativeTable_ + condition)->read(values, found);
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

RowKey RowEditor::insert(const ColumnValues& values) const {
    connection_->requireWritable();
    requireKeyValues(values, true);
    QByteArrayList names;
    QByteArrayList parameters;
    QList<StoredValue> stored;
    for (const ColumnValue& value : values) {
        stored.append(value.value);
        names.append(columnNames_[value.column]);
        parameters.append(
            connection_->target().parameter(static_cast<int>(stored.size()), table_.columns[value.column].type));
    }
    QByteArray native = "INSERT INTO " + nativeTable_;
    native += names.isEmpty() ? QByteArray(" DEFAULT VALUES")
                              : " (" + names.join(", ") + ") VALUES (" + parameters.join(", ") + ')';
    RowKey key;
    connection_->transaction().atomically([&] { key = runForKey(native, stored); });
    return key;
}

RowKey RowEditor::update(const RowKey& key, const ColumnValues& changes, const ColumnValues& before,
                         RowStore* stored) const {
    connection_->requireWritable();
    requireKeyValues(changes, false);
    QByteArrayList assignments;
    QList<StoredValue> values;
    for (const ColumnValue& change : changes) {
        values.append(change.value);
        assignments.append(
            columnNames_[change.column] + " = " +
            connection_->target().parameter(static_cast<int>(values.size()), table_.columns[change.column].type));
    }
    RowKey newKey = key;
    connection_->transaction().atomically([&] {
        requireUnchanged(key, before);
        if (!changes.isEmpty()) {
            const QByteArray condition = keyCondition(values, key);
            newKey = runForKey("UPDATE " + nativeTable_ + " SET " + assignments.join(", ") + condition, values);
        }
        if (stored) read(newKey, *stored);
    });
    return newKey;
}

void RowEditor::remove(const RowKey& key) const {
    connection_->requireWritable();
    QList<StoredValue> values;
    const QByteArray native = "DELETE FROM " + nativeTable_ + keyCondition(values, key);
    connection_->transaction().atomically([&] {
        if (connection_->prepared(native, Access::Write)->run(values) == 0) mkl::throwError(err::RecordDeleted);
    });
}

QByteArray RowEditor::keyCondition(QList<StoredValue>& values, const RowKey& key) const {
    Q_ASSERT(key.size() == keyNames_.size());
    QByteArrayList conditions;
    for (qsizetype part = 0; part < key.size(); ++part) {
        values.append(key[part]);
        const jet::ColumnType type =
            table_.primaryKey.isEmpty() ? jet::ColumnType::Int : table_.columns[table_.primaryKey[part]].type;
        conditions.append(keyNames_[part] + " = " +
                          connection_->target().parameter(static_cast<int>(values.size()), type));
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

RowKey RowEditor::runForKey(const QByteArray& native, const QList<StoredValue>& values) const {
    RowStore rows;
    connection_->prepared(native + " RETURNING " + keyNames_.join(", "), Access::Write)->read(values, rows);
    if (rows.isEmpty()) mkl::throwError(err::RecordDeleted);
    RowKey key;
    for (int part = 0; part < keyNames_.size(); ++part)
        key.append(owned(rows.value(0, part)));
    return key;
}

} // namespace dao
