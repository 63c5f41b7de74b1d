#include "jet/writing/StatementWriter.h"

#include "jet/writing/SelectWriter.h"

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

} // namespace jet
