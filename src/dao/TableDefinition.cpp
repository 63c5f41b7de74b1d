#include "dao/TableDefinition.h"

#include "jet/model/Target.h"

#include <QByteArrayList>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

using Type = mkl::Variant::Type;

QByteArray typeOf(const jet::Target& target, const ColumnDefinition& column) {
    if (column.counter) return target.counterType();
    switch (column.type) {
    case Type::Int: return target.declaredType(jet::ColumnType::Int);
    case Type::Boolean: return target.declaredType(jet::ColumnType::Boolean) + " DEFAULT 0";
    case Type::Double: return target.declaredType(jet::ColumnType::Double);
    case Type::Currency: return target.declaredType(jet::ColumnType::Currency);
    case Type::Date: return target.declaredType(jet::ColumnType::Date);
    default: return target.declaredType(jet::ColumnType::Text);
    }
}

bool canIdentify(const TableDefinition& table, const IndexDefinition& index) {
    const auto isRequired = [&](const QString& name) {
        const auto column = std::ranges::find(table.columns, name, &ColumnDefinition::name);
        return column != table.columns.end() && column->required;
    };
    return index.unique && std::ranges::all_of(index.columns, isRequired);
}

} // namespace

QByteArray tableStatement(const jet::Target& target, const TableDefinition& table) {
    QByteArrayList columns;
    for (const ColumnDefinition& column : table.columns)
        columns.append(target.name(column.name) + ' ' + typeOf(target, column) + (column.required ? " NOT NULL" : ""));
    return "CREATE TABLE " + target.name(table.name) + " (" + columns.join(", ") + ");";
}

QByteArray indexStatements(const jet::Target& target, const TableDefinition& table) {
    QByteArray statements;
    const QByteArray owner = target.name(table.name);
    const auto identity =
        std::ranges::find_if(table.indexes, [&](const IndexDefinition& index) { return canIdentify(table, index); });
    for (auto index = table.indexes.begin(); index != table.indexes.end(); ++index) {
        const QByteArray name = target.name(table.name + u':' + index->name);
        QByteArrayList columns;
        for (const QString& column : index->columns)
            columns.append(target.name(column));
        const QByteArray list = columns.join(", ");
        statements += index == identity ? target.keyIndex(name, owner, list)
                                        : (index->unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + name + " ON " +
                                              owner + " (" + list + ");";
    }
    return statements;
}

QByteArray ruleStatement(const jet::Target& target, const DeletionRule& rule) {
    return target.deletionRule(target.name(rule.parent + u":delete"_s), target.name(rule.parent),
                               target.name(rule.parentColumn), target.name(rule.child), target.name(rule.childColumn));
}

} // namespace dao
