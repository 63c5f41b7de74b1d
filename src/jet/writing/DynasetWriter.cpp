#include "jet/writing/DynasetWriter.h"

#include "jet/writing/JoinDirection.h"
#include "jet/writing/RowKeys.h"
#include "jet/writing/StatementWriter.h"

#include <algorithm>

namespace jet {

namespace {

// No statement can spell it.
constexpr QStringView noTable = u".row";

} // namespace

DynasetPlan DynasetWriter::write() {
    for (const BoundOutput& output : select_.outputs)
        plan_.columns.append(output.column);
    plan_.fixedLiterals = fixedLiteralsOf(select_);
    chooseSources();
    plan_.deleteSource = deleteSource();
    plan_.updatable = isOfRows() && plan_.deleteSource >= 0;
    if (!plan_.updatable) {
        plan_.deleteSource = -1;
        return std::move(plan_);
    }
    const std::vector<bool> optional = optionalSources(select_);
    for (const int source : sources_)
        addSource(source, optional[static_cast<size_t>(source)]);
    for (OutputColumn& column : plan_.columns)
        column.source = static_cast<int>(sources_.indexOf(column.source));
    plan_.keys = keys();
    plan_.row = row();
    return std::move(plan_);
}

// Whether each row comes from one row of each table.
bool DynasetWriter::isOfRows() const {
    const auto& sources = select_.scope.sources();
    const bool ofTables =
        std::none_of(sources.begin(), sources.end(), [](const Scope::Source& source) { return source.derived; });
    return ofTables && !select_.distinct && !select_.isAggregated && select_.unions.empty();
}

void DynasetWriter::chooseSources() {
    sources_ = QList<int>(select_.rowSources.begin(), select_.rowSources.end());
    for (int source = 0; select_.rowSources.empty() && source < select_.scope.all().end; ++source)
        sources_.append(source);
}

// Of one table each row stands once; of several one must determine the others.
int DynasetWriter::deleteSource() const {
    return sources_.size() == 1 ? 0 : static_cast<int>(sources_.indexOf(determiningSource(select_)));
}

void DynasetWriter::addSource(int source, bool optional) {
    const Scope::Source& entry = select_.scope[source];
    DynasetSource added{entry.table->name, entry.name, {}, optional};
    for (const RowKey& key : rowKeysOf(entry, target_)) {
        added.keyOrdinals.append(static_cast<int>(keyColumns_.size()));
        keyColumns_.append(key.native);
        plan_.keyTypes.append(key.type);
    }
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
        outputs.append(expressions.output(*output.expression, output.column.type));
    const QByteArray tables = rowTables(static_cast<int>(parameters.parameters().size()) + 1);
    return {"SELECT " + (outputs + keyColumns_).join(", ") + tables, parameters.parameters()};
}

// A key is compared as the engine compares it: two texts that only the dialect takes for equal are two rows.
QByteArray DynasetWriter::rowTables(int firstKeyParameter) const {
    QByteArray tables = " FROM (SELECT 1) AS " + target_.name(noTable);
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
