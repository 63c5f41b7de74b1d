#include "dao/StoredRowsCursor.h"

#include "dao/Errors.h"

#include <algorithm>

namespace dao {

StoredRowsCursor::StoredRowsCursor(std::shared_ptr<Connection> connection, std::shared_ptr<const Columns> columns,
                                   RowStore rows)
    : Cursor(std::move(connection), std::move(columns))
    , rows_(std::move(rows))
    , visited_(std::min<qsizetype>(rows_.size(), 1)) {}

void StoredRowsCursor::moveNext() {
    if (isEof()) mkl::throwError(err::NoCurrentRecord);
    moveTo(row_ + 1);
}

mkl::Variant StoredRowsCursor::value(int ordinal) const {
    if (isBof() || isEof()) mkl::throwError(err::NoCurrentRecord);
    return decode(rows_.value(row_, ordinal), columns().at(ordinal).type);
}

void StoredRowsCursor::moveTo(qsizetype row) {
    row_ = row;
    visited_ = std::min(std::max(visited_, row + 1), rows_.size());
}

void StoredRowsCursor::requireRows() const {
    if (rows_.isEmpty()) mkl::throwError(err::NoCurrentRecord);
}

Long SnapshotCursor::absolutePosition() const {
    return isBof() || isEof() ? -1 : static_cast<Long>(row());
}

void SnapshotCursor::moveFirst() {
    requireRows();
    moveTo(0);
}

void SnapshotCursor::moveLast() {
    requireRows();
    moveTo(rowCount() - 1);
}

void SnapshotCursor::movePrevious() {
    if (isBof()) mkl::throwError(err::NoCurrentRecord);
    moveTo(row() - 1);
}

void ForwardOnlyCursor::moveFirst() {
    mkl::throwError(err::InvalidOperation);
}

void ForwardOnlyCursor::moveLast() {
    mkl::throwError(err::InvalidOperation);
}

void ForwardOnlyCursor::movePrevious() {
    mkl::throwError(err::InvalidOperation);
}

} // namespace dao
