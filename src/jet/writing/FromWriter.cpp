#include "jet/writing/FromWriter.h"

namespace jet {

namespace {

bool isJoin(const FromItem& item) {
    return std::holds_alternative<Join>(item.node);
}

bool isInnerOnly(const FromItem& item) {
    const auto* const join = std::get_if<Join>(&item.node);
    return !join || (join->kind == JoinKind::Inner && isInnerOnly(*join->left) && isInnerOnly(*join->right));
}

} // namespace

QByteArray FromWriter::table(const Scope::Source& source) const {
    if (source.derived) return expressions_.derivedTable(*source.derived) + " AS " + target_.name(source.name);
    const QByteArray name = target_.name(source.table->name);
    return source.hasAlias ? name + " AS " + target_.name(source.name) : name;
}

// Engines hide the row identity of a table behind the parentheses of a join.
QByteArray FromWriter::joinedTable(const Scope::Source& source) const {
    if (!inParentheses_ || source.derived || !source.table->primaryKey.isEmpty()) return table(source);
    return target_.withRowIdentity(target_.name(source.table->name)) + " AS " + target_.name(source.name);
}

QByteArray FromWriter::write(const std::vector<FromPtr>& items) {
    QByteArrayList written;
    for (const FromPtr& entry : items)
        written.append(item(*entry));
    return written.join(", ");
}

QByteArray FromWriter::item(const FromItem& item) {
    if (const auto* node = std::get_if<Join>(&item.node)) return isInnerOnly(item) ? innerJoins(item) : join(*node);
    return joinedTable(scope_[std::get<TableSource>(item.node).source]);
}

// Inner joins are one row of tables, whatever their parentheses say; so the engine is free to choose where it
// begins. Each condition stands behind the first table at which all tables of its join are there.
QByteArray FromWriter::innerJoins(const FromItem& item) {
    std::vector<JoinedTable> tables;
    collect(item, tables);
    QByteArray written = tables.front().native;
    for (size_t i = 1; i < tables.size(); ++i) {
        const QByteArray conditions = expressions_.conjunction(tables[i].conditions);
        written += " INNER JOIN " + tables[i].native + " ON " + (conditions.isEmpty() ? "0 = 0" : conditions);
    }
    return written;
}

void FromWriter::collect(const FromItem& item, std::vector<JoinedTable>& tables) {
    if (const auto* source = std::get_if<TableSource>(&item.node)) {
        tables.push_back({joinedTable(scope_[source->source]), {}});
        return;
    }
    const Join& join = std::get<Join>(item.node);
    collect(*join.left, tables);
    collect(*join.right, tables);
    tables.back().conditions.push_back(join.on.get());
}

// A right join is a left one seen from the other side; the output columns are spelt out, so their order stays.
QByteArray FromWriter::join(const Join& join) {
    const bool swapped = join.kind == JoinKind::Right;
    const FromItem& first = swapped ? *join.right : *join.left;
    const FromItem& second = swapped ? *join.left : *join.right;
    const QByteArray left = item(first);
    const bool wasInParentheses = std::exchange(inParentheses_, inParentheses_ || isJoin(second));
    const QByteArray right = isJoin(second) ? '(' + item(second) + ')' : item(second);
    inParentheses_ = wasInParentheses;
    return left + (join.kind == JoinKind::Inner ? " INNER JOIN " : " LEFT JOIN ") + right + " ON " +
           expressions_.condition(*join.on);
}

} // namespace jet
