#include "jet/writing/ActionWriter.h"

#include "jet/writing/FromWriter.h"
#include "jet/writing/SelectWriter.h"
#include "jet/writing/StatementWriter.h"

namespace jet {

namespace {

// What no row meets.
const QByteArray never = QByteArrayLiteral("0 = 1");

QByteArray where(const QByteArrayList& conditions) {
    return conditions.isEmpty() ? QByteArray() : " WHERE " + conditions.join(" AND ");
}

QByteArray outputName(qsizetype index) {
    return 'c' + QByteArray::number(index);
}

// An output of SelectWriter::writeNumbered.
QByteArray outputValue(qsizetype index, ColumnType type) {
    return type == ColumnType::Unknown ? "mkl_unpack(" + outputName(index) + ')' : outputName(index);
}

} // namespace

Plan ActionWriter::finish(StatementKind kind, QByteArray native, const QString& table, const BoundSelect* rows) const {
    Plan plan;
    plan.kind = kind;
    plan.native = std::move(native);
    plan.parameters = parameters_.parameters();
    plan.targetTable = table;
    if (rows) plan.fixedLiterals = fixedLiteralsOf(*rows);
    return plan;
}

QByteArray ActionWriter::head(const BoundInsert& insert) const {
    QByteArrayList columns;
    for (const TargetColumn& target : insert.columns)
        columns.append(target_.name(target.column->name));
    if (insert.missingKey) columns.append(target_.name(insert.missingKey->name));
    return "INSERT INTO " + target_.name(insert.table->name) + " (" + columns.join(", ") + ") ";
}

QByteArray ActionWriter::values(const BoundInsert& insert) {
    const Scope nothing;
    ExpressionWriter expressions(target_, nothing, parameters_);
    StoreWriter stores(target_, expressions);
    QByteArrayList values;
    for (size_t i = 0; i < insert.values.size(); ++i)
        values.append(stores.value(*insert.values[i], insert.columns[i]));
    if (insert.missingKey) values.append(StoreWriter::keyOf("NULL"));
    return "VALUES (" + values.join(", ") + ')';
}

QByteArray ActionWriter::lenientValues(const BoundInsert& insert) {
    const Scope nothing;
    ExpressionWriter expressions(target_, nothing, parameters_);
    StoreWriter stores(target_, expressions);
    QByteArrayList values, conditions;
    for (size_t i = 0; i < insert.values.size(); ++i) {
        values.append(stores.value(*insert.values[i], insert.columns[i]));
        conditions += stores.conditions(*insert.values[i], insert.columns[i]);
    }
    if (insert.missingKey) {
        values.append("NULL");
        conditions.append(never);
    }
    return conditions.isEmpty() ? QByteArray() : "SELECT " + values.join(", ") + where(conditions);
}

// What is the same under DISTINCT is decided before the values take the types of the columns.
QByteArray ActionWriter::rows(const BoundInsert& insert) {
    SelectWriter select(target_, *insert.select, parameters_);
    const bool bare = !insert.select->distinct && insert.select->unions.empty() && !insert.missingKey;
    if (bare) return select.write(insert.columns);
    const Scope nothing;
    ExpressionWriter expressions(target_, nothing, parameters_);
    const StoreWriter stores(target_, expressions);
    QByteArrayList values;
    for (const TargetColumn& target : insert.columns) {
        const ColumnType type = insert.select->outputs[static_cast<size_t>(values.size())].column.type;
        values.append(stores.value(outputValue(values.size(), type), type, target));
    }
    if (insert.missingKey) values.append(StoreWriter::keyOf("NULL"));
    return "SELECT " + values.join(", ") + " FROM (" + select.writeNumbered() + ") AS chosen";
}

QByteArray ActionWriter::lenientRows(const BoundInsert& insert) {
    const Scope nothing;
    ExpressionWriter expressions(target_, nothing, parameters_);
    const StoreWriter stores(target_, expressions);
    QByteArrayList values, conditions;
    for (const TargetColumn& target : insert.columns) {
        const ColumnType type = insert.select->outputs[static_cast<size_t>(values.size())].column.type;
        const QByteArray name = outputValue(values.size(), type);
        values.append(stores.value(name, type, target));
        conditions += stores.conditions(name, type, target);
    }
    if (insert.missingKey) {
        values.append("NULL");
        conditions.append(never);
    }
    if (conditions.isEmpty()) return {};
    return "SELECT " + values.join(", ") + " FROM (" +
           SelectWriter(target_, *insert.select, parameters_).writeNumbered() + ") AS chosen" + where(conditions);
}

Plan ActionWriter::write(const BoundInsert& insert) {
    const QByteArray native = head(insert) + (insert.select ? rows(insert) : values(insert));
    const QByteArray lenient = insert.select ? lenientRows(insert) : lenientValues(insert);
    Plan plan = finish(StatementKind::Insert, native, insert.table->name, insert.select ? &*insert.select : nullptr);
    if (!lenient.isEmpty()) plan.lenient = head(insert) + lenient;
    return plan;
}

Plan ActionWriter::write(const BoundUpdate& update) {
    const Texts texts = update.rows.scope.sources().size() == 1 ? updateTable(update) : updateJoin(update);
    const QString& table = update.rows.scope[update.target].table->name;
    Plan plan = finish(StatementKind::Update, texts.strict, table, &update.rows);
    plan.lenient = texts.lenient;
    return plan;
}

ActionWriter::Texts ActionWriter::updateTable(const BoundUpdate& update) {
    ExpressionWriter expressions(target_, update.rows.scope, parameters_);
    StoreWriter stores(target_, expressions);
    QByteArrayList assignments, fits, chosen;
    for (const BoundAssignment& assignment : update.assignments) {
        assignments.append(target_.name(assignment.column.column->name) + " = " +
                           stores.value(*assignment.value, assignment.column));
        fits += stores.conditions(*assignment.value, assignment.column);
    }
    if (!update.rows.where.empty()) chosen.append(expressions.conjunction(update.rows.where));
    const QByteArray table = FromWriter(target_, update.rows.scope, expressions).table(update.rows.scope[0]);
    const QByteArray head = "UPDATE " + table + " SET " + assignments.join(", ");
    return {head + where(chosen), fits.isEmpty() ? QByteArray() : head + where(chosen + fits)};
}

// The rows of the join are found first, each with the key of the row that it changes. Where several rows of the join
// meet one of the table, one of them gives the value.
ActionWriter::Texts ActionWriter::updateJoin(const BoundUpdate& update) {
    const BoundSelect& rows = update.rows;
    ExpressionWriter expressions(target_, rows.scope, parameters_);
    const StoreWriter stores(target_, expressions);
    const QByteArray source = target_.name(rows.scope[update.target].name);
    const QByteArray table = target_.name(rows.scope[update.target].table->name);
    QByteArrayList outputs, assignments, fits, same;
    for (const BoundAssignment& assignment : update.assignments) {
        const QByteArray name = outputName(outputs.size());
        const QByteArray value = "chosen." + name;
        outputs.append(expressions.value(*assignment.value) + " AS " + name);
        assignments.append(target_.name(assignment.column.column->name) + " = " +
                           stores.value(value, assignment.value->type, assignment.column));
        fits += stores.conditions(value, assignment.value->type, assignment.column);
    }
    const QByteArrayList inner = keys(rows, update.target, source), outer = keys(rows, update.target, table);
    for (qsizetype i = 0; i < inner.size(); ++i) {
        const QByteArray name = 'k' + QByteArray::number(i);
        outputs.append(inner[i] + " AS " + name);
        same.append(outer[i] + " = chosen." + name);
    }
    const QByteArray head = "UPDATE " + table + " SET " + assignments.join(", ") + " FROM (" +
                            chosen(rows, outputs, expressions) + ") AS chosen";
    return {head + where(same), fits.isEmpty() ? QByteArray() : head + where(same + fits)};
}

Plan ActionWriter::write(const BoundDelete& statement) {
    const BoundSelect& rows = statement.rows;
    ExpressionWriter expressions(target_, rows.scope, parameters_);
    const Scope::Source& source = rows.scope[statement.target];
    QByteArray native = "DELETE FROM ";
    if (rows.scope.sources().size() == 1) {
        native += FromWriter(target_, rows.scope, expressions).table(source);
        if (!rows.where.empty()) native += " WHERE " + expressions.conjunction(rows.where);
    } else {
        const QByteArray table = target_.name(source.table->name);
        const QByteArrayList inner = keys(rows, statement.target, target_.name(source.name));
        native += table + " WHERE (" + keys(rows, statement.target, table).join(", ") + ") IN (" +
                  chosen(rows, inner, expressions) + ')';
    }
    return finish(StatementKind::Delete, native, source.table->name, &rows);
}

Plan ActionWriter::write(const BoundMakeTable& statement) {
    QByteArrayList names, columns, values;
    bool packed = false;
    for (const BoundOutput& output : statement.select.outputs) {
        packed = packed || output.column.type == ColumnType::Unknown;
        values.append(outputValue(values.size(), output.column.type));
        names.append(target_.name(output.column.name));
        columns.append((names.last() + ' ' + target_.declaredType(output.column.type)).trimmed());
    }
    const QByteArray table = target_.name(statement.table);
    SelectWriter select(target_, statement.select, parameters_);
    const QByteArray rows =
        packed ? "SELECT " + values.join(", ") + " FROM (" + select.writeNumbered() + ") AS chosen" : select.write();
    Plan plan = finish(StatementKind::MakeTable, "CREATE TABLE " + table + " (" + columns.join(", ") + ')',
                       statement.table, &statement.select);
    plan.followUp = "INSERT INTO " + table + " (" + names.join(", ") + ") " + rows;
    return plan;
}

QByteArray ActionWriter::chosen(const BoundSelect& rows, const QByteArrayList& outputs,
                                ExpressionWriter& expressions) const {
    QByteArray native =
        "SELECT " + outputs.join(", ") + " FROM " + FromWriter(target_, rows.scope, expressions).write(*rows.from);
    if (!rows.where.empty()) native += " WHERE " + expressions.conjunction(rows.where);
    return native;
}

// What tells the rows of the table apart; table is a quoted name.
QByteArrayList ActionWriter::keys(const BoundSelect& rows, int source, const QByteArray& table) const {
    const Table& declared = *rows.scope[source].table;
    QByteArrayList keys;
    for (const int column : declared.primaryKey)
        keys.append(table + '.' + target_.name(declared.columns[column].name));
    if (keys.isEmpty()) keys.append(target_.rowIdentity(table));
    return keys;
}

} // namespace jet
