#include "jet/ActionBinder.h"

#include "jet/Raise.h"

#include <algorithm>

namespace jet {

namespace {

constexpr mkl::Long aggregateInExpression = 3095;
constexpr mkl::Long aggregateInWhere = 3096;
constexpr mkl::Long unknownColumn = 3127;
constexpr mkl::Long deleteTable = 3128;
constexpr mkl::Long insertSyntax = 3134;
constexpr mkl::Long updateSyntax = 3144;
constexpr mkl::Long notUpdatable = 3164;
constexpr mkl::Long noOutputTable = 3192;
constexpr mkl::Long valueCount = 3346;

void bindColumns(const InsertStatement& insert, BoundInsert& bound) {
    const QList<Column>& columns = bound.table->columns;
    for (const Column& column : columns)
        if (insert.columns.empty()) bound.columns.push_back(&column);
    for (const QStringView name : insert.columns) {
        const int index = bound.table->columnIndex(name);
        if (index < 0) raiseAt(unknownColumn, name, {name.toString()});
        const bool doubled =
            std::find(bound.columns.begin(), bound.columns.end(), &columns[index]) != bound.columns.end();
        if (doubled) raiseAt(insertSyntax, name, {name.toString()});
        bound.columns.push_back(&columns[index]);
    }
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

const Expression* bindWhere(Expression* where, const Scope& scope, ExpressionBinder& binder) {
    if (where) binder.bind(*where, {aggregateInWhere, scope.all(), {}});
    return where;
}

} // namespace

BoundInsert bindInsert(InsertStatement& insert, const Schema& schema, UnknownNames& unknown) {
    BoundInsert bound;
    bound.table = schema.findTable(insert.table);
    if (!bound.table) raiseAt(noOutputTable, insert.table, {insert.table.toString()});
    bindColumns(insert, bound);
    size_t count = insert.values.size();
    if (insert.select) {
        bound.select = SelectBinder(*insert.select, schema, unknown).bind();
        count = bound.select->outputs.size();
    }
    const Scope nothing;
    ExpressionBinder binder(nothing, unknown);
    for (const ExpressionPtr& value : insert.values) {
        binder.bind(*value, {aggregateInExpression, {}, {}});
        bound.values.push_back(value.get());
    }
    if (count != bound.columns.size()) raiseAt(valueCount, miscounted(insert, bound));
    return bound;
}

BoundUpdate bindUpdate(UpdateStatement& update, const Schema& schema, UnknownNames& unknown) {
    BoundUpdate bound;
    bound.scope.add(update.table, schema);
    ExpressionBinder binder(bound.scope, unknown);
    const Clause values{aggregateInExpression, bound.scope.all(), {}};
    for (const Assignment& assignment : update.assignments) {
        binder.bind(*assignment.target, values);
        binder.bind(*assignment.value, values);
        const Name& name = *assignment.target->as<Name>();
        if (name.source < 0) continue; // counted as unknown
        const Column& column = bound.scope.column(name);
        if (column.autoNumber) raiseAt(notUpdatable, assignment.target->text, {column.name});
        const bool doubled = std::any_of(bound.assignments.begin(), bound.assignments.end(),
                                         [&](const BoundAssignment& other) { return other.column == &column; });
        if (doubled) raiseAt(updateSyntax, assignment.target->text, {excerpt(assignment.target->text)});
        bound.assignments.push_back({&column, assignment.value.get()});
    }
    bound.where = bindWhere(update.where.get(), bound.scope, binder);
    return bound;
}

BoundDelete bindDelete(DeleteStatement& statement, const Schema& schema, UnknownNames& unknown) {
    BoundDelete bound;
    bound.scope.add(statement.table, schema);
    const bool foreign = !statement.starTable.isEmpty() && bound.scope.find(statement.starTable, bound.scope.all()) < 0;
    if (foreign) raiseAt(deleteTable, statement.starTable);
    ExpressionBinder binder(bound.scope, unknown);
    bound.where = bindWhere(statement.where.get(), bound.scope, binder);
    return bound;
}

} // namespace jet
