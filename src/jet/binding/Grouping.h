#pragma once
// What grouped and sorted queries must know about bound expressions.
#include "jet/syntax/Syntax.h"

namespace jet {

/// Compares bound expressions. Literals that had to be equal for two expressions to be the same are noted: a plan
/// made on that ground holds only for their values.
class ExpressionMatcher {
public:
    bool same(const Expression& left, const Expression& right);
    bool matchesAny(const Expression& expression, const std::vector<const Expression*>& candidates);
    /// 3122 if the expression uses a column that is neither grouped nor inside an aggregate.
    void requireGrouped(const Expression& expression, const std::vector<const Expression*>& groups);

    const std::vector<Literal>& fixedLiterals() const { return fixed_; }

private:
    bool sameNode(const Expression& left, const Expression& right);
    bool sameLiteral(const Literal& left, const Literal& right);
    static bool capturesGroups(const Subquery& subquery, const std::vector<const Expression*>& groups);
    bool isGrouped(const Expression& expression, const std::vector<const Expression*>& groups);

    std::vector<Literal> fixed_;
};

} // namespace jet
