// How a SELECT takes in other ones: by UNION, as a derived table, as a subquery.
#include "jet/binding/SelectBinder.h"
#include "jet/binding/Typing.h"
#include "jet/model/Raise.h"

namespace jet {

namespace {

constexpr mkl::Long orderBySyntax = 3138;
constexpr mkl::Long tooManyColumns = 3306;
constexpr mkl::Long columnCount = 3307;
constexpr mkl::Long orderNotShown = 3351;

} // namespace

void SelectBinder::bindUnion() {
    for (UnionPart& part : select_.unions) {
        auto select = std::make_unique<BoundSelect>(SelectBinder(part.select, schema_, unknown_, outer_).bind());
        if (select->outputs.size() != bound_.outputs.size()) raiseAt(columnCount, part.text);
        addFixedLiterals(select->fixedLiterals);
        for (size_t i = 0; i < bound_.outputs.size(); ++i) {
            ColumnType& type = bound_.outputs[i].column.type;
            const bool first = bound_.outputs[i].expression->isNull() && type == ColumnType::Unknown;
            const BoundOutput& other = select->outputs[i];
            if (!other.expression->isNull()) type = first ? other.column.type : unionType(type, other.column.type);
        }
        bound_.unions.push_back({part.all, std::move(select)});
    }
    for (const OrderItem& item : select_.orderBy)
        bindUnionOrder(item);
    for (BoundOutput& output : bound_.outputs)
        output.column.source = -1;
}

void SelectBinder::bindUnionOrder(const OrderItem& item) {
    const int column = unionColumn(*item.expression);
    if (column < 0) raiseAt(orderNotShown, item.expression->text, {excerpt(item.expression->text)});
    bound_.unionOrder.push_back({column, item.descending});
}

// A place or the name of an output of the first SELECT; -1 for anything else.
int SelectBinder::unionColumn(const Expression& expression) {
    const auto count = static_cast<int>(bound_.outputs.size());
    const auto* const literal = expression.as<Literal>();
    if (literal && literal->value.type() == mkl::Variant::Type::Int) {
        const auto place = literal->value.toLong();
        if (literal->negated || place < 1 || place > count)
            raiseAt(orderBySyntax, expression.text, {expression.text.toString()});
        bound_.fixedLiterals.push_back(*literal);
        return place - 1;
    }
    const auto* const name = expression.as<Name>();
    for (int i = 0; name && i < count; ++i) {
        const OutputColumn& column = bound_.outputs[static_cast<size_t>(i)].column;
        const QString full = name->qualifier.isEmpty() ? name->name.toString()
                                                       : name->qualifier.toString() + u'.' + name->name.toString();
        const QString& source = column.sourceAlias.isEmpty() ? column.sourceTable : column.sourceAlias;
        if (sameName(column.name, full) || sameName(source + u'.' + column.sourceColumn, full)) return i;
    }
    return -1;
}

Scope::Range SelectBinder::bindDerived(TableSource& table) {
    auto select = std::make_shared<BoundSelect>(SelectBinder(*table.derived, schema_, unknown_, outer_).bind());
    addFixedLiterals(select->fixedLiterals);
    Table columns;
    for (const BoundOutput& output : select->outputs)
        columns.columns.append({output.column.name, output.column.type});
    const int source = bound_.scope.add(table, std::move(select), std::move(columns));
    return {source, source + 1};
}

void SelectBinder::bindSubquery(Subquery& subquery, const Clause& clause) {
    const size_t before = bound_.scope.captured().size();
    auto select = std::make_shared<BoundSelect>(
        SelectBinder(*subquery.select, schema_, unknown_, bound_.scope, clause.sources).bind());
    const auto& captured = bound_.scope.captured();
    subquery.captured.assign(captured.begin() + static_cast<std::ptrdiff_t>(before), captured.end());
    const bool isValue = subquery.kind != Subquery::Kind::Exists;
    if (isValue && select->outputs.size() != 1) raiseAt(tooManyColumns, subquery.select->outputs.front().text);
    addFixedLiterals(select->fixedLiterals);
    subquery.bound = std::move(select);
}

namespace {

void addSources(const Expression& expression, std::vector<bool>& used) {
    const auto add = [&used](const Name& name) {
        if (name.source >= 0 && name.level == 0) used[static_cast<size_t>(name.source)] = true;
    };
    const Expression& target = withoutAlias(expression);
    if (const auto* name = target.as<Name>()) add(*name);
    if (const auto* subquery = target.as<Subquery>())
        for (const Name& name : subquery->captured)
            add(name);
    for (const Expression* operand : operandsOf(target))
        addSources(*operand, used);
}

} // namespace

// Where all tables give output, or none does, no row is a repeat of another one.
void SelectBinder::bindDistinctRow() {
    if (bound_.isAggregated) return;
    std::vector<bool> used(bound_.scope.sources().size());
    for (const BoundOutput& output : bound_.outputs)
        addSources(*output.expression, used);
    for (size_t source = 0; source < used.size(); ++source)
        if (used[source]) bound_.rowSources.push_back(static_cast<int>(source));
    if (bound_.rowSources.size() == used.size()) bound_.rowSources.clear();
}

} // namespace jet
