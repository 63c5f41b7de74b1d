#include "jet/binding/SelectBinder.h"

#include "jet/binding/OutputNames.h"
#include "jet/model/Raise.h"
#include "jet/syntax/TokenStream.h"

#include <algorithm>

namespace jet {

namespace {

constexpr mkl::Long noSuchTable = 3078;
constexpr mkl::Long havingAlone = 3091;
constexpr mkl::Long orderNotShown = 3093;
constexpr mkl::Long aggregateInWhere = 3096;
constexpr mkl::Long aggregateInOrderBy = 3097;
constexpr mkl::Long aggregateInGroupBy = 3098;
constexpr mkl::Long aggregateInJoin = 3099;
constexpr mkl::Long groupedStar = 3121;
constexpr mkl::Long orderBySyntax = 3138;
constexpr mkl::Long selectSyntax = 3141;
constexpr mkl::Long badJoin = 3296;
constexpr mkl::Long badTop = 3308;
constexpr mkl::Long tooComplex = 3360;

bool isJoinCondition(const Expression& expression) {
    if (const auto* junction = expression.as<Junction>())
        return std::all_of(junction->operands.begin(), junction->operands.end(),
                           [](const ExpressionPtr& operand) { return isJoinCondition(*operand); });
    if (const auto* binary = expression.as<Binary>()) return isComparison(binary->op) || binary->op == Op::Like;
    return expression.as<Not>() || expression.as<Between>() || expression.as<In>() || expression.as<IsNull>();
}

// The terms that And joins.
std::vector<const Expression*> termsOf(const Expression& condition) {
    const auto* const junction = condition.as<Junction>();
    if (!junction || !junction->isAnd) return {&condition};
    std::vector<const Expression*> terms;
    for (const ExpressionPtr& operand : junction->operands)
        terms.push_back(operand.get());
    return terms;
}

} // namespace

SelectBinder::SelectBinder(SelectStatement& select, const Schema& schema, UnknownNames& unknown)
    : SelectBinder(select, schema, unknown, Surroundings()) {}

SelectBinder::SelectBinder(SelectStatement& select, const Schema& schema, UnknownNames& unknown, const Scope& outer,
                           Scope::Range outerRange)
    : SelectBinder(select, schema, unknown, Surroundings{&outer, outerRange}) {}

SelectBinder::SelectBinder(SelectStatement& select, const Schema& schema, UnknownNames& unknown, Surroundings outer)
    : select_(select)
    , schema_(schema)
    , unknown_(unknown)
    , outer_(outer)
    , expressions_(bound_.scope, unknown, this) {
    if (outer.scope) bound_.scope = Scope(*outer.scope, outer.range);
}

Clause SelectBinder::clause(mkl::Long aggregateError) const {
    return {aggregateError, bound_.scope.all(), {}};
}

BoundSelect SelectBinder::bind() {
    bindOne();
    if (!select_.unions.empty()) bindUnion();
    addFixedLiterals(matcher_.fixedLiterals());
    bound_.scope.detach();
    return std::move(bound_);
}

void SelectBinder::bindOne() {
    bound_.distinct = select_.distinct;
    bound_.top = select_.top;
    bound_.from = &select_.from;
    for (const FromPtr& item : select_.from)
        bindFrom(*item);
    bindOutputs();
    bindWhere();
    bindGroupBy();
    bindHaving();
    if (select_.unions.empty()) bindOrderBy();
    checkTop();
    checkGrouping();
    if (select_.distinctRow) bindDistinctRow();
    nameOutputs();
    if (bound_.top) bound_.fixedLiterals.push_back(bound_.top->count);
}

void SelectBinder::addFixedLiterals(const std::vector<Literal>& literals) {
    bound_.fixedLiterals.insert(bound_.fixedLiterals.end(), literals.begin(), literals.end());
}

Scope::Range SelectBinder::bindFrom(FromItem& item) {
    if (auto* join = std::get_if<Join>(&item.node)) return bindJoin(*join);
    auto& table = std::get<TableSource>(item.node);
    if (table.derived) return bindDerived(table);
    const int source = bound_.scope.add(table, schema_);
    return {source, source + 1};
}

Scope::Range SelectBinder::bindJoin(Join& join) {
    const Scope::Range left = bindFrom(*join.left);
    const Scope::Range both{left.begin, bindFrom(*join.right).end};
    expressions_.bind(*join.on, {aggregateInJoin, both, {}});
    if (!isJoinCondition(*join.on)) raiseAt(badJoin, join.on->text, {excerpt(join.on->text)});
    return both;
}

void SelectBinder::bindOutputs() {
    progress_.assign(select_.outputs.size(), Progress::Open);
    for (size_t i = 0; i < select_.outputs.size(); ++i) {
        const OutputItem& item = select_.outputs[i];
        if (!item.expression) {
            expandStar(item);
            continue;
        }
        bindOutput(i);
        bound_.outputs.push_back({item.expression.get(), {}, item.text});
        bound_.outputs.back().column.name = item.alias.toString();
    }
}

void SelectBinder::expandStar(const OutputItem& item) {
    Scope::Range range = bound_.scope.all();
    if (!item.starTable.isEmpty()) {
        const int source = bound_.scope.find(item.starTable, range);
        if (source < 0) raiseAt(noSuchTable, item.starTable, {item.starTable.toString()});
        range = {source, source + 1};
    }
    if (range.begin == range.end) raiseAt(selectSyntax, item.text, {QStringLiteral("*")});
    for (int source = range.begin; source < range.end; ++source) {
        const auto& columns = bound_.scope[source].table->columns;
        for (int column = 0; column < columns.size(); ++column) {
            auto name = std::make_unique<Expression>();
            name->node = Name{{}, columns[column].name, source, column};
            name->text = columns[column].name;
            name->type = columns[column].type;
            bound_.outputs.push_back({name.get(), {}, item.text});
            bound_.starColumns.push_back(std::move(name));
        }
    }
}

const Expression* SelectBinder::outputOfAlias(QStringView alias) {
    for (size_t i = 0; i < select_.outputs.size(); ++i) {
        const OutputItem& item = select_.outputs[i];
        if (!item.expression || !sameName(item.alias, alias)) continue;
        if (progress_[i] == Progress::Busy) return nullptr; // it would stand for itself
        bindOutput(i);
        return item.expression.get();
    }
    return nullptr;
}

void SelectBinder::bindOutput(size_t index) {
    if (progress_[index] == Progress::Done) return;
    if (busy_ == maximalDepth) raiseAt(tooComplex, select_.outputs[index].text);
    ++busy_;
    progress_[index] = Progress::Busy;
    Clause outputs = clause(0);
    outputs.aliasOf = [this](QStringView alias) { return outputOfAlias(alias); };
    expressions_.bind(*select_.outputs[index].expression, outputs);
    progress_[index] = Progress::Done;
    --busy_;
}

void SelectBinder::nameOutputs() {
    for (BoundOutput& output : bound_.outputs) {
        OutputColumn& column = output.column;
        column.type = output.expression->type;
        const auto* const name = output.expression->as<Name>();
        if (!name || name->source < 0 || name->level > 0) continue;
        column.source = name->source;
        const Scope::Source& source = bound_.scope[name->source];
        column.sourceTable = source.table->name;
        if (source.hasAlias) column.sourceAlias = source.name;
        column.sourceColumn = bound_.scope.column(*name).name;
    }
    nameColumns(bound_);
}

void SelectBinder::bindWhere() {
    if (!select_.where) return;
    expressions_.bind(*select_.where, clause(aggregateInWhere));
    bound_.where.push_back(select_.where.get());
}

void SelectBinder::bindGroupBy() {
    for (const ExpressionPtr& group : select_.groupBy) {
        expressions_.bind(*group, clause(aggregateInGroupBy));
        bound_.groupBy.push_back(group.get());
    }
    bound_.isAggregated = !bound_.groupBy.empty() ||
                          std::any_of(bound_.outputs.begin(), bound_.outputs.end(),
                                      [](const BoundOutput& output) { return output.expression->hasAggregate; });
}

// Without GROUP BY a term that has no aggregate chooses rows, as if it stood in the WHERE clause.
void SelectBinder::bindHaving() {
    if (!select_.having) return;
    expressions_.bind(*select_.having, clause(0));
    for (const Expression* term : termsOf(*select_.having)) {
        const bool choosesRows = select_.groupBy.empty() && !term->hasAggregate;
        (choosesRows ? bound_.where : bound_.having).push_back(term);
    }
    bound_.isAggregated = bound_.isAggregated || !bound_.having.empty();
    if (!bound_.isAggregated) raiseAt(havingAlone, select_.having->text);
}

void SelectBinder::bindOrderBy() {
    const Clause order = clause(bound_.isAggregated ? 0 : aggregateInOrderBy);
    const auto shown = outputExpressions();
    for (OrderItem& item : select_.orderBy) {
        const Expression* expression = orderExpression(item, order);
        int output = -1;
        if (bound_.distinct) {
            const auto found = std::find_if(shown.begin(), shown.end(), [&](const Expression* candidate) {
                return matcher_.same(*expression, *candidate);
            });
            if (found == shown.end()) raiseAt(orderNotShown, item.expression->text, {excerpt(item.expression->text)});
            output = static_cast<int>(found - shown.begin());
        }
        bound_.orderBy.push_back({expression, item.descending, output});
    }
}

const Expression* SelectBinder::orderExpression(OrderItem& item, const Clause& clause) {
    const auto* const literal = item.expression->as<Literal>();
    if (literal && literal->value.type() == mkl::Variant::Type::Int) return outputAt(*item.expression, *literal);
    expressions_.bind(*item.expression, clause);
    return item.expression.get();
}

const Expression* SelectBinder::outputAt(const Expression& item, const Literal& position) {
    const auto wanted = position.value.toLong();
    if (position.negated || wanted < 1 || wanted > static_cast<mkl::Long>(bound_.outputs.size()))
        raiseAt(orderBySyntax, item.text, {item.text.toString()});
    bound_.fixedLiterals.push_back(position);
    return bound_.outputs[static_cast<size_t>(wanted - 1)].expression;
}

void SelectBinder::checkTop() {
    if (!bound_.top) return;
    const auto count = bound_.top->count.value.toLong();
    const bool fits = count > 0 && (!bound_.top->percent || count <= 100);
    if (!fits) raiseAt(badTop, bound_.top->text, {bound_.top->text.toString()});
}

void SelectBinder::checkGrouping() {
    if (!bound_.isAggregated) return;
    const auto star = std::find_if(select_.outputs.begin(), select_.outputs.end(),
                                   [](const OutputItem& item) { return !item.expression; });
    if (star != select_.outputs.end()) raiseAt(groupedStar, star->text);
    for (const BoundOutput& output : bound_.outputs)
        matcher_.requireGrouped(*output.expression, bound_.groupBy);
    for (const Expression* term : bound_.having)
        matcher_.requireGrouped(*term, bound_.groupBy);
    for (const BoundOrder& order : bound_.orderBy)
        matcher_.requireGrouped(*order.expression, bound_.groupBy);
}

std::vector<const Expression*> SelectBinder::outputExpressions() const {
    std::vector<const Expression*> expressions;
    for (const BoundOutput& output : bound_.outputs)
        expressions.push_back(output.expression);
    return expressions;
}

} // namespace jet
