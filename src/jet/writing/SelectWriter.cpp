#include "jet/writing/SelectWriter.h"

#include "jet/binding/Typing.h"
#include "jet/writing/JoinDirection.h"
#include "jet/writing/RowKeys.h"
#include "jet/writing/SubqueryWriter.h"

#include <algorithm>

namespace jet {

namespace {

QByteArrayList named(const QByteArrayList& outputs, const QByteArrayList& names) {
    if (names.isEmpty()) return outputs;
    QByteArrayList result;
    for (qsizetype i = 0; i < outputs.size(); ++i)
        result.append(outputs[i] + " AS " + names[i]);
    return result;
}

QByteArrayList numbered(size_t count) {
    QByteArrayList names;
    for (size_t i = 0; i < count; ++i)
        names.append('c' + QByteArray::number(qulonglong(i)));
    return names;
}

} // namespace

SelectWriter::SelectWriter(const Target& target, const BoundSelect& select, ParameterList& parameters,
                           const ExpressionWriter* outer)
    : target_(target)
    , select_(select)
    , parameters_(parameters)
    , outer_(outer)
    , expressions_(target, select_.scope, parameters, outer) {}

QByteArray SelectWriter::write() {
    return query({});
}

QByteArray SelectWriter::writeNamed() {
    QByteArrayList names;
    for (const BoundOutput& output : select_.outputs)
        names.append(target_.name(output.column.name));
    return query(names);
}

QByteArray SelectWriter::write(const std::vector<TargetColumn>& targets) {
    StoreWriter stores(target_, expressions_);
    QByteArrayList stored;
    for (size_t i = 0; i < targets.size(); ++i)
        stored.append(stores.value(*select_.outputs[i].expression, targets[i]));
    return rows(stored);
}

QByteArray SelectWriter::writeNumbered() {
    return query(numbered(select_.outputs.size()));
}

QByteArray SelectWriter::query(const QByteArrayList& names) {
    if (select_.unions.empty()) return rows(outputs(select_, select_.distinct), names);
    if (select_.unionOrder.empty()) return compound(names);
    const QByteArrayList inner = numbered(select_.outputs.size());
    QByteArrayList terms;
    for (const UnionOrder& order : select_.unionOrder) {
        const QByteArray& column = inner[order.output];
        const ColumnType type = select_.outputs[static_cast<size_t>(order.output)].column.type;
        terms.append(target_.orderTerm(isCollated(type) ? target_.collated(column) : column, order.descending, true));
    }
    return "SELECT " + named(inner, names).join(", ") + " FROM (" + compound(inner) + ") AS united ORDER BY " +
           terms.join(", ");
}

// From left to right; the first part gives the names, and the order of texts by which repeats are found.
QByteArray SelectWriter::compound(const QByteArrayList& names) {
    const bool collated =
        !std::all_of(select_.unions.begin(), select_.unions.end(), [](const BoundUnionPart& part) { return part.all; });
    QByteArray written = part(select_, collated, names.isEmpty() ? numbered(select_.outputs.size()) : names);
    for (const BoundUnionPart& other : select_.unions) {
        SelectWriter writer(target_, *other.select, parameters_, outer_);
        written += (other.all ? " UNION ALL " : " UNION ") + writer.part(select_, collated, {});
    }
    return written;
}

QByteArray SelectWriter::part(const BoundSelect& whole, bool collated, const QByteArrayList& names) {
    const QByteArray written = rows(outputs(whole, collated || select_.distinct), names);
    return select_.top ? "SELECT * FROM (" + written + ") AS part" : written;
}

QByteArrayList SelectWriter::outputs(const BoundSelect& whole, bool collated) {
    QByteArrayList written;
    for (const BoundOutput& output : select_.outputs) {
        const ColumnType type = whole.outputs[static_cast<size_t>(written.size())].column.type;
        const QByteArray native = expressions_.output(*output.expression, type);
        const bool byOrder =
            collated && isCollated(type) && !output.expression->isNull() && !followsKey(whole, *output.expression);
        written.append(byOrder ? target_.collatedOutput(native) : native);
    }
    return written;
}

// Whether rows that repeat each other have the same text in any case, since the key of its row is among the outputs.
bool SelectWriter::followsKey(const BoundSelect& whole, const Expression& output) const {
    const Name* const text = output.as<Name>();
    if (!text || text->level != 0 || text->alias || &whole != &select_ || !select_.unions.empty()) return false;
    const Scope::Source& source = select_.scope[text->source];
    const auto& key = source.table->primaryKey;
    const auto isShown = [&](int column) {
        return column != text->column && std::ranges::any_of(select_.outputs, [&](const BoundOutput& other) {
                   const Name* const name = other.expression->as<Name>();
                   return name && name->level == 0 && !name->alias && name->source == text->source &&
                          name->column == column;
               });
    };
    return !source.derived && !key.empty() && std::ranges::all_of(key, isShown);
}

// Engines see that all rows are one group by an aggregate among the outputs only, not by one in HAVING.
QByteArrayList SelectWriter::showingGroup(QByteArrayList outputs) const {
    const bool shown = !select_.groupBy.empty() || std::ranges::any_of(select_.outputs, [](const BoundOutput& output) {
        return output.expression->hasAggregate;
    });
    if (select_.isAggregated && !shown) outputs.front() = "CASE WHEN count(*) >= 0 THEN " + outputs.front() + " END";
    return outputs;
}

QByteArray SelectWriter::rows(const QByteArrayList& values, const QByteArrayList& names) {
    const QByteArrayList outputs = showingGroup(values);
    if (select_.top && (select_.top->percent || !select_.orderBy.empty())) return ranked(outputs, names);
    QByteArray native = body(named(outputs, names));
    if (select_.top) return native + " LIMIT " + QByteArray::number(select_.top->count.value.toLong());
    return select_.orderBy.empty() || hasOneRow() ? native : native + " ORDER BY " + settledOrder().join(", ");
}

// There is nothing to sort then, and an aggregate of the order alone would cost as much as all the others.
bool SelectWriter::hasOneRow() const {
    return select_.isAggregated && select_.groupBy.empty() && select_.rowSources.empty();
}

QByteArray SelectWriter::body(const QByteArrayList& outputs) {
    QByteArray native = (select_.distinct ? "SELECT DISTINCT " : "SELECT ") + outputs.join(", ") + from();
    if (!select_.where.empty()) native += " WHERE " + expressions_.conjunction(select_.where);
    native += groups();
    if (!select_.having.empty()) native += " HAVING " + expressions_.conjunction(select_.having);
    return native;
}

QByteArray SelectWriter::from() {
    if (!select_.from->empty()) return " FROM " + FromWriter(target_, select_.scope, expressions_).write(*select_.from);
    if (!select_.isAggregated || !expressions_.isOfSubquery()) return {};
    return " FROM (SELECT 1 AS " + target_.name(singleRowColumn) + ") AS " + target_.name(singleRowTable);
}

QByteArray SelectWriter::groups() {
    QByteArrayList groups;
    for (const Expression* group : select_.groupBy)
        groups.append(expressions_.key(*group));
    for (const int source : select_.rowSources)
        for (const RowKey& key : rowKeysOf(select_.scope[source], target_))
            groups.append(key.native);
    return groups.isEmpty() ? QByteArray() : " GROUP BY " + groups.join(", ");
}

// Other columns that are to be never Null may be given leave to be so while the statement is kept.
bool SelectWriter::mayBeNull(const Expression& expression) const {
    const auto* const name = withoutAlias(expression).as<Name>();
    if (!name || name->level > 0 || name->source < 0) return true;
    const Scope::Source& source = select_.scope[name->source];
    return source.derived || !source.table->primaryKey.contains(name->column) ||
           optionalSources(select_)[static_cast<size_t>(name->source)];
}

QByteArrayList SelectWriter::orderTerms() {
    QByteArrayList terms;
    for (const BoundOrder& order : select_.orderBy)
        terms.append(
            target_.orderTerm(expressions_.key(*order.expression), order.descending, mayBeNull(*order.expression)));
    return terms;
}

// Rows that the statement leaves equal follow each other by their keys where the engine would shuffle them.
QByteArrayList SelectWriter::settledOrder() {
    QByteArrayList terms = orderTerms();
    const auto& sources = select_.scope.sources();
    const bool isOfRows =
        !select_.distinct && !select_.isAggregated && select_.rowSources.empty() &&
        std::ranges::none_of(sources, [](const Scope::Source& source) { return source.derived != nullptr; });
    if (target_.keepsEqualsInOrder() || !isOfRows) return terms;
    QByteArrayList settling;
    const std::vector<bool> optional = optionalSources(select_);
    for (size_t source = 0; source < sources.size(); ++source) {
        const QList<RowKey> keys = rowKeysOf(sources[source], target_);
        const auto term = [&](const RowKey& key) { return target_.orderTerm(key.native, false, optional[source]); };
        if (keys.size() == 1 && terms.contains(term(keys.front()))) return terms;
        for (const RowKey& key : keys)
            settling.append(term(key));
    }
    return terms + settling;
}

// The same where the outputs are columns c0, c1, … of a derived table.
QByteArray SelectWriter::placeTerms() {
    QByteArrayList terms;
    for (const BoundOrder& order : select_.orderBy) {
        const QByteArray column = 'c' + QByteArray::number(order.output);
        const bool collated = isCollated(order.expression->type);
        terms.append(target_.orderTerm(collated ? target_.collated(column) : column, order.descending,
                                       mayBeNull(*order.expression)));
    }
    return terms.join(", ");
}

// TOP n takes in all rows that tie with the n-th one; n PERCENT is rounded up to whole rows.
QByteArray SelectWriter::ranked(const QByteArrayList& outputs, const QByteArrayList& names) {
    const QByteArrayList columns = numbered(static_cast<size_t>(outputs.size()));
    const QByteArrayList inner = named(outputs, columns);
    const bool inTwoSteps = select_.distinct; // repeats go before rows are counted
    const QByteArray order = inTwoSteps ? placeTerms() : orderTerms().join(", ");
    QByteArrayList ranks{order.isEmpty() ? QByteArray("row_number() OVER () AS place")
                                         : "rank() OVER (ORDER BY " + order + ") AS place"};
    if (select_.top->percent) ranks.append("count(*) OVER () AS total");
    const QByteArray chosen = inTwoSteps
                                  ? "SELECT " + (columns + ranks).join(", ") + " FROM (" + body(inner) + ") AS apart"
                                  : body(inner + ranks);
    const QByteArray count = QByteArray::number(select_.top->count.value.toLong());
    const QByteArray within = select_.top->percent ? "(place - 1) * 100 < total * " + count : "place <= " + count;
    return "SELECT " + named(columns, names).join(", ") + " FROM (" + chosen + ") AS ranked WHERE " + within +
           " ORDER BY place";
}

} // namespace jet
