#include "jet/StatementWriter.h"

#include "jet/SelectWriter.h"

#include <algorithm>

namespace jet {

QList<FixedLiteral> fixedLiteralsOf(const BoundSelect& select) {
    QList<FixedLiteral> fixed;
    for (const Literal& literal : select.fixedLiterals) {
        const bool known = std::any_of(fixed.begin(), fixed.end(),
                                       [&](const FixedLiteral& other) { return other.literal == literal.index; });
        if (!known) fixed.append({literal.index, literal.value});
    }
    return fixed;
}

Plan StatementWriter::finish(StatementKind kind, QByteArray native, const QString& table) const {
    Plan plan;
    plan.kind = kind;
    plan.native = std::move(native);
    plan.parameters = parameters_.parameters();
    plan.targetTable = table;
    return plan;
}

Plan StatementWriter::write(const BoundSelect& select) {
    const auto& sources = select.scope.sources();
    Plan plan = finish(StatementKind::Select, SelectWriter(target_, select, parameters_).write(),
                       sources.size() == 1 ? sources.front().table->name : QString());
    plan.fixedLiterals = fixedLiteralsOf(select);
    for (const BoundOutput& output : select.outputs)
        plan.columns.append(output.column);
    return plan;
}

QByteArray StatementWriter::insertedValues(const BoundInsert& insert) {
    if (insert.select) {
        QList<ColumnType> types;
        for (const Column* column : insert.columns)
            types.append(column->type);
        return SelectWriter(target_, *insert.select, parameters_).write(types);
    }
    const Scope nothing;
    ExpressionWriter expressions(target_, nothing, parameters_);
    QByteArrayList values;
    for (size_t i = 0; i < insert.values.size(); ++i)
        values.append(expressions.stored(*insert.values[i], insert.columns[i]->type));
    return "VALUES (" + values.join(", ") + ')';
}

Plan StatementWriter::write(const BoundInsert& insert) {
    QByteArrayList columns;
    for (const Column* column : insert.columns)
        columns.append(target_.name(column->name));
    const QByteArray values = insertedValues(insert);
    const QByteArray native =
        "INSERT INTO " + target_.name(insert.table->name) + " (" + columns.join(", ") + ") " + values;
    Plan plan = finish(StatementKind::Insert, native, insert.table->name);
    if (insert.select) plan.fixedLiterals = fixedLiteralsOf(*insert.select);
    return plan;
}

QByteArray StatementWriter::where(const Expression* condition, ExpressionWriter& expressions) const {
    return condition ? " WHERE " + expressions.condition(*condition) : QByteArray();
}

Plan StatementWriter::write(const BoundUpdate& update) {
    ExpressionWriter expressions(target_, update.scope, parameters_);
    QByteArrayList assignments;
    for (const BoundAssignment& assignment : update.assignments)
        assignments.append(target_.name(assignment.column->name) + " = " +
                           expressions.stored(*assignment.value, assignment.column->type));
    const QByteArray table = FromWriter(target_, update.scope, expressions).table(update.scope[0]);
    const QByteArray native = "UPDATE " + table + " SET " + assignments.join(", ") + where(update.where, expressions);
    return finish(StatementKind::Update, native, update.scope[0].table->name);
}

Plan StatementWriter::write(const BoundDelete& statement) {
    ExpressionWriter expressions(target_, statement.scope, parameters_);
    const QByteArray table = FromWriter(target_, statement.scope, expressions).table(statement.scope[0]);
    const QByteArray native = "DELETE FROM " + table + where(statement.where, expressions);
    return finish(StatementKind::Delete, native, statement.scope[0].table->name);
}

} // namespace jet
