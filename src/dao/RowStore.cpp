#include "dao/RowStore.h"

#include <cstring>
#include <limits>

namespace dao {

namespace {

constexpr qsizetype largestBlock = 1 << 20;

enum Mark : quint8 { Null, Int8, Int16, Int32, Int64, Real, Text, Blob };

constexpr int numberSize(quint8 mark) {
    constexpr int sizes[] = {0, 1, 2, 4, 8, 8};
    return sizes[mark];
}

template<class T>
T load(const char* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

// Lengths take seven bits a byte, the highest bit says that more follow.
qsizetype readLength(const char*& from) {
    qsizetype length = 0;
    for (int shift = 0;; shift += 7) {
        const auto byte = static_cast<quint8>(*from++);
        length |= qsizetype(byte & 0x7F) << shift;
        if (byte < 0x80) return length;
    }
}

char* writeLength(char* to, qsizetype length) {
    for (; length >= 0x80; length >>= 7)
        *to++ = static_cast<char>(0x80 | (length & 0x7F));
    *to++ = static_cast<char>(length);
    return to;
}

const char* afterValue(const char* from) {
    const auto mark = static_cast<quint8>(*from++);
    if (mark < Text) return from + numberSize(mark);
    const qsizetype length = readLength(from);
    return from + length;
}

} // namespace

inline char* RowStore::room(qsizetype size) {
    constexpr qsizetype markAndLength = 11;
    return end_ - next_ >= size + markAndLength ? next_ : nextBlock(size + markAndLength);
}

char* RowStore::nextBlock(qsizetype size) {
    const qsizetype begun = next_ - rowStart_; // a row lies in one block
    const qsizetype blockSize = std::max(nextBlockSize_, begun + size);
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(static_cast<size_t>(blockSize)));
    char* block = blocks_.back().get();
    if (begun > 0) std::memcpy(block, rowStart_, static_cast<size_t>(begun));
    rowStart_ = block;
    next_ = block + begun;
    end_ = block + blockSize;
    blockBytes_ += blockSize;
    nextBlockSize_ = std::min(largestBlock, nextBlockSize_ * 4);
    return next_;
}

template<class T>
void RowStore::appendNumber(quint8 mark, T number) {
    char* to = room(sizeof number);
    *to++ = static_cast<char>(mark);
    std::memcpy(to, &number, sizeof number);
    next_ = to + sizeof number;
}

void RowStore::appendNull() {
    *room(0) = static_cast<char>(Null);
    ++next_;
}

void RowStore::appendInteger(qint64 value) {
    const auto tryAs = [&]<class T>(quint8 mark, T narrow) {
        if (narrow != value) return false;
        appendNumber(mark, narrow);
        return true;
    };
    if (tryAs(Int8, static_cast<qint8>(value)) || tryAs(Int16, static_cast<qint16>(value)) ||
        tryAs(Int32, static_cast<qint32>(value)))
        return;
    appendNumber(Int64, value);
}

void RowStore::appendReal(double value) {
    appendNumber(Real, value);
}

void RowStore::appendBytes(quint8 mark, QByteArrayView bytes) {
    char* to = room(bytes.size());
    *to++ = static_cast<char>(mark);
    to = writeLength(to, bytes.size());
    if (!bytes.isEmpty()) std::memcpy(to, bytes.data(), static_cast<size_t>(bytes.size()));
    next_ = to + bytes.size();
}

void RowStore::appendText(QByteArrayView utf8) {
    appendBytes(Text, utf8);
}

void RowStore::appendBlob(QByteArrayView bytes) {
    appendBytes(Blob, bytes);
}

void RowStore::append(const StoredValue& value) {
    switch (value.kind) {
    case StoredValue::Kind::Null: appendNull(); break;
    case StoredValue::Kind::Integer: appendInteger(value.integer); break;
    case StoredValue::Kind::Real: appendReal(value.real); break;
    case StoredValue::Kind::Text: appendText(value.bytes); break;
    case StoredValue::Kind::Blob: appendBlob(value.bytes); break;
    }
}

void RowStore::endRow() {
    rows_.push_back(rowStart_);
    rowStart_ = next_;
}

// The newest block, which is the largest, serves the next rows.
void RowStore::clear() {
    rows_.clear();
    if (blocks_.empty()) return;
    blocks_.erase(blocks_.begin(), blocks_.end() - 1);
    rowStart_ = next_ = blocks_.back().get();
    blockBytes_ = end_ - next_;
}

const char* RowStore::find(qsizetype row, int column) const {
    const char* from = rows_[static_cast<size_t>(row)];
    for (int skipped = 0; skipped < column; ++skipped)
        from = afterValue(from);
    return from;
}

StoredValue RowStore::value(qsizetype row, int column) const {
    const char* from = find(row, column);
    const auto mark = static_cast<quint8>(*from++);
    switch (mark) {
    case Int8: return StoredValue::ofInteger(load<qint8>(from));
    case Int16: return StoredValue::ofInteger(load<qint16>(from));
    case Int32: return StoredValue::ofInteger(load<qint32>(from));
    case Int64: return StoredValue::ofInteger(load<qint64>(from));
    case Real: return StoredValue::ofReal(load<double>(from));
    case Null: return {};
    default: break;
    }
    const qsizetype length = readLength(from);
    const QByteArray bytes = QByteArray::fromRawData(from, length);
    return mark == Text ? StoredValue::ofText(bytes) : StoredValue::ofBlob(bytes);
}

mkl::Variant RowStore::decoded(qsizetype row, int column, jet::ColumnType type) const {
    using jet::ColumnType;
    const auto whole = [&](qint32 number) -> mkl::Variant {
        switch (type) {
        case ColumnType::Double:
        case ColumnType::Currency: return decode(StoredValue::ofInteger(number), type);
        case ColumnType::Boolean: return number != 0;
        default: return mkl::Long(number);
        }
    };
    const char* from = find(row, column);
    switch (static_cast<quint8>(*from++)) {
    case Int8: return whole(load<qint8>(from));
    case Int16: return whole(load<qint16>(from));
    case Int32: return whole(load<qint32>(from));
    case Text: {
        if (type == ColumnType::Date || type == ColumnType::Unknown) break;
        const qsizetype length = readLength(from);
        return QString::fromUtf8(from, length);
    }
    case Null: return {};
    default: break;
    }
    return decode(value(row, column), type);
}

std::optional<QByteArrayView> RowStore::text(qsizetype row, int column) const {
    const char* from = find(row, column);
    if (static_cast<quint8>(*from++) != Text) return std::nullopt;
    const qsizetype length = readLength(from);
    return QByteArrayView(from, length);
}

qsizetype RowStore::bytesTaken() const {
    return blockBytes_ +
           static_cast<qsizetype>(rows_.capacity() * sizeof(rows_[0]) + blocks_.capacity() * sizeof(blocks_[0]));
}

} // namespace dao
