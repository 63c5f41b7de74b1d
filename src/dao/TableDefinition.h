#pragma once
// What a table is to be made of, and the native statements that make it.
#include "base/Variant.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace jet {
class Target;
}

namespace dao {

struct ColumnDefinition {
    QString name;
    mkl::Variant::Type type = mkl::Variant::Type::Text;
    bool required = false; ///< never Null
    bool counter = false;  ///< its values are given out by the database
};

struct IndexDefinition {
    QString name; ///< as programs name it
    QStringList columns;
    bool unique = false;
};

struct TableDefinition {
    QString name;
    QList<ColumnDefinition> columns;
    QList<IndexDefinition> indexes; ///< the first unique one over required columns identifies the rows
};

/// What goes with a deleted row: the rows of child whose column holds the value of the parent's column.
struct DeletionRule {
    QString parent, parentColumn;
    QString child, childColumn;
};

/// The table without its indexes.
QByteArray tableStatement(const jet::Target& target, const TableDefinition& table);
/// Its indexes, under names that no other table's index can bear.
QByteArray indexStatements(const jet::Target& target, const TableDefinition& table);
QByteArray ruleStatement(const jet::Target& target, const DeletionRule& rule);

} // namespace dao
