#include "jet/binding/ExpressionBinder.h"

#include "jet/binding/LazyCalls.h"
#include "jet/binding/SelectBinder.h"
#include "jet/binding/Typing.h"
#include "jet/functions/Aggregates.h"
#include "jet/functions/Operands.h"
#include "jet/model/Raise.h"
#include "jet/syntax/TokenStream.h"

namespace jet {

namespace {

constexpr mkl::Long syntaxError = 3075;
constexpr mkl::Long unknownFunction = 3085;
constexpr mkl::Long aggregateInExpression = 3095;
constexpr mkl::Long tooComplex = 3360;
constexpr int maximalSize = 100'000;

Comparison strictest(Comparison a, Comparison b) {
    return a < b ? b : a;
}

bool takesArguments(const Function& function, size_t count) {
    if (!function.takes(static_cast<int>(count))) return false;
    const bool pairs = function.lazy && lazyKindOf(function) == LazyKind::Switch;
    return !pairs || count % 2 == 0;
}

// Aliases make a tree deeper, and far larger, than its text is.
void measure(Expression& expression) {
    const auto* const name = expression.as<Name>();
    const auto* const call = expression.as<Call>();
    expression.hasAggregate = call && call->aggregate;
    expression.size = expression.depth = 1;
    const auto include = [&expression](const Expression& part) {
        expression.depth = qMax(expression.depth, part.depth + 1);
        expression.size = qMin(expression.size + part.size, maximalSize + 1);
        expression.hasAggregate = expression.hasAggregate || part.hasAggregate;
    };
    if (name && name->alias) include(*name->alias);
    for (const Expression* part : operandsOf(expression))
        include(*part);
    if (expression.depth > maximalDepth || expression.size > maximalSize) raiseAt(tooComplex, expression.text);
}

} // namespace

void ExpressionBinder::bindOperands(Expression& expression, const Clause& clause) {
    for (Expression* operand : operandsOf(expression))
        bind(*operand, clause);
}

void ExpressionBinder::bind(Expression& expression, const Clause& clause) {
    if (!expression.as<Call>()) bindOperands(expression, clause);
    expression.type =
        std::visit(Overloaded{[](const Literal& literal) { return typeOf(literal.value); },
                              [](const Constant& constant) { return typeOf(constant.value); },
                              [&](Name& name) { return bindName(name, clause); },
                              [](const Negation& negation) { return negationType(negation.operand->type); },
                              [&](Binary& binary) { return bindBinary(binary); },
                              [&](Call& call) { return bindCall(call, expression, clause); },
                              [&](Subquery& subquery) { return bindSubquery(subquery, expression, clause); },
                              [](Between& between) {
                                  between.comparison = strictest(comparisonOf(*between.value, *between.low),
                                                                 comparisonOf(*between.value, *between.high));
                                  return ColumnType::Boolean;
                              },
                              [](In& in) {
                                  in.comparison = Comparison::Native;
                                  for (const ExpressionPtr& item : in.items)
                                      in.comparison = strictest(in.comparison, comparisonOf(*in.value, *item));
                                  return ColumnType::Boolean;
                              },
                              [](const auto&) { return ColumnType::Boolean; }},
                   expression.node);
    measure(expression);
}

ColumnType ExpressionBinder::bindName(Name& name, const Clause& clause) {
    if (names_.resolve(name, clause.sources)) return names_.typeOf(name);
    if (name.qualifier.isEmpty() && clause.aliasOf) name.alias = clause.aliasOf(name.name);
    if (name.alias) {
        if (clause.aggregateError != 0 && name.alias->hasAggregate)
            raiseAt(clause.aggregateError, name.name, {name.name.toString()});
        return name.alias->type;
    }
    unknown_.add(name.qualifier, name.name);
    return ColumnType::Unknown;
}

ColumnType ExpressionBinder::bindBinary(Binary& binary) {
    if (isComparison(binary.op)) binary.comparison = comparisonOf(*binary.left, *binary.right);
    return binaryType(binary.op, binary.left->type, binary.right->type);
}

ColumnType ExpressionBinder::bindSubquery(Subquery& subquery, const Expression& expression, const Clause& clause) {
    if (!subqueries_) raiseAt(syntaxError, expression.text, {excerpt(expression.text)});
    subqueries_->bindSubquery(subquery, clause);
    const BoundOutput& output = subquery.bound->outputs.front();
    if (subquery.kind == Subquery::Kind::Scalar) return output.column.type;
    if (!subquery.value) return ColumnType::Boolean;
    if (subquery.bound->unions.empty()) {
        subquery.comparison = comparisonOf(*subquery.value, *output.expression);
    } else {
        Expression unified;
        unified.node = Not();
        unified.type = output.column.type;
        subquery.comparison = comparisonOf(*subquery.value, unified);
    }
    return ColumnType::Boolean;
}

ColumnType ExpressionBinder::bindCall(Call& call, const Expression& expression, const Clause& clause) {
    call.aggregate = findAggregate(call.name);
    if (call.aggregate) return bindAggregate(call, expression, clause);
    call.function = findFunction(call.name);
    if (!call.function) raiseAt(unknownFunction, call.name, {call.name.toString()});
    if (call.star || !takesArguments(*call.function, call.arguments.size()))
        raiseAt(syntaxError, expression.text, {excerpt(expression.text)});
    QVarLengthArray<ColumnType, 8> types;
    for (const ExpressionPtr& argument : call.arguments) {
        bind(*argument, clause);
        types.append(argument->type);
    }
    if (call.function->lazy) return commonType(branchesOf(call));
    return call.function->resultType({types.constData(), static_cast<size_t>(types.size())});
}

ColumnType ExpressionBinder::bindAggregate(Call& call, const Expression& expression, const Clause& clause) {
    if (clause.aggregateError != 0) raiseAt(clause.aggregateError, expression.text, {excerpt(expression.text)});
    const bool counts = call.aggregate == findAggregate(u"Count");
    if (call.star ? !counts : call.arguments.size() != 1)
        raiseAt(syntaxError, expression.text, {excerpt(expression.text)});
    if (call.star) return call.aggregate->resultType(ColumnType::Unknown);
    Clause inside = clause;
    inside.aggregateError = aggregateInExpression;
    Expression& argument = *call.arguments.front();
    bind(argument, inside);
    const bool isNumber = argument.type != ColumnType::Text && argument.type != ColumnType::Binary;
    if (call.aggregate->numeric && !isNumber && isPlain(argument)) raiseAt(errCriterionType, argument.text);
    return call.aggregate->resultType(argument.type);
}

} // namespace jet
