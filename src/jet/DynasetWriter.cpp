#include "jet/DynasetWriter.h"

#include "jet/JoinDirection.h"
#include "jet/StatementWriter.h"

namespace jet {

DynasetPlan DynasetWriter::write() {
    for (const BoundOutput& output : select_.outputs)
        plan_.columns.append(output.column);
    plan_.fixedLiterals = fixedLiteralsOf(select_);
    plan_.updatable = isUpdatable();
    if (!plan_.updatable) return std::move(plan_);
    addSources();
    plan_.deleteSource = determiningSource(select_);
    plan_.keys = keys();
    plan_.row = row();
    return std::move(plan_);
}

// Each row must come from one row of each table, and one table must determine the others.
bool DynasetWriter::isUpdatable() const {
    const bool ofRows = !select_.distinct && !select_.isAggregated && !select_.scope.sources().empty();
    return ofRows && determiningSource(select_) >= 0;
}

void DynasetWriter::addSources() {
    const std::vector<bool> optional = optionalSources(select_);
    for (int source = 0; source < static_cast<int>(optional.size()); ++source)
        addSource(source, optional[static_cast<size_t>(source)]);
}

void DynasetWriter::addSource(int source, bool optional) {
    const Scope::Source& entry = select_.scope[source];
    const QByteArray table = target_.name(entry.name);
    DynasetSource added{entry.table->name, entry.name, {}, optional};
    const auto addKey = [&](const QByteArray& native, ColumnType type) {
        added.keyOrdinals.append(static_cast<int>(keyColumns_.size()));
        keyColumns_.append(native);
        plan_.keyTypes.append(type);
    };
    for (const int column : entry.table->primaryKey) {
        const Column& key = entry.table->columns[column];
        addKey(table + '.' + target_.name(key.name), key.type);
    }
    if (entry.table->primaryKey.isEmpty()) addKey(target_.rowIdentity(table), ColumnType::Int);
    plan_.sources.append(added);
}

NativeStatement DynasetWriter::keys() {
    ParameterList parameters;
    const QByteArray text = SelectWriter(target_, select_, parameters).rows(keyColumns_);
    return {text, parameters.parameters()};
}

NativeStatement DynasetWriter::row() {
    ParameterList parameters;
    ExpressionWriter expressions(target_, select_.scope, parameters);
    QByteArrayList outputs;
    for (const BoundOutput& output : select_.outputs)
        outputs.append(expressions.value(*output.expression));
    const QByteArray tables = rowTables(static_cast<int>(parameters.parameters().size()) + 1);
    return {"SELECT " + (outputs + keyColumns_).join(", ") + tables, parameters.parameters()};
}

// A key is compared as the engine compares it: two texts that only the dialect takes for equal are two rows.
QByteArray DynasetWriter::rowTables(int firstKeyParameter) const {
    QByteArray tables = " FROM (SELECT 1)";
    for (const DynasetSource& source : plan_.sources) {
        QByteArrayList conditions;
        for (const int key : source.keyOrdinals)
            conditions.append(keyColumns_[key] + " = " +
                              target_.parameter(firstKeyParameter + key, plan_.keyTypes[key]));
        const QByteArray table = target_.name(source.table);
        tables += " LEFT JOIN " + table + (source.name == source.table ? "" : " AS " + target_.name(source.name)) +
                  " ON " + conditions.join(" AND ");
    }
    return tables;
}

} // namespace jet
