#pragma once
// The operators of the dialect on values. Null wins everywhere but where a comment says otherwise.
// An operand of the wrong type is 3464, a division by zero 11, a result out of range 6.
#include "base/Variant.h"
#include "jet/model/Schema.h"

#include <optional>
#include <span>

namespace jet {

using mkl::Variant;

Variant concat(const Variant& a, const Variant& b); ///< "&": Null counts as empty, but Null & Null is Null
Variant add(const Variant& a, const Variant& b);    ///< joins two texts, adds anything else
Variant subtract(const Variant& a, const Variant& b);
Variant multiply(const Variant& a, const Variant& b);
Variant divide(const Variant& a, const Variant& b);    ///< always floating; 0/0 is 6
Variant intDivide(const Variant& a, const Variant& b); ///< "\": operands rounded half to even first
Variant modulo(const Variant& a, const Variant& b);    ///< likewise; the sign is the dividend's
Variant power(const Variant& a, const Variant& b);     ///< 5 where there is no real result
Variant negate(const Variant& a);

/// Order of two values, neither of them Null: negative, 0 or positive. Texts by collation, a text
/// against a number or a date as such (3464 where it is none).
int compareValues(const Variant& a, const Variant& b);

Variant equal(const Variant& a, const Variant& b);
Variant notEqual(const Variant& a, const Variant& b);
Variant less(const Variant& a, const Variant& b);
Variant lessOrEqual(const Variant& a, const Variant& b);
Variant greater(const Variant& a, const Variant& b);
Variant greaterOrEqual(const Variant& a, const Variant& b);
Variant between(const Variant& value, const Variant& bound1, const Variant& bound2); ///< bounds in either order
Variant like(const Variant& value, const Variant& pattern);                          ///< 93 for a broken pattern

// Three-valued: any number but 0 is true, Null is unknown.
using Truth = std::optional<bool>;
Truth truthOf(const Variant& a);
Variant fromTruth(Truth truth);
Truth either(Truth a, Truth b);
Truth inverse(Truth a);
Variant truth(const Variant& a); ///< the value as a condition: yes, no or Null
Variant logicalNot(const Variant& a);
Variant logicalAnd(const Variant& a, const Variant& b);
Variant logicalOr(const Variant& a, const Variant& b);
Variant logicalXor(const Variant& a, const Variant& b);
Variant logicalEqv(const Variant& a, const Variant& b);
Variant logicalImp(const Variant& a, const Variant& b);

/// The value as a column of that type takes it in; Null stays Null. 6 and 13 for what does not fit, 3464 for a text
/// that is no date.
Variant convertedTo(const Variant& value, ColumnType type);

/// One row per operator, and per type of column the conversion of what is stored there, for the engines to register.
/// All are deterministic.
struct Operator {
    const char* nativeName;
    int argumentCount;
    Variant (*implementation)(std::span<const Variant>);
};
std::span<const Operator> operators();

} // namespace jet
