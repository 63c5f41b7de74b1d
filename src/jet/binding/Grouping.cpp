#include "jet/binding/Grouping.h"

#include "jet/binding/Typing.h"
#include "jet/model/Raise.h"

#include <algorithm>

namespace jet {

namespace {

constexpr mkl::Long notGrouped = 3122;

} // namespace

bool ExpressionMatcher::same(const Expression& left, const Expression& right) {
    const Expression& a = withoutAlias(left);
    const Expression& b = withoutAlias(right);
    if (a.as<Subquery>()) return &a == &b;
    if (a.node.index() != b.node.index() || !sameNode(a, b)) return false;
    const Operands ofA = operandsOf(a), ofB = operandsOf(b);
    return std::equal(ofA.begin(), ofA.end(), ofB.begin(), ofB.end(),
                      [this](const Expression* x, const Expression* y) { return same(*x, *y); });
}

bool ExpressionMatcher::sameNode(const Expression& left, const Expression& right) {
    return std::visit(Overloaded{[&](const Literal& a) { return sameLiteral(a, *right.as<Literal>()); },
                                 [&](const Constant& a) { return a.value == right.as<Constant>()->value; },
                                 [&](const Name& a) {
                                     const Name& b = *right.as<Name>();
                                     return a.level == b.level && a.source == b.source && a.column == b.column;
                                 },
                                 [&](const Binary& a) { return a.op == right.as<Binary>()->op; },
                                 [&](const Junction& a) { return a.isAnd == right.as<Junction>()->isAnd; },
                                 [&](const IsNull& a) { return a.negated == right.as<IsNull>()->negated; },
                                 [&](const Call& a) {
                                     const Call& b = *right.as<Call>();
                                     return a.function == b.function && a.aggregate == b.aggregate && a.star == b.star;
                                 },
                                 [](const auto&) { return true; }},
                      left.node);
}

bool ExpressionMatcher::sameLiteral(const Literal& left, const Literal& right) {
    if (left.index == right.index) return true;
    if (left.negated != right.negated || left.value != right.value) return false;
    fixed_.push_back(left);
    fixed_.push_back(right);
    return true;
}

bool ExpressionMatcher::matchesAny(const Expression& expression, const std::vector<const Expression*>& candidates) {
    return std::any_of(candidates.begin(), candidates.end(),
                       [&](const Expression* candidate) { return same(expression, *candidate); });
}

bool ExpressionMatcher::isGrouped(const Expression& expression, const std::vector<const Expression*>& groups) {
    if (matchesAny(expression, groups)) return true;
    const Expression& target = withoutAlias(expression);
    if (const auto* name = target.as<Name>()) return name->level > 0;
    if (const auto* subquery = target.as<Subquery>(); subquery && !capturesGroups(*subquery, groups)) return false;
    if (const auto* call = target.as<Call>(); call && call->aggregate) return true;
    const Operands operands = operandsOf(target);
    return std::all_of(operands.begin(), operands.end(),
                       [&](const Expression* operand) { return isGrouped(*operand, groups); });
}

// What a subquery uses of the statement around it must be the same for all rows of a group.
bool ExpressionMatcher::capturesGroups(const Subquery& subquery, const std::vector<const Expression*>& groups) {
    return std::all_of(subquery.captured.begin(), subquery.captured.end(), [&](const Name& captured) {
        return std::any_of(groups.begin(), groups.end(), [&](const Expression* group) {
            const auto* const name = withoutAlias(*group).as<Name>();
            return name && name->level == 0 && name->source == captured.source && name->column == captured.column;
        });
    });
}

void ExpressionMatcher::requireGrouped(const Expression& expression, const std::vector<const Expression*>& groups) {
    if (!isGrouped(expression, groups)) raiseAt(notGrouped, expression.text, {excerpt(expression.text)});
}

} // namespace jet
