#include "dao/PlanCache.h"

#include "dao/Substitute.h"
#include "jet/Compiler.h"
#include "jet/functions/Operators.h"

#include <algorithm>

namespace dao {

namespace {

constexpr size_t variantsPerShape = 8;

bool hasFixedLiterals(const QList<jet::FixedLiteral>& fixedLiterals, const jet::Shape& shape) {
    return std::ranges::all_of(
        fixedLiterals, [&](const jet::FixedLiteral& fixed) { return shape.literals[fixed.literal] == fixed.value; });
}

Access accessOf(const jet::Plan& plan) {
    if (plan.kind == jet::StatementKind::MakeTable) return Access::Define;
    return plan.kind == jet::StatementKind::Select ? Access::Read : Access::Write;
}

QList<jet::ColumnType> typesOf(const QList<jet::OutputColumn>& columns) {
    QList<jet::ColumnType> types;
    for (const jet::OutputColumn& column : columns)
        types.append(column.type);
    return types;
}

std::shared_ptr<Translation> translate(QStringView text, Connection& connection) {
    auto result = std::make_shared<Translation>();
    result->plan = jet::compileStatement(text, connection.schema(), connection.target());
    result->columns = std::make_shared<Columns>(result->plan.columns);
    result->compile = [text = text.toString(), &connection](const jet::Target& target) {
        return jet::compileStatement(text, connection.schema(), target);
    };
    const auto writeFor = [compile = result->compile](const jet::Target& target) { return compile(target).native; };
    result->statement = prepareOrSubstitute(connection, result->plan.native, accessOf(result->plan),
                                            typesOf(result->plan.columns), writeFor);
    return result;
}

std::shared_ptr<DynasetTranslation> translateDynaset(QStringView text, Connection& connection) {
    auto result = std::make_shared<DynasetTranslation>();
    result->plan = jet::compileDynaset(text, connection.schema(), connection.target());
    result->columns = std::make_shared<Columns>(result->plan.columns);
    if (!result->plan.updatable) return result;
    const auto compile = [text = text.toString(), &connection](const jet::Target& target) {
        return jet::compileDynaset(text, connection.schema(), target);
    };
    result->keys = prepareOrSubstitute(connection, result->plan.keys.text, Access::Read, result->plan.keyTypes,
                                       [compile](const jet::Target& target) { return compile(target).keys.text; });
    result->row = prepareOrSubstitute(connection, result->plan.row.text, Access::Read,
                                      typesOf(result->plan.columns) + result->plan.keyTypes,
                                      [compile](const jet::Target& target) { return compile(target).row.text; });
    return result;
}

} // namespace

template<class Made, class Translate>
std::shared_ptr<Made> PlanCache::cached(ByShape<Made>& cache, const jet::Shape& shape, Connection& connection,
                                        Translate&& translate) {
    const auto suitable = [&](const auto& candidate) { return hasFixedLiterals(candidate->plan.fixedLiterals, shape); };
    if (const auto* known = cache.find(shape.key)) {
        const auto found = std::ranges::find_if(*known, suitable);
        if (found != known->end()) return *found;
    }
    if (connection.refreshSchema()) clear();
    std::shared_ptr<Made> made = translate();
    ++compilations_;
    auto* known = cache.find(shape.key);
    if (!known) known = &cache.insert(shape.key, {});
    if (known->size() >= variantsPerShape) known->erase(known->begin());
    known->push_back(made);
    return made;
}

std::shared_ptr<Translation> PlanCache::translation(const jet::Shape& shape, QStringView text, Connection& connection) {
    return cached(byShape_, shape, connection, [&] { return translate(text, connection); });
}

std::shared_ptr<DynasetTranslation> PlanCache::dynaset(const jet::Shape& shape, QStringView text,
                                                       Connection& connection) {
    return cached(dynasets_, shape, connection, [&] { return translateDynaset(text, connection); });
}

void PlanCache::addKnownFind(const QString& shape) {
    if (knownFinds_.size() >= capacity) knownFinds_.clear();
    knownFinds_.insert(shape);
}

void PlanCache::clear() {
    knownFinds_.clear();
    byShape_.clear();
    readAhead_.clear();
    dynasets_.clear();
}

Parameters parameterValues(const QList<jet::Parameter>& parameters, const jet::Shape& shape) {
    Parameters values;
    values.reserve(parameters.size());
    for (const jet::Parameter& parameter : parameters) {
        const mkl::Variant& literal = shape.literals[parameter.literal];
        values.append(encode(parameter.negated ? jet::negate(literal) : literal));
    }
    return values;
}

} // namespace dao
