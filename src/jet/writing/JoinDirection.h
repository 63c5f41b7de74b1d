#pragma once
#include "jet/binding/SelectBinder.h"

namespace jet {

/// Per source of the FROM clause, whether an outer join may leave it without a row.
std::vector<bool> optionalSources(const BoundSelect& select);

/// The first source each of whose rows determines the rows of all others, by equalities with their keys: the "many"
/// side of the joins. -1 if there is none, as in a cross product.
int determiningSource(const BoundSelect& select);

} // namespace jet
