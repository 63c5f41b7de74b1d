#include "dao/sqlite/SqliteTarget.h"

#include "dao/Constants.h"
#include "dao/sqlite/SqliteFunctions.h"

namespace dao {

using jet::ColumnType;

QByteArray SqliteTarget::name(QStringView declared) const {
    return '"' + declared.toUtf8().replace('"', "\"\"") + '"';
}

QByteArray SqliteTarget::parameter(int number, ColumnType) const {
    return '?' + QByteArray::number(number);
}

// The engine knows no dates, amounts and yes/no: a mark on the value says what it is.
QByteArray SqliteTarget::operand(const QByteArray& value, ColumnType type) const {
    const char* marker = SqliteFunctions::markerFor(type);
    return marker ? marker + ('(' + value + ')') : value;
}

QByteArray SqliteTarget::collated(const QByteArray& text) const {
    return text + " COLLATE " + textCollation;
}

QByteArray SqliteTarget::yesNo(const QByteArray& condition) const {
    return "(-(" + condition + "))";
}

QByteArray SqliteTarget::condition(const QByteArray& number) const {
    return '(' + number + " <> 0)";
}

QByteArray SqliteTarget::orderTerm(const QByteArray& value, bool descending, bool /*mayBeNull*/) const {
    return descending ? value + " DESC" : value;
}

QByteArray SqliteTarget::declaredType(ColumnType type) const {
    switch (type) {
    case ColumnType::Boolean: return "YESNO";
    case ColumnType::Int: return "INTEGER";
    case ColumnType::Double: return "DOUBLE";
    case ColumnType::Currency: return "CURRENCY";
    case ColumnType::Date: return "DATETIME";
    case ColumnType::Text: return "TEXT";
    case ColumnType::Binary: return "BLOB";
    case ColumnType::Unknown: break;
    }
    return {};
}

QByteArray SqliteTarget::counterType() const {
    return "INTEGER PRIMARY KEY AUTOINCREMENT";
}

QByteArray SqliteTarget::keyIndex(const QByteArray& name, const QByteArray& table, const QByteArray& columns) const {
    return "CREATE UNIQUE INDEX " + name + " ON " + table + " (" + columns + ");";
}

QByteArray SqliteTarget::deletionRule(const QByteArray& name, const QByteArray& parent, const QByteArray& parentColumn,
                                      const QByteArray& child, const QByteArray& childColumn) const {
    return "CREATE TRIGGER " + name + " AFTER DELETE ON " + parent + " BEGIN DELETE FROM " + child + " WHERE " +
           childColumn + " = OLD." + parentColumn + "; END;";
}

// Of the three names of the row identity the one that no table is likely to use for a column of its own.
QByteArray SqliteTarget::rowIdentity(const QByteArray& table) const {
    return table + "._rowid_";
}

QByteArray SqliteTarget::withRowIdentity(const QByteArray& table) const {
    return "(SELECT " + rowIdentity(table) + " AS _rowid_, * FROM " + table + ')';
}

} // namespace dao
