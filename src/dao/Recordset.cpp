#include "dao/Recordset.h"

#include "dao/Cursor.h"
#include "dao/Errors.h"

namespace dao {

Field::Field(mkl::Ref<Recordset> recordset, int ordinal)
    : recordset_(std::move(recordset))
    , ordinal_(ordinal) {}

const jet::OutputColumn& Field::column() const {
    return recordset_->cursor().columns().at(ordinal_);
}

QString Field::Name() const {
    return column().name;
}

QString Field::SourceTable() const {
    return column().sourceTable;
}

QString Field::SourceField() const {
    return column().sourceColumn;
}

mkl::Variant Field::Value() const {
    return recordset_->value(ordinal_);
}

void Field::setValue(const mkl::Variant&) {
    recordset_->cursor();
    mkl::throwError(err::UpdateWithoutEdit);
}

Recordset::Recordset(std::unique_ptr<Cursor> cursor)
    : cursor_(std::move(cursor)) {}

Recordset::~Recordset() = default;

Cursor& Recordset::cursor() const {
    if (!isOpen()) mkl::throwError(err::ObjectInvalid);
    return *cursor_;
}

bool Recordset::isOpen() const {
    return cursor_ && cursor_->isAlive();
}

void Recordset::Close() {
    cursor();
    cursor_.reset();
}

Long Recordset::Type() const {
    return cursor().type();
}

bool Recordset::Bof() const {
    return cursor().isBof();
}

bool Recordset::Eof() const {
    return cursor().isEof();
}

Long Recordset::RecordCount() const {
    return cursor().recordCount();
}

Long Recordset::AbsolutePosition() const {
    return cursor().absolutePosition();
}

bool Recordset::NoMatch() const {
    return cursor().noMatch();
}

void Recordset::MoveFirst() {
    cursor().moveFirst();
}

void Recordset::MoveLast() {
    cursor().moveLast();
}

void Recordset::MoveNext() {
    cursor().moveNext();
}

void Recordset::MovePrevious() {
    cursor().movePrevious();
}

QString Recordset::Index() const {
    return cursor().index();
}

void Recordset::setIndex(const QString& name) {
    cursor().setIndex(name);
}

void Recordset::Seek(QStringView comparison, const mkl::Variant& key) {
    cursor().seek(comparison, key);
}

Field Recordset::Fields(QStringView name) {
    return {mkl::Ref<Recordset>(this), requiredOrdinal(name)};
}

Field Recordset::Fields(Long ordinal) {
    return {mkl::Ref<Recordset>(this), checkedOrdinal(ordinal)};
}

Long Recordset::FieldCount() const {
    return cursor().columns().count();
}

int Recordset::ordinal(QStringView name) const {
    return cursor().columns().find(name);
}

mkl::Variant Recordset::value(QStringView name) const {
    return cursor().value(requiredOrdinal(name));
}

mkl::Variant Recordset::value(int ordinal) const {
    return cursor().value(checkedOrdinal(ordinal));
}

int Recordset::requiredOrdinal(QStringView name) const {
    const int found = ordinal(name);
    if (found < 0) mkl::throwError(err::ItemNotFound, {name.toString()});
    return found;
}

int Recordset::checkedOrdinal(int ordinal) const {
    if (ordinal < 0 || ordinal >= FieldCount()) mkl::throwError(err::ItemNotFound, {QString::number(ordinal)});
    return ordinal;
}

} // namespace dao
