#include "dao/EditBuffer.h"

#include "dao/Errors.h"

namespace dao {

namespace {

EditColumn editColumn(const jet::OutputColumn& output, const jet::Schema& schema) {
    EditColumn result{output.name, {.name = output.name, .type = output.type}, false};
    const jet::Table* table = output.sourceTable.isEmpty() ? nullptr : schema.findTable(output.sourceTable);
    const int ordinal = table ? table->columnIndex(output.sourceColumn) : -1;
    if (ordinal < 0) return result;
    result.column = table->columns[ordinal];
    result.writable = isWritable(result.column);
    return result;
}

} // namespace

bool isWritable(const jet::Column& column) {
    return !column.autoNumber && !column.computed;
}

QList<EditColumn> editColumns(const QList<jet::OutputColumn>& columns, const jet::Schema& schema) {
    QList<EditColumn> result;
    for (const jet::OutputColumn& column : columns)
        result.append(editColumn(column, schema));
    return result;
}

EditBuffer::EditBuffer(QList<EditColumn> columns)
    : columns_(std::move(columns)) {}

void EditBuffer::beginEdit(const RowStore& row, qsizetype index) {
    reset(EditMode::InProgress);
    for (int column = 0; column < columns_.size(); ++column)
        before_.append(row.value(index, column));
    before_.endRow();
}

void EditBuffer::beginAdd(const ColumnValues& initial) {
    reset(EditMode::Add);
    for (const ColumnValue& value : initial)
        changed_[static_cast<size_t>(value.column)] = value.value;
}

void EditBuffer::clear() {
    reset(EditMode::None);
}

void EditBuffer::reset(EditMode mode) {
    mode_ = mode;
    before_.clear();
    changed_.assign(mode == EditMode::None ? 0 : static_cast<size_t>(columns_.size()), std::nullopt);
}

void EditBuffer::set(int column, const mkl::Variant& value) {
    if (!isActive()) mkl::throwError(err::UpdateWithoutEdit);
    const EditColumn& target = columns_.at(column);
    if (!target.writable) mkl::throwError(err::FieldNotUpdatable, {target.name});
    changed_[static_cast<size_t>(column)] = encodeFor(value, target.column);
}

mkl::Variant EditBuffer::value(int column) const {
    if (!isActive()) mkl::throwError(err::NoCurrentRecord);
    const auto type = columns_.at(column).column.type;
    if (const auto& changed = changed_[static_cast<size_t>(column)]) return decode(*changed, type);
    return mode_ == EditMode::InProgress ? before_.decoded(0, column, type) : mkl::Variant();
}

ColumnValues EditBuffer::before() const {
    ColumnValues result;
    if (before_.isEmpty()) return result;
    for (int column = 0; column < columns_.size(); ++column)
        result.append({column, owned(before_.value(0, column))});
    return result;
}

ColumnValues EditBuffer::changes() const {
    ColumnValues result;
    for (size_t column = 0; column < changed_.size(); ++column)
        if (changed_[column]) result.append({static_cast<int>(column), *changed_[column]});
    return result;
}

} // namespace dao
