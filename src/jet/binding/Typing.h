#pragma once
// Which type an operation has, and by which rule two values are compared.
#include "jet/syntax/Syntax.h"

namespace jet {

/// The type that a value of that kind has as a literal.
ColumnType typeOf(const mkl::Variant& value);

ColumnType negationType(ColumnType operand);
ColumnType binaryType(Op op, ColumnType left, ColumnType right);

/// The type of a UNION's column: numbers meet in the wider one, types of different kinds in Text.
ColumnType unionType(ColumnType left, ColumnType right);

/// The rule for comparing two bound expressions. 3464 where columns or literals of clashing types meet.
Comparison comparisonOf(const Expression& left, const Expression& right);

/// What an alias stands for, however many lead to each other; any other expression itself.
const Expression& withoutAlias(const Expression& expression);
/// Whether it is a column, a literal or a constant.
bool isPlain(const Expression& expression);

} // namespace jet
