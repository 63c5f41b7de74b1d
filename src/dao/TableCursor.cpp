#include "dao/TableCursor.h"

#include "dao/Errors.h"
#include "dao/TableBookmark.h"

namespace dao {

namespace {

std::shared_ptr<const Columns> columnsOf(const jet::Table& table) {
    QList<jet::OutputColumn> columns;
    for (const jet::Column& column : table.columns)
        columns.append({column.name, column.type, table.name, column.name});
    return std::make_shared<Columns>(columns);
}

QList<EditColumn> editColumnsOf(const jet::Table& table) {
    QList<EditColumn> columns;
    for (const jet::Column& column : table.columns)
        columns.append({column.name, column, isWritable(column)});
    return columns;
}

} // namespace

TableCursor::TableCursor(std::shared_ptr<Connection> connection, const jet::Table& table)
    : Cursor(connection, columnsOf(table))
    , table_(table)
    , reader_(*connection, table_, nullptr)
    , editor_(connection, table_)
    , buffer_(editColumnsOf(table_))
    , generation_(TableBookmark::newGeneration()) {
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
    if (buffer_.isActive()) return buffer_.value(ordinal);
    requireRow();
    if (changeStamp_ != connection().changeStamp()) readAgain();
    return decode(row_.value(0, ordinal), columns().at(ordinal).type);
}

void TableCursor::requireRow() const {
    if (place_ != Place::Row) mkl::throwError(err::NoCurrentRecord);
    if (deleted_) mkl::throwError(err::RecordDeleted);
}

void TableCursor::readAgain() const {
    if (!reader_.readAgain(row_)) mkl::throwError(err::RecordDeleted);
    changeStamp_ = connection().changeStamp();
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
    deleted_ = false;
    changeStamp_ = connection().changeStamp();
}

mkl::Variant TableCursor::bookmark() const {
    if (place_ != Place::Row) mkl::throwError(err::NoCurrentRecord);
    return TableBookmark::encode(generation_, editor_.keyOf(row_));
}

void TableCursor::setBookmark(const mkl::Variant& bookmark) {
    const auto key = TableBookmark::decode(bookmark, generation_);
    if (!key) mkl::throwError(err::InvalidBookmark);
    if (!editor_.read(*key, row_)) mkl::throwError(err::RecordDeleted);
    place(true, Place::Row);
}

mkl::Variant TableCursor::lastModified() const {
    if (!lastModified_) mkl::throwError(err::NoCurrentRecord);
    return TableBookmark::encode(generation_, *lastModified_);
}

std::unique_ptr<Cursor> TableCursor::clone() const {
    auto result = std::make_unique<TableCursor>(sharedConnection(), table_);
    result->place_ = Place::Nowhere;
    result->generation_ = generation_;
    return result;
}

void TableCursor::edit() {
    buffer_.clear();
    connection().requireWritable();
    requireRow();
    readAgain();
    buffer_.beginEdit(row_);
}

void TableCursor::addNew() {
    buffer_.clear();
    buffer_.beginAdd(editor_.initialValues());
}

void TableCursor::update() {
    switch (buffer_.mode()) {
    case EditMode::None: mkl::throwError(err::UpdateWithoutEdit);
    case EditMode::InProgress: return storeEdit();
    case EditMode::Add: return storeAdd();
    }
}

void TableCursor::storeEdit() {
    lastModified_ = editor_.update(editor_.keyOf(row_), buffer_.changes(), buffer_.before(), &row_);
    buffer_.clear();
    place(true, Place::Row);
}

void TableCursor::storeAdd() {
    lastModified_ = editor_.insert(buffer_.changes());
    buffer_.clear();
    if (place_ == Place::Empty) place_ = Place::Nowhere;
}

void TableCursor::cancelUpdate() {
    if (!buffer_.isActive()) mkl::throwError(err::UpdateWithoutEdit);
    buffer_.clear();
}

void TableCursor::remove() {
    connection().requireWritable();
    requireRow();
    editor_.remove(editor_.keyOf(row_));
    deleted_ = true;
}

} // namespace dao
