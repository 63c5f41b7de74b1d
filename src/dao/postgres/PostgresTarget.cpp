#include "dao/postgres/PostgresTarget.h"

#include "dao/postgres/PostgresSchema.h"

namespace dao {

using jet::ColumnType;

QByteArray PostgresTarget::name(QStringView declared) const {
    return '"' + declared.toUtf8().replace('"', "\"\"") + '"';
}

QByteArray PostgresTarget::parameter(int number, ColumnType type) const {
    const QByteArray parameter = '$' + QByteArray::number(number);
    switch (type) {
    case ColumnType::Boolean:
    case ColumnType::Int: return parameter + "::bigint";
    case ColumnType::Double:
    case ColumnType::Currency: return parameter + "::double precision";
    case ColumnType::Date: return parameter + "::timestamp";
    case ColumnType::Text: return parameter + "::text";
    case ColumnType::Binary: return parameter + "::bytea";
    case ColumnType::Unknown: break;
    }
    return parameter;
}

// The server knows the types of its values.
QByteArray PostgresTarget::operand(const QByteArray& value, ColumnType /*type*/) const {
    return value;
}

// The key is no text, so that a statement which would give it away in place of the text is seen to be wrong.
QByteArray PostgresTarget::collated(const QByteArray& text) const {
    return "mkl_key(" + text + ')';
}

// The server can tell texts apart by their keys or give them, not both: no function bears this name.
QByteArray PostgresTarget::collatedOutput(const QByteArray& text) const {
    return "mkl_text_by_key(" + text + ')';
}

QByteArray PostgresTarget::yesNo(const QByteArray& condition) const {
    return "(-((" + condition + ")::integer))";
}

QByteArray PostgresTarget::condition(const QByteArray& number) const {
    return '(' + number + " <> 0)";
}

QByteArray PostgresTarget::orderTerm(const QByteArray& value, bool descending) const {
    return value + (descending ? " DESC NULLS LAST" : " NULLS FIRST");
}

QByteArray PostgresTarget::declaredType(ColumnType type) const {
    switch (type) {
    case ColumnType::Boolean: return "yesno";
    case ColumnType::Int: return "integer";
    case ColumnType::Double: return "double precision";
    case ColumnType::Currency: return "currency";
    case ColumnType::Date: return "datetime";
    case ColumnType::Text: return "text";
    case ColumnType::Binary: return "bytea";
    case ColumnType::Unknown: break;
    }
    return "variant";
}

QByteArray PostgresTarget::rowIdentity(const QByteArray& table) const {
    return table + '.' + PostgresSchema::rowIdentityColumn;
}

QByteArray PostgresTarget::withRowIdentity(const QByteArray& table) const {
    return table;
}

} // namespace dao
