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

Long Field::Type() const {
    switch (column().type) {
    case jet::ColumnType::Unknown: return 0;
    case jet::ColumnType::Boolean: return dbBoolean;
    case jet::ColumnType::Int: return dbLong;
    case jet::ColumnType::Double: return dbDouble;
    case jet::ColumnType::Currency: return dbCurrency;
    case jet::ColumnType::Date: return dbDate;
    case jet::ColumnType::Text: return dbText;
    case jet::ColumnType::Binary: return dbLongBinary;
    }
    return 0;
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

void Field::setValue(const mkl::Variant& value) {
    recordset_->setValue(ordinal_, value);
}

Recordset::Recordset(std::unique_ptr<Cursor> cursor, QString name)
    : cursor_(std::move(cursor))
    , name_(std::move(name)) {}

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

// What Edit or AddNew began is lost with the row.
Cursor& Recordset::leavingTheRow() const {
    Cursor& result = cursor();
    result.dropEdit();
    return result;
}

QString Recordset::Name() const {
    cursor();
    return name_;
}

Long Recordset::Type() const {
    return cursor().type();
}

bool Recordset::Updatable() const {
    return cursor().isUpdatable();
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

void Recordset::setAbsolutePosition(Long position) {
    leavingTheRow().setAbsolutePosition(position);
}

float Recordset::PercentPosition() const {
    const Long position = cursor().absolutePosition();
    const Long last = cursor().recordCount() - 1;
    if (position < 0) mkl::throwError(err::NoCurrentRecord);
    return last > 0 ? 100.0F * static_cast<float>(position) / static_cast<float>(last) : 0.0F;
}

void Recordset::MoveFirst() {
    leavingTheRow().moveFirst();
}

void Recordset::MoveLast() {
    leavingTheRow().moveLast();
}

void Recordset::MoveNext() {
    leavingTheRow().moveNext();
}

void Recordset::MovePrevious() {
    leavingTheRow().movePrevious();
}

void Recordset::Move(Long rows) {
    leavingTheRow().moveBy(rows);
}

void Recordset::Move(Long rows, const mkl::Variant& startBookmark) {
    leavingTheRow().setBookmark(startBookmark);
    cursor().moveBy(rows);
}

void Recordset::FindFirst(QStringView criterion) {
    leavingTheRow().find(Cursor::FindMode::First, criterion);
}

void Recordset::FindNext(QStringView criterion) {
    leavingTheRow().find(Cursor::FindMode::Next, criterion);
}

void Recordset::FindPrevious(QStringView criterion) {
    leavingTheRow().find(Cursor::FindMode::Previous, criterion);
}

void Recordset::FindLast(QStringView criterion) {
    leavingTheRow().find(Cursor::FindMode::Last, criterion);
}

bool Recordset::NoMatch() const {
    return cursor().noMatch();
}

QString Recordset::Index() const {
    return cursor().index();
}

void Recordset::setIndex(const QString& name) {
    leavingTheRow().setIndex(name);
}

void Recordset::seek(QStringView comparison, std::span<const mkl::Variant> keys) {
    leavingTheRow().seek(comparison, keys);
}

mkl::Variant Recordset::Bookmark() const {
    return cursor().bookmark();
}

void Recordset::setBookmark(const mkl::Variant& bookmark) {
    leavingTheRow().setBookmark(bookmark);
}

mkl::Variant Recordset::LastModified() const {
    return cursor().lastModified();
}

mkl::Ref<Recordset> Recordset::Clone() const {
    return mkl::makeRef<Recordset>(cursor().clone(), name_);
}

QString Recordset::Filter() const {
    requireDerivable();
    return filter_;
}

void Recordset::setFilter(const QString& criterion) {
    requireDerivable();
    filter_ = criterion;
}

QString Recordset::Sort() const {
    requireDerivable();
    return sort_;
}

void Recordset::setSort(const QString& order) {
    requireDerivable();
    sort_ = order;
}

void Recordset::requireDerivable() const {
    if (!cursor().canDerive()) mkl::throwError(err::NotSupportedByType);
}

mkl::Ref<Recordset> Recordset::OpenRecordset(Long type) {
    return mkl::makeRef<Recordset>(cursor().derive(filter_, sort_, type), name_);
}

void Recordset::Requery() {
    leavingTheRow().requery();
}

void Recordset::Edit() {
    cursor().edit();
}

void Recordset::AddNew() {
    cursor().addNew();
}

void Recordset::Update() {
    cursor().update();
}

void Recordset::CancelUpdate() {
    cursor().cancelUpdate();
}

void Recordset::Delete() {
    leavingTheRow().remove();
}

dao::EditMode Recordset::EditMode() const {
    return cursor().editMode();
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
    const Cursor& rows = cursor();
    const int found = rows.columns().find(name);
    if (found < 0) mkl::throwError(err::ItemNotFound, {name.toString()});
    return rows.value(found);
}

mkl::Variant Recordset::value(int ordinal) const {
    return cursor().value(checkedOrdinal(ordinal));
}

void Recordset::setValue(QStringView name, const mkl::Variant& value) {
    cursor().setValue(requiredOrdinal(name), value);
}

void Recordset::setValue(int ordinal, const mkl::Variant& value) {
    cursor().setValue(checkedOrdinal(ordinal), value);
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
