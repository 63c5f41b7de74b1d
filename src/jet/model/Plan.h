#pragma once
// The result of translating one statement for one engine; holds for all statements of its shape
// whose fixed literals are the same.
#include "base/Variant.h"
#include "jet/model/Schema.h"

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
    QString sourceTable;   ///< table name as declared, empty for an expression
    QString sourceColumn;  ///< column name as declared, empty for an expression
    QString sourceAlias{}; ///< name by which the statement knows that table, if it gives it another one
    int source = -1;       ///< of a column: its table among DynasetPlan::sources; -1 for an expression
};

enum class StatementKind : quint8 { Select, Insert, Update, Delete, MakeTable };

struct Plan {
    StatementKind kind = StatementKind::Select;
    QByteArray native;   ///< UTF-8, parameters in the order of the list
    QByteArray lenient;  ///< the same, leaving out the rows whose values cannot be stored; empty if native does it
    QByteArray followUp; ///< of MakeTable: fills the table that native makes, with the parameters
    QList<Parameter> parameters;
    QList<FixedLiteral> fixedLiterals;
    QList<OutputColumn> columns; ///< of a query
    QString targetTable;         ///< of an action query; of a query on one table, that table
};

struct NativeStatement {
    QByteArray text; ///< UTF-8, parameters in the order of the list
    QList<Parameter> parameters;
};

/// A table whose rows a dynaset keeps by their keys.
struct DynasetSource {
    QString table;          ///< as declared
    QString name;           ///< alias, or the table
    QList<int> keyOrdinals; ///< places of its key columns in a row of keys
    bool optional = false;  ///< on the outer side of a join: all its keys may be Null
};

/// What a dynaset needs of its statement: once the keys of all rows, then any row by its keys.
struct DynasetPlan {
    bool updatable = false; ///< otherwise there are columns and nothing else
    NativeStatement keys;   ///< the keys of all sources, row by row, in the order of the statement
    /// The outputs and behind them the keys anew, of the row with the keys given. Its parameters are those of the list,
    /// then the keys. It neither filters nor joins, so a row stays readable whatever becomes of its values; a Null
    /// key of a source that is not optional tells that the row is gone.
    NativeStatement row;
    QList<ColumnType> keyTypes;
    QList<DynasetSource> sources; ///< with DISTINCTROW only those that have output columns
    QList<OutputColumn> columns;
    QList<FixedLiteral> fixedLiterals;
    int deleteSource = -1; ///< the source that loses a row by Delete: whose rows the joins do not repeat
};

} // namespace jet
