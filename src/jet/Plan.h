#pragma once
// The result of translating one statement for one engine; holds for all statements of its shape
// whose fixed literals are the same.
#include "base/Variant.h"
#include "jet/Schema.h"

#include <QByteArray>
#include <QList>

namespace jet {

/// A bound parameter: a literal of the shape, perhaps with its sign turned.
struct Parameter {
    int literal = 0; ///< index into Shape::literals
    bool negated = false;
};

/// A literal that decides about the form of the statement and was therefore not lifted ("TOP 5").
struct FixedLiteral {
    int literal = 0;
    mkl::Variant value;
};

struct OutputColumn {
    QString name; ///< as Fields() knows it, "TABLE.Column" where a name is repeated
    ColumnType type = ColumnType::Unknown;
    QString sourceTable;  ///< table name as declared, empty for an expression
    QString sourceColumn; ///< column name as declared, empty for an expression
    QString sourceAlias;  ///< name by which the statement knows that table, if it gives it another one
};

enum class StatementKind : quint8 { Select, Insert, Update, Delete };

struct Plan {
    StatementKind kind = StatementKind::Select;
    QByteArray native; ///< UTF-8, parameters in the order of the list
    QList<Parameter> parameters;
    QList<FixedLiteral> fixedLiterals;
    QList<OutputColumn> columns; ///< of a query
    QString targetTable;         ///< of an action query; of a query on one table, that table
};

} // namespace jet
