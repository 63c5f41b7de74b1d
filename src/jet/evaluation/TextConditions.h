#pragma once
// The conditions that finds ask most: a column of texts against a constant, read without decoding the text.
#include "jet/evaluation/Evaluator.h"

namespace jet {

/// A condition for "column Like 'pattern'" or the comparison of a column with a text; empty for anything else.
EvaluatorPtr makeTextCondition(const Binary& binary, const Evaluator& left, const Evaluator& right);

} // namespace jet
