// The part of ExpressionWriter that writes queries inside of expressions.
#include "jet/writing/SubqueryWriter.h"

#include "jet/binding/Typing.h"
#include "jet/writing/NativeOperators.h"
#include "jet/writing/RowKeys.h"
#include "jet/writing/SelectWriter.h"

#include <algorithm>

namespace jet {

namespace {

// The name of a query inside; no statement can spell it, so it hides nothing of the statements around it.
constexpr QStringView innerName = u".q";

// Whether more than one row is out of the question.
bool isSingleRow(const BoundSelect& select) {
    const bool aggregatesAll = select.isAggregated && select.groupBy.empty();
    return select.unions.empty() && (aggregatesAll || select.scope.sources().empty());
}

// Whether its columns are all of statements around this one, and there is one.
bool isOfOuterOnly(const Expression& expression, bool& outer) {
    const Expression& target = withoutAlias(expression);
    if (const auto* name = target.as<Name>()) {
        outer = outer || name->level > 0;
        return name->level > 0;
    }
    if (const auto* subquery = target.as<Subquery>(); subquery && !subquery->captured.empty()) return false;
    outer = outer || target.as<Subquery>(); // it may reach beyond
    const Operands operands = operandsOf(target);
    return std::all_of(operands.begin(), operands.end(),
                       [&](const Expression* operand) { return isOfOuterOnly(*operand, outer); });
}

} // namespace

bool isNativeCondition(const Subquery& subquery) {
    const bool equals = subquery.kind == Subquery::Kind::In ||
                        (subquery.kind == Subquery::Kind::Any && subquery.op == Op::Equal) ||
                        (subquery.kind == Subquery::Kind::All && subquery.op == Op::NotEqual);
    return subquery.kind == Subquery::Kind::Exists || (equals && subquery.comparison != Comparison::Function);
}

QByteArray ExpressionWriter::nested(const Subquery& subquery) const {
    return SelectWriter(target_, *subquery.bound, parameters_, this).writeNamed();
}

QByteArray ExpressionWriter::derivedTable(const BoundSelect& select) const {
    return '(' + SelectWriter(target_, select, parameters_, outer_).writeNamed() + ')';
}

QByteArray ExpressionWriter::output(const Expression& expression, ColumnType type) {
    if (expression.isNull()) return value(expression);
    if (type == ColumnType::Unknown) return "mkl_pack(" + operand(expression) + ')';
    return stored(expression, type);
}

QByteArray ExpressionWriter::subqueryValue(const Subquery& subquery, ColumnType type) {
    if (subquery.kind != Subquery::Kind::Scalar) return quantified(subquery);
    const BoundSelect& select = *subquery.bound;
    const QByteArray column = target_.name(innerName) + '.' + target_.name(select.outputs.front().column.name);
    const QByteArray from = " FROM (" + nested(subquery) + ") AS " + target_.name(innerName) + ')';
    const QByteArray value =
        isSingleRow(select) ? "(SELECT " + column + from : "(SELECT mkl_only(" + column + ')' + from;
    return type == ColumnType::Unknown ? "mkl_unpack(" + value + ')' : value;
}

QByteArray ExpressionWriter::subqueryCondition(const Subquery& subquery) {
    if (subquery.kind == Subquery::Kind::Exists) return "EXISTS (" + nested(subquery) + ')';
    const QByteArray left = compared(*subquery.value, subquery.comparison);
    const char* const in = subquery.kind == Subquery::Kind::All ? " NOT IN (" : " IN (";
    return '(' + left + in + nested(subquery) + "))";
}

// Three-valued: for ANY one true comparison decides, for ALL one that is false; else one with Null leaves it open.
QByteArray ExpressionWriter::quantified(const Subquery& subquery) {
    const BoundOutput& output = subquery.bound->outputs.front();
    QByteArray column = target_.name(innerName) + '.' + target_.name(output.column.name);
    QByteArray test;
    if (subquery.comparison == Comparison::Function) {
        if (output.column.type == ColumnType::Unknown) column = "mkl_unpack(" + column + ')';
        test = functionOf(subquery.op) + ('(' + operand(*subquery.value) + ", ") +
               target_.operand(column, output.column.type) + ')';
    } else {
        if (subquery.comparison == Comparison::Collated) column = target_.collated(column);
        test = target_.yesNo('(' + compared(*subquery.value, subquery.comparison) + nativeComparison(subquery.op) +
                             column + ')');
    }
    const QByteArray tests = "(SELECT " + test + " AS c FROM (" + nested(subquery) + ") AS " + target_.name(innerName) +
                             ") AS " + target_.name(innerName);
    const bool any = subquery.kind != Subquery::Kind::All;
    return QByteArray("(SELECT CASE WHEN ") + (any ? "min(c) <> 0 THEN -1" : "max(c) = 0 THEN 0") +
           " WHEN count(*) > count(c) THEN NULL ELSE " + (any ? "0" : "-1") + " END FROM " + tests + ')';
}

// Engines give an aggregate of outer columns to the outer statement; a column of this one keeps it here.
QByteArray ExpressionWriter::forcedInside(QByteArray argument, const Expression& expression) const {
    bool outer = false;
    if (!isOfOuterOnly(expression, outer) || !outer) return argument;
    QByteArray column = target_.name(singleRowTable) + '.' + target_.name(singleRowColumn);
    if (!scope_.sources().empty()) column = rowKeysOf(scope_[0], target_).front().native;
    return "coalesce(" + argument + ", CASE " + column + " WHEN 0 THEN NULL END)";
}

} // namespace jet
