#pragma once
// The conditions among the expressions: what is true, false or unknown by itself.
#include "jet/evaluation/Evaluator.h"

namespace jet {

/// Whether an order of two values (negative, 0, positive) meets the comparison.
bool meets(Op comparison, int order);

EvaluatorPtr makeNot(EvaluatorPtr operand);
EvaluatorPtr makeIsNull(EvaluatorPtr operand, bool negated);
EvaluatorPtr makeJunction(bool isAnd, std::vector<EvaluatorPtr> operands);
EvaluatorPtr makeComparison(Op op, Comparison rule, EvaluatorPtr left, EvaluatorPtr right);
EvaluatorPtr makeBetween(Comparison rule, EvaluatorPtr value, EvaluatorPtr low, EvaluatorPtr high);
EvaluatorPtr makeLike(EvaluatorPtr value, EvaluatorPtr pattern);
/// itemsFirst: all items are computed before the value, otherwise none after the first that equals it.
EvaluatorPtr makeIn(Comparison rule, EvaluatorPtr value, std::vector<EvaluatorPtr> items, bool itemsFirst);

} // namespace jet
