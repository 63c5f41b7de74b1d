#pragma once
// A value as the engine stores it, and its two ways into the dialect's types.
#include "base/Variant.h"
#include "jet/model/Schema.h"

#include <QByteArray>
#include <QList>

namespace dao {

struct StoredValue {
    enum class Kind : quint8 { Null, Integer, Real, Text, Blob };

    Kind kind = Kind::Null;
    qint64 integer = 0;
    double real = 0;
    QByteArray bytes; ///< UTF-8 of a text; may refer to memory of the row store that gave it

    static StoredValue ofInteger(qint64 value) { return {Kind::Integer, value, 0, {}}; }
    static StoredValue ofReal(double value) { return {Kind::Real, 0, value, {}}; }
    static StoredValue ofText(QByteArray utf8) { return {Kind::Text, 0, 0, std::move(utf8)}; }
    static StoredValue ofBlob(QByteArray bytes) { return {Kind::Blob, 0, 0, std::move(bytes)}; }

    /// The same to the bit.
    bool operator==(const StoredValue& other) const = default;
};

/// A copy that does not refer to a row store.
StoredValue owned(const StoredValue& value);

/// A value of a row, by the place of its column in the table.
struct ColumnValue {
    int column = 0;
    StoredValue value; ///< owns its bytes
};
using ColumnValues = QList<ColumnValue>;

/// The value in the form in which it is stored where no column decides: yes/no -1 or 0, a date
/// "YYYY-MM-DD HH:MM:SS", Currency a number (see storedCurrency).
StoredValue encode(const mkl::Variant& value);

/// The value in the form of a column of that type. 6 for a number out of range, 3349 for an amount that would not come
/// back, 3421 for anything else that does not fit.
StoredValue encodeFor(const mkl::Variant& value, jet::ColumnType type, const QString& columnName);

/// The same for a column with a size: 3163 for a text that is too long, 6 for a number beyond the bytes of its type.
StoredValue encodeFor(const mkl::Variant& value, const jet::Column& column);

/// What programs see of a stored value. A value of another kind than the column's type stands for itself:
/// a whole number beyond 32 bits is a Double where that is exact, else its digits.
mkl::Variant decode(const StoredValue& value, jet::ColumnType type);

} // namespace dao
