#include "dao/TableCursor.h"

#include "dao/Errors.h"

namespace dao {

namespace {

std::shared_ptr<const Columns> columnsOf(const jet::Table& table) {
    QList<jet::OutputColumn> columns;
    for (const jet::Column& column : table.columns)
        columns.append({column.name, column.type, table.name, column.name});
    return std::make_shared<Columns>(columns);
}

} // namespace

TableCursor::TableCursor(std::shared_ptr<Connection> connection, const jet::Table& table)
    : Cursor(connection, columnsOf(table))
    , table_(table)
    , reader_(*connection, table_, nullptr) {
    moveToEnd(Direction::Forward);
}

Long TableCursor::recordCount() const {
    return static_cast<Long>(reader_.count());
}

void TableCursor::moveFirst() {
    moveToEnd(Direction::Forward);
    if (place_ == Place::Empty) mkl::throwError(err::NoCurrentRecord);
}

void TableCursor::moveLast() {
    moveToEnd(Direction::Backward);
    if (place_ == Place::Empty) mkl::throwError(err::NoCurrentRecord);
}

void TableCursor::moveNext() {
    if (place_ == Place::Bof)
        moveFirst();
    else
        moveBeside(Direction::Forward, Place::Eof);
}

void TableCursor::movePrevious() {
    if (place_ == Place::Eof)
        moveLast();
    else
        moveBeside(Direction::Backward, Place::Bof);
}

mkl::Variant TableCursor::value(int ordinal) const {
    if (place_ != Place::Row) mkl::throwError(err::NoCurrentRecord);
    if (changeStamp_ != connection().changeStamp()) {
        if (!reader_.readAgain(row_)) mkl::throwError(err::RecordDeleted);
        changeStamp_ = connection().changeStamp();
    }
    return decode(row_.value(0, ordinal), columns().at(ordinal).type);
}

void TableCursor::setIndex(const QString& name) {
    const jet::Index* chosen = table_.index(name);
    if (!chosen && !name.isEmpty()) mkl::throwError(err::NoSuchIndex, {name});
    index_ = chosen ? chosen->name : QString();
    reader_ = TableReader(connection(), table_, chosen);
    moveToEnd(Direction::Forward);
}

void TableCursor::seek(QStringView comparison, std::span<const mkl::Variant> keys) {
    if (index_.isEmpty()) mkl::throwError(err::NoCurrentIndex);
    place(reader_.seek(comparison, keys, row_), Place::Nowhere);
    noMatch_ = place_ == Place::Nowhere;
}

void TableCursor::moveToEnd(Direction from) {
    place(reader_.readEnd(from, row_), Place::Empty);
}

void TableCursor::moveBeside(Direction direction, Place beyond) {
    if (place_ != Place::Row) mkl::throwError(err::NoCurrentRecord);
    place(reader_.readBeside(direction, row_), beyond);
}

void TableCursor::place(bool found, Place otherwise) {
    place_ = found ? Place::Row : otherwise;
    changeStamp_ = connection().changeStamp();
}

} // namespace dao
