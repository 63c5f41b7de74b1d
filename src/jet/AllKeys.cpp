#include "jet/AllKeys.h"

#include "jet/syntax/Parser.h"
#include "jet/writing/StatementWriter.h"

namespace jet {

namespace {

ExpressionPtr nameAgain(const Expression& name) {
    auto copy = std::make_unique<Expression>();
    copy->node = *name.as<Name>();
    copy->text = name.text;
    return copy;
}

bool isPlain(const SelectStatement& select) {
    const bool isOneTable = select.from.size() == 1 && std::holds_alternative<TableSource>(select.from.front()->node) &&
                            !std::get<TableSource>(select.from.front()->node).derived;
    const bool isGrouped = !select.groupBy.empty() || select.having;
    const bool isShort = select.distinct || select.distinctRow || select.top;
    return isOneTable && !isGrouped && !isShort && select.unions.empty() && select.into.isEmpty();
}

struct KeyCriterion {
    const Expression* column;
    const Literal* literal;
};

std::optional<KeyCriterion> keyCriterionOf(const SelectStatement& select) {
    const auto* const equal = select.where ? select.where->as<Binary>() : nullptr;
    if (!equal || equal->op != Op::Equal) return {};
    const bool columnFirst = equal->left->as<Name>() != nullptr;
    const Expression& column = columnFirst ? *equal->left : *equal->right;
    const auto* const literal = (columnFirst ? equal->right : equal->left)->as<Literal>();
    if (!column.as<Name>() || !literal || literal->value.type() != mkl::Variant::Type::Int) return {};
    return KeyCriterion{&column, literal};
}

void giveAllKeys(SelectStatement& select, const Expression& column) {
    OutputItem key;
    key.expression = nameAgain(column);
    key.text = column.text;
    OrderItem order;
    order.expression = nameAgain(column);
    auto known = std::make_unique<Expression>();
    known->node = IsNull{nameAgain(column), true};
    known->text = column.text;
    select.outputs.push_back(std::move(key));
    select.orderBy.insert(select.orderBy.begin(), std::move(order));
    select.where = std::move(known); // column is gone with the former one
}

// Of a table, not the name of another output.
bool isKeyColumn(const Expression& expression) {
    const auto* const name = expression.as<Name>();
    return name && !name->alias && name->source >= 0 && expression.type == ColumnType::Int;
}

} // namespace

std::optional<AllKeysPlan> compileForAllKeys(QStringView text, const Schema& schema, const Target& target) {
    TokenStream tokens(text);
    Statement statement = parseStatement(tokens);
    auto* const select = std::get_if<SelectStatement>(&statement);
    if (!select || !isPlain(*select)) return {};
    const auto criterion = keyCriterionOf(*select);
    if (!criterion) return {};
    AllKeysPlan plan;
    plan.key = {criterion->literal->index, criterion->literal->negated};
    giveAllKeys(*select, *criterion->column);
    UnknownNames unknown;
    const BoundSelect bound = SelectBinder(*select, schema, unknown).bind();
    unknown.raise();
    if (!isKeyColumn(*bound.outputs.back().expression)) return {};
    const Plan written = StatementWriter(target).write(bound);
    if (!written.parameters.isEmpty() || !written.fixedLiterals.isEmpty()) return {};
    plan.native = written.native;
    for (const OutputColumn& column : written.columns)
        plan.outputs.append(column.type);
    plan.outputs.removeLast();
    return plan;
}

} // namespace jet
