#include "dao/postgres/PostgresMarks.h"

namespace dao {

namespace {

constexpr char sign = '\x01';

StoredValue marked(char kind, const QByteArray& bytes) {
    return StoredValue::ofText(QByteArray(1, sign) + kind + bytes);
}

} // namespace

StoredValue markedValue(const StoredValue& value) {
    switch (value.kind) {
    case StoredValue::Kind::Null: break;
    case StoredValue::Kind::Integer: return marked('i', QByteArray::number(value.integer));
    case StoredValue::Kind::Real: return marked('r', QByteArray::number(value.real, 'g', 17));
    case StoredValue::Kind::Text: return value.bytes.startsWith(sign) ? marked('t', value.bytes) : value;
    case StoredValue::Kind::Blob: return marked('b', value.bytes.toHex());
    }
    return value;
}

StoredValue unmarkedValue(QByteArrayView stored) {
    const QByteArray bytes = stored.toByteArray();
    if (!bytes.startsWith(sign) || bytes.size() < 2) return StoredValue::ofText(bytes);
    const QByteArray rest = bytes.sliced(2);
    switch (bytes[1]) {
    case 'i': return StoredValue::ofInteger(rest.toLongLong());
    case 'r': return StoredValue::ofReal(rest.toDouble());
    case 'b': return StoredValue::ofBlob(QByteArray::fromHex(rest));
    case 't': return StoredValue::ofText(rest);
    default: return StoredValue::ofText(bytes);
    }
}

} // namespace dao
