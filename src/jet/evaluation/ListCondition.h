#pragma once
#include "jet/evaluation/Evaluator.h"

namespace jet {

/// "value In (…)" for many constant items of one kind, found by bisection: a host's filter may list thousands. Empty,
/// and both left as they are, where the items are few, not constant or of several kinds.
EvaluatorPtr makeListCondition(EvaluatorPtr& value, const std::vector<EvaluatorPtr>& items);

/// A date as a number that grows with time: dates before the zero of the calendar count their time forward too.
double onTimeline(double date);

} // namespace jet
