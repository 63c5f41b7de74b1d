#include "catalogue/mdb/MdbTable.h"

#include "base/DateTime.h"
#include "catalogue/mdb/JetText.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace mkl {

namespace {

constexpr int rowOffsetMask = 0x1fff;

template<class T>
T numberOf(QByteArrayView bytes) {
    T value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value; // the format is little-endian, and so is every machine that this runs on
}

/// Size of the values of a type in a row, 0 where it varies.
int fixedSize(int type) {
    switch (type) {
    case MDB_BYTE: return 1;
    case MDB_INT: return 2;
    case MDB_LONGINT:
    case MDB_FLOAT: return 4;
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_DATETIME: return 8;
    default: return 0;
    }
}

bool isWholeNumber(int type) {
    return type == MDB_BYTE || type == MDB_INT || type == MDB_LONGINT;
}

Long wholeNumber(int type, QByteArrayView bytes) {
    if (type == MDB_BYTE) return numberOf<quint8>(bytes);
    return type == MDB_INT ? numberOf<qint16>(bytes) : numberOf<qint32>(bytes);
}

std::optional<Variant> doubleOf(int type, QByteArrayView bytes) {
    if (isWholeNumber(type)) return Variant(static_cast<double>(wholeNumber(type, bytes)));
    const double number = type == MDB_FLOAT ? double(numberOf<float>(bytes)) : numberOf<double>(bytes);
    if (!std::isfinite(number)) return {};
    return Variant(number);
}

std::optional<Variant> dateOf(QByteArrayView bytes) {
    const auto days = numberOf<double>(bytes);
    if (!(days > firstDay - 1 && days < lastDay + 1)) return {};
    const auto wholeSeconds = dateFromParts(partsOfDate(days));
    if (!wholeSeconds) return {}; // rounded up into the year 10000
    return Variant::date(*wholeSeconds);
}

} // namespace

MdbTable::MdbTable(MdbHandle& handle, quint32 page)
    : handle_(&handle)
    , entry_(std::make_unique<MdbCatalogEntry>()) {
    entry_->mdb = handle_;
    entry_->object_type = MDB_TABLE;
    entry_->table_pg = page;
    table_.reset(mdb_read_table(entry_.get()));
    if (!table_ || table_->num_cols == 0 || table_->num_cols > MDB_MAX_COLS) return;
    mostColumns_ = mdb_get_int16(handle_->pg_buf, handle_->fmt->tab_num_cols_offset - 4); // still the page of the head
    if (!mdb_read_columns(table_.get()) || table_->columns->len != table_->num_cols) return;
    fields_.resize(table_->num_cols);
    mdb_rewind_table(table_.get());
    readable_ = true;
}

const MdbColumn& MdbTable::column(int index) const {
    return *static_cast<const MdbColumn*>(g_ptr_array_index(table_->columns, index));
}

QStringList MdbTable::columnNames() const {
    QStringList names;
    for (int i = 0; i < int(table_->num_cols); ++i)
        names.append(QString::fromUtf8(column(i).name));
    return names;
}

bool MdbTable::fits(int index, Variant::Type type) const {
    const MdbColumn& source = column(index);
    const int size = fixedSize(source.col_type);
    if (size > 0 && (source.col_size != size || !source.is_fixed)) return false;
    switch (type) {
    case Variant::Type::Boolean: return source.col_type == MDB_BOOL;
    case Variant::Type::Int: return isWholeNumber(source.col_type);
    case Variant::Type::Double:
        return isWholeNumber(source.col_type) || source.col_type == MDB_FLOAT || source.col_type == MDB_DOUBLE;
    case Variant::Type::Currency: return source.col_type == MDB_MONEY;
    case Variant::Type::Date: return source.col_type == MDB_DATETIME;
    case Variant::Type::Text: return source.col_type == MDB_TEXT || source.col_type == MDB_MEMO;
    default: return false;
    }
}

bool MdbTable::fetch() {
    if (!mdb_fetch_row(table_.get())) return false;
    // The library has cut this row up already, but keeps to itself which values are Null.
    const bool found = mdb_find_row(handle_, int(table_->cur_row) - 1, &rowStart_, &rowSize_) == 0;
    rowStart_ &= rowOffsetMask;
    if (!found || mdb_crack_row(table_.get(), rowStart_, rowSize_, fields_.data()) < 0) rowSize_ = 0;
    return true;
}

int MdbTable::columnsInRow() const {
    const uchar* row = handle_->pg_buf + rowStart_;
    return IS_JET3(handle_) ? row[0] : row[0] | row[1] << 8;
}

