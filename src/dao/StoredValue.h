#pragma once
// A value as the engine stores it, and its two ways into the dialect's types.
#include "base/Variant.h"
#include "jet/Schema.h"

#include <QByteArray>

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
};

/// The value in the form in which it is stored where no column decides: yes/no -1 or 0, a date
/// "YYYY-MM-DD HH:MM:SS", Currency a number (see storedCurrency).
StoredValue encode(const mkl::Variant& value);

/// The value in the form of a column of that type. 3421 where it does not fit.
StoredValue encodeFor(const mkl::Variant& value, jet::ColumnType type, const QString& columnName);

/// What programs see of a stored value. A value of another kind than the column's type stands for itself:
/// a whole number beyond 32 bits is a Double where that is exact, else its digits.
mkl::Variant decode(const StoredValue& value, jet::ColumnType type);

} // namespace dao
