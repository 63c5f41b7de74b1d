#pragma once
#include "jet/syntax/Syntax.h"

namespace jet {

/// The registered function that computes an operator.
const char* functionOf(Op op);
/// A comparison as all engines spell it.
const char* nativeComparison(Op op);

} // namespace jet