bool MdbTable::isRowSound() const {
    const qint64 end = rowStart_ + qint64(rowSize_);
    if (rowSize_ < 2 || end > handle_->fmt->pg_size) return false;
    if (columnsInRow() == 0 || columnsInRow() > mostColumns_) return false;
    const bool inside = std::ranges::all_of(fields_, [&](const MdbField& field) {
        return field.is_null || (field.siz >= 0 && field.start >= rowStart_ && qint64(field.start) + field.siz <= end);
    });
    return inside && (IS_JET3(handle_) || table_->num_var_cols == 0 || partsKeepTheirOrder());
}

/// A row is: count of columns, fixed fields, variable fields; from the end: mask of Nulls, count of the variable
/// fields, their offsets, and last the offset behind them.
bool MdbTable::partsKeepTheirOrder() const {
    const auto wordAt = [this](int position) { return mdb_get_int16(handle_->pg_buf, position); };
    const int maskStart = rowStart_ + int(rowSize_) - (columnsInRow() + 7) / 8;
    const int countAt = maskStart - 2;
    if (countAt < rowStart_ + 2) return false;
    const int variableCount = wordAt(countAt);
    const int offsetsStart = countAt - 2 * (variableCount + 1);
    if (offsetsStart < rowStart_ + 2) return false;
    const int variableStart = rowStart_ + wordAt(countAt - 2);
    const int variableEnd = rowStart_ + wordAt(offsetsStart);
    if (variableEnd > offsetsStart) return false;
    return std::ranges::all_of(fields_, [&](const MdbField& field) {
        if (field.is_null) return true;
        const int fieldEnd = field.start + field.siz;
        return field.is_fixed ? fieldEnd <= variableStart : field.start >= variableStart && fieldEnd <= variableEnd;
    });
}

/// A column that was added after the row was written is not in the row's mask of Nulls.
bool MdbTable::isInRow(int index) const {
    return column(index).col_num < columnsInRow();
}

QByteArrayView MdbTable::bytesOf(int index) const {
    return {handle_->pg_buf + fields_[index].start, fields_[index].siz};
}

std::optional<Variant> MdbTable::value(int index, Variant::Type type) const {
    const bool null = fields_[index].is_null || !isInRow(index);
    if (type == Variant::Type::Boolean) return Variant(!null); // a yes/no value is its bit in that mask
    if (null) return Variant();
    const int sourceType = column(index).col_type;
    const QByteArrayView bytes = bytesOf(index);
    if (bytes.size() < fixedSize(sourceType)) return {};
    switch (type) {
    case Variant::Type::Int: return Variant(wholeNumber(sourceType, bytes));
    case Variant::Type::Double: return doubleOf(sourceType, bytes);
    case Variant::Type::Currency: return Variant::currency(numberOf<qint64>(bytes));
    case Variant::Type::Date: return dateOf(bytes);
    default: break;
    }
    if (sourceType == MDB_TEXT) return textOf(bytes);
    const auto memo = memoBytes(bytes);
    return memo ? textOf(*memo) : std::nullopt;
}

/// A memo stands behind its twelve bytes of head, in one row elsewhere or in a chain of rows.
std::optional<QByteArray> MdbTable::memoBytes(QByteArrayView field) const {
    constexpr quint32 inlineFlag = 0x80000000, singleFlag = 0x40000000;
    if (field.size() < MDB_MEMO_OVERHEAD) return {};
    const auto head = numberOf<quint32>(field);
    const auto length = qsizetype(head & ~(inlineFlag | singleFlag));
    if (head & inlineFlag) return field.sliced(MDB_MEMO_OVERHEAD).toByteArray();

    QByteArray memo;
    auto position = numberOf<quint32>(field.sliced(4));
    while (position != 0 && memo.size() < length) {
        void* page = nullptr;
        int start = 0;
        size_t size = 0;
        if (mdb_find_pg_row(handle_, int(position), &page, &start, &size) != 0) return {};
        QByteArrayView chunk(static_cast<const uchar*>(page) + start, qsizetype(size));
        position = 0;
        if (!(head & singleFlag)) {
            if (chunk.size() <= 4) return {};
            position = numberOf<quint32>(chunk);
            chunk = chunk.sliced(4);
        }
        memo += chunk;
    }
    return memo.size() == length ? std::optional(memo) : std::nullopt;
}

std::optional<Variant> MdbTable::textOf(QByteArrayView bytes) const {
    if (!IS_JET3(handle_)) {
        auto text = decodeJetText(bytes);
        return text ? std::optional(Variant(std::move(*text))) : std::nullopt;
    }
    QByteArray utf8(bytes.size() * 4 + 1, '\0');
    const int length = mdb_unicode2ascii(handle_, bytes.data(), bytes.size(), utf8.data(), utf8.size());
    if (length < 0) return {};
    return Variant(QString::fromUtf8(utf8.constData(), length));
}

} // namespace mkl
