#include "dao/PlanCache.h"

#include "jet/Compiler.h"
#include "jet/Operators.h"

#include <algorithm>

namespace dao {

namespace {

constexpr size_t variantsPerShape = 8;

bool hasFixedLiterals(const jet::Plan& plan, const jet::Shape& shape) {
    return std::ranges::all_of(plan.fixedLiterals, [&](const jet::FixedLiteral& fixed) {
        return shape.literals[fixed.literal] == fixed.value;
    });
}

Access accessOf(const jet::Plan& plan) {
    return plan.kind == jet::StatementKind::Select ? Access::Read : Access::Write;
}

std::shared_ptr<Translation> translate(QStringView text, Connection& connection) {
    auto result = std::make_shared<Translation>();
    result->plan = jet::compileStatement(text, connection.schema(), connection.target());
    result->columns = std::make_shared<Columns>(result->plan.columns);
    result->statement = connection.prepare(result->plan.native, accessOf(result->plan));
    return result;
}

} // namespace

std::shared_ptr<Translation> PlanCache::translation(const jet::Shape& shape, QStringView text, Connection& connection) {
    const auto suitable = [&](const auto& candidate) { return hasFixedLiterals(candidate->plan, shape); };
    if (const Variants* known = byShape_.find(shape.key)) {
        const auto found = std::ranges::find_if(*known, suitable);
        if (found != known->end()) return *found;
    }
    if (connection.refreshSchema()) clear();
    auto made = translate(text, connection);
    ++compilations_;
    Variants* known = byShape_.find(shape.key);
    if (!known) known = &byShape_.insert(shape.key, {});
    if (known->size() >= variantsPerShape) known->erase(known->begin());
    known->push_back(made);
    return made;
}

Parameters parameterValues(const jet::Plan& plan, const jet::Shape& shape) {
    Parameters values;
    values.reserve(plan.parameters.size());
    for (const jet::Parameter& parameter : plan.parameters) {
        const mkl::Variant& literal = shape.literals[parameter.literal];
        values.append(encode(parameter.negated ? jet::negate(literal) : literal));
    }
    return values;
}

} // namespace dao
