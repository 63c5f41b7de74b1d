#include "dao/StoredValue.h"

#include "base/DateTime.h"
#include "dao/Errors.h"
#include "jet/functions/Packed.h"

#include <cmath>
#include <limits>

namespace dao {

using jet::ColumnType;
using mkl::Variant;

namespace {

constexpr qint64 exactInDouble = qint64(1) << 53;

double tenThousandthsOf(double amount) {
    return std::nearbyint(amount * 10000.0);
}

// Currency is stored as the nearest floating number, not as ten-thousandths: other tools read the amount, sums and
// comparisons of the engine agree with it, and rounding to four decimals gives the exact amount back up to 200
// thousand million. What does not come back is refused.
StoredValue storedCurrency(qint64 tenThousandths) {
    const double amount = static_cast<double>(tenThousandths) / 10000.0;
    const bool isExact =
        std::llabs(tenThousandths) <= exactInDouble && tenThousandthsOf(amount) == static_cast<double>(tenThousandths);
    if (!isExact) mkl::throwError(err::NumericFieldOverflow);
    return StoredValue::ofReal(amount);
}

Variant decodeInteger(qint64 value) {
    if (value >= std::numeric_limits<mkl::Long>::min() && value <= std::numeric_limits<mkl::Long>::max())
        return static_cast<mkl::Long>(value);
    if (value >= -exactInDouble && value <= exactInDouble) return static_cast<double>(value);
    return QString::number(value);
}

Variant decodeNumber(double number, ColumnType type) {
    if (type == ColumnType::Boolean) return number != 0.0;
    const bool isAmount = type == ColumnType::Currency && std::fabs(tenThousandthsOf(number)) <= exactInDouble;
    return isAmount ? Variant::currency(static_cast<qint64>(tenThousandthsOf(number))) : Variant(number);
}

Variant decodeText(const QByteArray& utf8, ColumnType type) {
    const QString text = QString::fromUtf8(utf8);
    if (type == ColumnType::Date)
        if (const auto days = mkl::dateFromIso(text)) return Variant::date(*days);
    if (type == ColumnType::Unknown && jet::isPacked(utf8)) return jet::unpacked(text);
    return text;
}

StoredValue convert(const Variant& value, ColumnType type) {
    switch (type) {
    case ColumnType::Boolean: return StoredValue::ofInteger(value.toBoolean() ? -1 : 0);
    case ColumnType::Int: return StoredValue::ofInteger(value.toLong());
    case ColumnType::Double: return StoredValue::ofReal(value.toDouble());
    case ColumnType::Currency: return storedCurrency(value.toCurrency());
    case ColumnType::Date: return encode(Variant::date(value.toDate()));
    case ColumnType::Text: return StoredValue::ofText(value.toText().toUtf8());
    default: return encode(value);
    }
}

// The size of a text counts characters as programs count them.
void requireLength(const QByteArray& utf8, const jet::Column& column) {
    if (column.size <= 0 || utf8.size() <= column.size) return;
    if (QString::fromUtf8(utf8).size() > column.size) mkl::throwError(err::FieldTooSmall, {column.name});
}

void requireRange(qint64 number, int bytes) {
    const bool fits = bytes == 1 ? number >= 0 && number <= 255
                      : bytes == 2
                          ? number >= std::numeric_limits<qint16>::min() && number <= std::numeric_limits<qint16>::max()
                          : true;
    if (!fits) mkl::throwError(mkl::err::Overflow);
}

} // namespace

StoredValue owned(const StoredValue& value) {
    StoredValue copy = value;
    copy.bytes = QByteArray(value.bytes.constData(), value.bytes.size());
    return copy;
}

StoredValue encode(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null: return {};
    case Variant::Type::Boolean:
    case Variant::Type::Int: return StoredValue::ofInteger(value.toLong());
    case Variant::Type::Double: return StoredValue::ofReal(value.toDouble());
    case Variant::Type::Currency: return storedCurrency(value.toCurrency());
    case Variant::Type::Date: return StoredValue::ofText(mkl::isoFromDate(value.toDate()).toLatin1());
    case Variant::Type::Text: return StoredValue::ofText(value.toText().toUtf8());
    case Variant::Type::Binary: return StoredValue::ofBlob(value.toBinary());
    }
    return {};
}

StoredValue encodeFor(const Variant& value, ColumnType type, const QString& columnName) {
    if (value.isNull()) return {};
    try {
        return convert(value, type);
    } catch (const mkl::RunTimeError& error) {
        if (error.number() == mkl::err::Overflow || error.number() == err::NumericFieldOverflow) throw;
        mkl::throwError(err::ConversionError, {columnName}, error.description());
    }
}

StoredValue encodeFor(const Variant& value, const jet::Column& column) {
    StoredValue stored = encodeFor(value, column.type, column.name);
    if (stored.kind == StoredValue::Kind::Text && column.type == ColumnType::Text) requireLength(stored.bytes, column);
    if (stored.kind == StoredValue::Kind::Integer && column.type == ColumnType::Int)
        requireRange(stored.integer, column.size);
    return stored;
}

Variant decode(const StoredValue& value, ColumnType type) {
    switch (value.kind) {
    case StoredValue::Kind::Null: return {};
    case StoredValue::Kind::Integer:
        if (type == ColumnType::Double || type == ColumnType::Boolean || type == ColumnType::Currency)
            return decodeNumber(static_cast<double>(value.integer), type);
        return decodeInteger(value.integer);
    case StoredValue::Kind::Real: return decodeNumber(value.real, type);
    case StoredValue::Kind::Text: return decodeText(value.bytes, type);
    case StoredValue::Kind::Blob: return QByteArray(value.bytes.constData(), value.bytes.size());
    }
    return {};
}

} // namespace dao
