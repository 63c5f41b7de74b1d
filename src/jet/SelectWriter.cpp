#include "jet/SelectWriter.h"

namespace jet {

SelectWriter::SelectWriter(const Target& target, const BoundSelect& select, ParameterList& parameters)
    : target_(target)
    , select_(select)
    , expressions_(target, select_.scope, parameters) {}

QByteArray SelectWriter::write() {
    return rows(outputs());
}

QByteArray SelectWriter::write(const std::vector<TargetColumn>& targets) {
    StoreWriter stores(target_, expressions_);
    QByteArrayList stored;
    for (size_t i = 0; i < targets.size(); ++i)
        stored.append(stores.value(*select_.outputs[i].expression, targets[i]));
    return rows(stored);
}

QByteArray SelectWriter::writeNamed() {
    if (select_.top && !select_.orderBy.empty()) return write(); // named already
    QByteArrayList named = outputs();
    for (qsizetype i = 0; i < named.size(); ++i)
        named[i] += " AS c" + QByteArray::number(i);
    return rows(named);
}

QByteArrayList SelectWriter::outputs() {
    QByteArrayList written;
    for (const BoundOutput& output : select_.outputs)
        written.append(select_.distinct ? expressions_.comparable(*output.expression)
                                        : expressions_.value(*output.expression));
    return written;
}

QByteArray SelectWriter::rows(const QByteArrayList& outputs) {
    if (select_.orderBy.empty()) {
        const QByteArray limit = select_.top ? " LIMIT " + QByteArray::number(select_.top->count.value.toLong()) : "";
        return body(outputs) + limit;
    }
    return select_.top ? ranked(outputs) : body(outputs) + " ORDER BY " + orderTerms();
}

QByteArray SelectWriter::body(const QByteArrayList& outputs) {
    QByteArray native = (select_.distinct ? "SELECT DISTINCT " : "SELECT ") + outputs.join(", ");
    if (!select_.from->empty())
        native += " FROM " + FromWriter(target_, select_.scope, expressions_).write(*select_.from);
    if (!select_.where.empty()) native += " WHERE " + expressions_.conjunction(select_.where);
    if (!select_.groupBy.empty()) {
        QByteArrayList groups;
        for (const Expression* group : select_.groupBy)
            groups.append(expressions_.key(*group));
        native += " GROUP BY " + groups.join(", ");
    }
    if (!select_.having.empty()) native += " HAVING " + expressions_.conjunction(select_.having);
    return native;
}

QByteArray SelectWriter::orderTerms() {
    QByteArrayList terms;
    for (const BoundOrder& order : select_.orderBy)
        terms.append(target_.orderTerm(expressions_.key(*order.expression), order.descending));
    return terms.join(", ");
}

// TOP n takes in all rows that tie with the n-th one.
QByteArray SelectWriter::ranked(const QByteArrayList& outputs) {
    QByteArrayList inner, outer;
    for (const QByteArray& output : outputs) {
        outer.append('c' + QByteArray::number(outer.size()));
        inner.append(output + " AS " + outer.last());
    }
    inner.append("rank() OVER (ORDER BY " + orderTerms() + ") AS place");
    return "SELECT " + outer.join(", ") + " FROM (" + body(inner) +
           ") AS ranked WHERE place <= " + QByteArray::number(select_.top->count.value.toLong()) + " ORDER BY place";
}

} // namespace jet
