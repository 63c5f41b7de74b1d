#include "jet/ActionBinder.h"

#include "base/RunTimeError.h"
#include "jet/Lexer.h"

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
        if (index < 0) mkl::throwError(unknownColumn, {name.toString()});
        const bool doubled =
            std::find(bound.columns.begin(), bound.columns.end(), &columns[index]) != bound.columns.end();
        if (doubled) mkl::throwError(insertSyntax, {name.toString()});
        bound.columns.push_back(&columns[index]);
    }
}

const Expression* bindWhere(Expression* where, const Scope& scope, ExpressionBinder& binder) {
    if (where) binder.bind(*where, {aggregateInWhere, scope.all(), {}});
    return where;
}

} // namespace

BoundInsert bindInsert(InsertStatement& insert, const Schema& schema, UnknownNames& unknown) {
    BoundInsert bound;
    bound.table = schema.findTable(insert.table);
    if (!bound.table) mkl::throwError(noOutputTable, {insert.table.toString()});
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
    if (count != bound.columns.size()) mkl::throwError(valueCount);
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
        if (column.autoNumber) mkl::throwError(notUpdatable, {column.name});
        const bool doubled = std::any_of(bound.assignments.begin(), bound.assignments.end(),
                                         [&](const BoundAssignment& other) { return other.column == &column; });
        if (doubled) mkl::throwError(updateSyntax, {excerpt(assignment.target->text)});
        bound.assignments.push_back({&column, assignment.value.get()});
    }
    bound.where = bindWhere(update.where.get(), bound.scope, binder);
    return bound;
}

BoundDelete bindDelete(DeleteStatement& statement, const Schema& schema, UnknownNames& unknown) {
    BoundDelete bound;
    bound.scope.add(statement.table, schema);
    const bool foreign = !statement.starTable.isEmpty() && bound.scope.find(statement.starTable, bound.scope.all()) < 0;
    if (foreign) mkl::throwError(deleteTable);
    ExpressionBinder binder(bound.scope, unknown);
    bound.where = bindWhere(statement.where.get(), bound.scope, binder);
    return bound;
}

} // namespace jet
