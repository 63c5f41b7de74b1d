#pragma once
// How the operators read what they are given.
#include "base/RunTimeError.h"
#include "base/Variant.h"

namespace jet {

inline constexpr mkl::Long errCriterionType = 3464; ///< types that an operator cannot bring together

inline bool anyNull(const mkl::Variant& a, const mkl::Variant& b) {
    return a.isNull() || b.isNull();
}

/// The number that a value is, or that its text means; 3464 for any other.
inline double numberOf(const mkl::Variant& value) {
    if (value.isNumber()) return value.toDouble();
    double number = 0;
    if (!value.isText() || !mkl::parseNumber(value.toText(), number)) mkl::throwError(errCriterionType);
    return number;
}

} // namespace jet
