#pragma once
// The tree of a statement. The parser builds it, the binder fills in what the fields marked "bound" say, the
// writer reads it. Views point into the text of the statement, which must outlive the tree.
#include "base/Variant.h"
#include "jet/model/Schema.h"

#include <QStringView>
#include <QVarLengthArray>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace jet {

struct Aggregate;
struct BoundSelect;
struct Expression;
struct Function;
struct SelectStatement;
using ExpressionPtr = std::unique_ptr<Expression>;
using ExpressionList = std::vector<ExpressionPtr>;

/// A literal of the text, with the sign in front of it.
struct Literal {
    int index = 0; ///< of Shape::literals
    mkl::Variant value;
    bool negated = false;
};

/// True, False or Null.
struct Constant {
    mkl::Variant value;
};

/// A column, or in an output column the alias of another one.
struct Name {
    QStringView qualifier; ///< empty if there is none
    QStringView name;
    int source = -1;                   ///< bound: table of that statement's FROM clause
    int column = -1;                   ///< bound: column of that table
    const Expression* alias = nullptr; ///< bound: what the alias stands for
    int level = 0;                     ///< bound: 0 for the statement that it stands in, 1 for the one around that, …
};

struct Negation {
    ExpressionPtr operand;
};

struct Not {
    ExpressionPtr operand;
};

enum class Op : quint8 {
    Power,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Add,
    Subtract,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Like,
    Xor,
    Equivalent,
    Implies
};

constexpr bool isComparison(Op op) {
    return op >= Op::Equal && op <= Op::GreaterOrEqual;
}

/// How values are compared: by the engine, by the engine with our collation, or by a registered function.
enum class Comparison : quint8 { Native, Collated, Function };

struct Binary {
    Op op;
    ExpressionPtr left, right;
    Comparison comparison = Comparison::Function; ///< bound
};

/// Operands joined by And, or by Or.
struct Junction {
    bool isAnd = true;
    ExpressionList operands;
};

struct Between {
    ExpressionPtr value, low, high;
    Comparison comparison = Comparison::Function; ///< bound
};

struct In {
    ExpressionPtr value;
    ExpressionList items;
    Comparison comparison = Comparison::Function; ///< bound
};

struct IsNull {
    ExpressionPtr value;
    bool negated = false;
};

/// A SELECT in parentheses where a value or a condition stands.
struct Subquery {
    /// The value of its one row; EXISTS; value IN; comparison with ANY (SOME) or ALL of its rows.
    enum class Kind : quint8 { Scalar, Exists, In, Any, All };

    Kind kind = Kind::Scalar;
    Op op = Op::Equal;     ///< the comparison
    ExpressionPtr value{}; ///< its left side; empty for Scalar and Exists
    std::shared_ptr<SelectStatement> select{};
    Comparison comparison = Comparison::Function; ///< bound
    std::shared_ptr<const BoundSelect> bound{};   ///< bound
    std::vector<Name> captured{};                 ///< bound: what it uses of the statement that it stands in
};

struct Call {
    QStringView name;
    ExpressionList arguments;
    bool star = false;                    ///< Count(*)
    const Function* function = nullptr;   ///< bound: one of these two
    const Aggregate* aggregate = nullptr; ///< bound
};

struct Expression {
    using Node =
        std::variant<Literal, Constant, Name, Negation, Not, Binary, Junction, Between, In, IsNull, Subquery, Call>;

    Node node;
    QStringView text; ///< for messages
    int depth = 1;
    int size = 1;              ///< bound: number of nodes, those behind aliases counted as often as they are used
    bool hasAggregate = false; ///< bound
    ColumnType type = ColumnType::Unknown; ///< bound

    template<class T>
    const T* as() const {
        return std::get_if<T>(&node);
    }
    template<class T>
    T* as() {
        return std::get_if<T>(&node);
    }
    bool isNull() const { return as<Constant>() && as<Constant>()->value.isNull(); }
};

/// The direct operands, in the order of the text.
using Operands = QVarLengthArray<Expression*, 4>;
Operands operandsOf(const Expression& expression);

struct TableSource {
    QStringView table;                        ///< empty for a derived table
    std::shared_ptr<SelectStatement> derived; ///< "(SELECT …) AS x"
    QStringView alias;                        ///< empty if there is none
    int source = -1;                          ///< bound: its place among the tables of the FROM clause
};

struct FromItem;
using FromPtr = std::unique_ptr<FromItem>;

enum class JoinKind : quint8 { Inner, Left, Right };

struct Join {
    JoinKind kind = JoinKind::Inner;
    FromPtr left, right;
    ExpressionPtr on;
};

struct FromItem {
    std::variant<TableSource, Join> node;
};

/// One item of a select list: an expression, "*" or "T.*".
struct OutputItem {
    ExpressionPtr expression; ///< empty for a star
    QStringView alias;        ///< empty if there is none
    QStringView starTable;    ///< of "T.*"
    QStringView text;         ///< for messages, without the alias
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

struct Top {
    Literal count;
    bool percent = false;
    QStringView text; ///< of the count
};

struct UnionPart;

/// One SELECT, or the first of several joined by UNION; then its ORDER BY is that of the whole.
struct SelectStatement {
    bool distinct = false;
    bool distinctRow = false;
    std::optional<Top> top;
    std::vector<OutputItem> outputs;
    std::vector<FromPtr> from;
    ExpressionPtr where;
    ExpressionList groupBy;
    ExpressionPtr having;
    std::vector<OrderItem> orderBy;
    QStringView into; ///< the table to make; empty if none
    std::vector<UnionPart> unions;
};

struct UnionPart {
    bool all = false; ///< repeats stay
    SelectStatement select;
    QStringView text; ///< its first word, for messages
};

struct InsertStatement {
    QStringView table;
    std::vector<QStringView> columns; ///< empty: all of the table
    ExpressionList values;            ///< of VALUES
    std::unique_ptr<SelectStatement> select;
};

/// Its rows are those of a SELECT, whose outputs are by turns the target, a Name, and the value of an assignment.
struct UpdateStatement {
    SelectStatement rows;
};

/// Its rows are those of a SELECT without outputs.
struct DeleteStatement {
    QStringView starTable; ///< of "DELETE T.*"; empty if none is named
    QStringView place;     ///< what stands before FROM, for messages
    SelectStatement rows;
};

/// SELECT … INTO a table that it makes.
struct MakeTableStatement {
    QStringView table;
    SelectStatement select;
};

using Statement = std::variant<SelectStatement, InsertStatement, UpdateStatement, DeleteStatement, MakeTableStatement>;

/// Overloaded lambdas for std::visit.
template<class... Calls>
struct Overloaded : Calls... {
    using Calls::operator()...;
};
template<class... Calls>
Overloaded(Calls...) -> Overloaded<Calls...>;

} // namespace jet
