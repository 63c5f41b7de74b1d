#include "dao/ReadAhead.h"

#include "base/RunTimeError.h"
#include "dao/Connection.h"
#include "dao/PlanCache.h"
#include "jet/AllKeys.h"

namespace dao {

void ReadAhead::endWalk() {
    if (--walks_ == 0) clear();
}

// Rows are read once in a walk at most: one that changes what it reads would have them read again and again.
bool ReadAhead::answer(const jet::Shape& shape, QStringView text, Connection& connection, RowStore& rows) {
    if (!isOn() || !connection.readsAhead()) return false;
    std::shared_ptr<AllRows>& known = byShape_[shape.key];
    if (!known) known = std::make_shared<AllRows>();
    const std::shared_ptr<AllRows> kept = known;
    AllRows& all = *kept;
    if (++all.asked <= patience) return false;
    if (all.asked == patience + 1) read(all, text, connection);
    if (!all.isRead || all.changes != connection.changeStamp()) return false;
    const Parameters key = parameterValues({{all.keyLiteral, all.keyNegated}}, shape);
    const auto group = all.groups.constFind(key.front().integer);
    ++answered_;
    if (group == all.groups.cend()) return true;
    for (qsizetype row = group->first; row < group->end; ++row) {
        for (int column = 0; column < all.outputs; ++column)
            rows.append(all.rows.value(row, column));
        rows.endRow();
    }
    return true;
}

// Whatever fails fails again, and is told, where the statement is run by itself.
void ReadAhead::read(AllRows& all, QStringView text, Connection& connection) {
    try {
        const auto plan = jet::compileForAllKeys(text, connection.schema(), connection.target());
        if (!plan) return;
        const auto statement = connection.prepare(plan->native);
        statement->requireTypes(plan->outputs);
        statement->read({}, all.rows);
        all.outputs = static_cast<int>(plan->outputs.size());
        all.keyLiteral = plan->key.literal;
        all.keyNegated = plan->key.negated;
    } catch (const mkl::RunTimeError&) {
        all.rows.clear();
        return;
    }
    all.changes = connection.changeStamp();
    all.isRead = true;
    for (qsizetype row = 0, end = 0; row < all.rows.size(); row = end) {
        const qint64 key = all.rows.value(row, all.outputs).integer;
        while (end < all.rows.size() && all.rows.value(end, all.outputs).integer == key)
            ++end;
        all.groups.insert(key, {row, end});
    }
}

} // namespace dao
