#pragma once
// What becomes of a value on its way into a column, as registered functions of the engine.
#include "jet/functions/Operators.h"

namespace jet {

/// The registered function that converts to the type: value and column name, 3421 with the name where it does not
/// fit, 6 or 3349 where it is too large; Null stays Null.
const char* storeFunction(ColumnType type);
/// Registered function of one value: the value, 3058 if it is Null.
inline constexpr const char* storeKeyFunction = "mkl_store_key";
/// Registered function of a value and a number of ColumnType: whether the value can be stored there.
inline constexpr const char* storableFunction = "mkl_storable";

std::span<const Operator> storeFunctions();

} // namespace jet
