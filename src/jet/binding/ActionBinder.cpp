#include "jet/binding/ActionBinder.h"

#include "jet/functions/Aggregates.h"
#include "jet/model/Raise.h"

#include <algorithm>

namespace jet {

namespace {

constexpr mkl::Long tableExists = 3010;
constexpr mkl::Long notUpdatableQuery = 3073;
constexpr mkl::Long aggregateInExpression = 3095;
constexpr mkl::Long unknownColumn = 3127;
constexpr mkl::Long deleteTable = 3128;
constexpr mkl::Long insertSyntax = 3134;
constexpr mkl::Long selectSyntax = 3141;
constexpr mkl::Long updateSyntax = 3144;
constexpr mkl::Long notUpdatable = 3164;
constexpr mkl::Long noOutputTable = 3192;
constexpr mkl::Long valueCount = 3346;

// Whether the column is the key of the table for which the engine would make a value up.
bool isLoneKey(const Table& table, int column) {
    const Column& key = table.columns[column];
    return table.primaryKey.size() == 1 && table.primaryKey.front() == column && key.type == ColumnType::Int;
}

TargetColumn targetColumn(const Table& table, int column) {
    const Column& target = table.columns[column];
    return {&target, isLoneKey(table, column) && !target.autoNumber};
}

void addColumn(BoundInsert& bound, QStringView name, QStringView place) {
    const int index = bound.table->columnIndex(name);
    if (index < 0) raiseAt(unknownColumn, place, {name.toString()});
    const Column* column = &bound.table->columns[index];
    const bool doubled =
        std::ranges::any_of(bound.columns, [&](const TargetColumn& other) { return other.column == column; });
    if (doubled) raiseAt(insertSyntax, place, {name.toString()});
    bound.columns.push_back(targetColumn(*bound.table, index));
}

void bindColumns(const InsertStatement& insert, BoundInsert& bound) {
    for (const QStringView name : insert.columns)
        addColumn(bound, name, name);
    if (!insert.columns.empty()) return;
    if (bound.select)
        for (const BoundOutput& output : bound.select->outputs)
            addColumn(bound, output.column.name, output.text);
    else
        for (int column = 0; column < bound.table->columns.size(); ++column)
            bound.columns.push_back(targetColumn(*bound.table, column));
}

const Column* missingKey(const BoundInsert& bound) {
    const QList<Column>& columns = bound.table->columns;
    for (int i = 0; i < columns.size(); ++i) {
        if (!targetColumn(*bound.table, i).isKey) continue;
        const bool given = std::ranges::any_of(bound.columns, &TargetColumn::isKey);
        return given ? nullptr : &columns[i];
    }
    return nullptr;
}

// The first value without a column, or the last one, behind which one is missing.
QStringView miscounted(const InsertStatement& insert, const BoundInsert& bound) {
    std::vector<QStringView> values;
    for (const Expression* value : bound.values)
        values.push_back(value->text);
    if (bound.select)
        for (const BoundOutput& output : bound.select->outputs)
            values.push_back(output.text);
    if (values.empty()) return insert.table;
    return values[qMin(values.size() - 1, bound.columns.size())];
}

// Outputs of a SELECT may hold aggregates, values of an assignment may not.
void rejectAggregates(const Expression& expression) {
    if (const auto* call = expression.as<Call>(); call && findAggregate(call->name))
        raiseAt(aggregateInExpression, expression.text, {excerpt(expression.text)});
    for (const Expression* operand : operandsOf(expression))
        rejectAggregates(*operand);
}

void addAssignment(BoundUpdate& bound, const Expression& target, const Expression& value) {
    const Name& name = *target.as<Name>();
    if (name.source < 0) return; // counted as unknown
    if (bound.assignments.empty()) bound.target = name.source;
    if (name.source != bound.target) raiseAt(notUpdatableQuery, target.text);
    const TargetColumn column = targetColumn(*bound.rows.scope[name.source].table, name.column);
    if (column.column->autoNumber) raiseAt(notUpdatable, target.text, {column.column->name});
    const bool doubled = std::ranges::any_of(
        bound.assignments, [&](const BoundAssignment& other) { return other.column.column == column.column; });
    if (doubled) raiseAt(updateSyntax, target.text, {excerpt(target.text)});
    bound.assignments.push_back({column, &value});
}

} // namespace

BoundInsert bindInsert(InsertStatement& insert, const Schema& schema, UnknownNames& unknown) {
    BoundInsert bound;
    bound.table = schema.findTable(insert.table);
    if (!bound.table) raiseAt(noOutputTable, insert.table, {insert.table.toString()});
    if (insert.select) bound.select = SelectBinder(*insert.select, schema, unknown).bind();
    bindColumns(insert, bound);
    bound.missingKey = missingKey(bound);
    const Scope nothing;
    ExpressionBinder binder(nothing, unknown);
    for (const ExpressionPtr& value : insert.values) {
        binder.bind(*value, {aggregateInExpression, {}, {}});
        bound.values.push_back(value.get());
    }
    const size_t count = bound.select ? bound.select->outputs.size() : bound.values.size();
    if (count != bound.columns.size()) raiseAt(valueCount, miscounted(insert, bound));
    return bound;
}

BoundUpdate bindUpdate(UpdateStatement& update, const Schema& schema, UnknownNames& unknown) {
    for (const OutputItem& item : update.rows.outputs)
        rejectAggregates(*item.expression);
    BoundUpdate bound;
    bound.rows = SelectBinder(update.rows, schema, unknown).bind();
    const auto& outputs = bound.rows.outputs;
    for (size_t i = 0; i + 1 < outputs.size(); i += 2)
        addAssignment(bound, *outputs[i].expression, *outputs[i + 1].expression);
    if (bound.rows.scope[bound.target].derived) raiseAt(notUpdatableQuery, update.rows.outputs.front().text);
    return bound;
}

BoundDelete bindDelete(DeleteStatement& statement, const Schema& schema, UnknownNames& unknown) {
    BoundDelete bound;
    bound.rows = SelectBinder(statement.rows, schema, unknown).bind();
    const Scope& scope = bound.rows.scope;
    if (!statement.starTable.isEmpty()) bound.target = scope.find(statement.starTable, scope.all());
    const bool unclear = statement.starTable.isEmpty() && scope.sources().size() > 1;
    if (unclear || bound.target < 0 || scope[bound.target].derived) raiseAt(deleteTable, statement.place);
    return bound;
}

BoundMakeTable bindMakeTable(MakeTableStatement& statement, const Schema& schema, UnknownNames& unknown) {
    BoundMakeTable bound{statement.table.toString(), {}};
    if (schema.findTable(statement.table)) raiseAt(tableExists, statement.table, {bound.table});
    bound.select = SelectBinder(statement.select, schema, unknown).bind();
    for (const BoundOutput& output : bound.select.outputs)
        if (output.column.name.contains(u'.')) raiseAt(selectSyntax, output.text, {output.column.name});
    return bound;
}

} // namespace jet
