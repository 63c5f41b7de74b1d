#pragma once
#include "base/types.h"

namespace dao {

using mkl::Long;

/// Open types of a record set.
inline constexpr Long dbOpenTable = 1;
inline constexpr Long dbOpenDynaset = 2;
inline constexpr Long dbOpenSnapshot = 4;
inline constexpr Long dbOpenForwardOnly = 8;

/// Types of a field.
inline constexpr Long dbBoolean = 1;
inline constexpr Long dbLong = 4;
inline constexpr Long dbCurrency = 5;
inline constexpr Long dbDouble = 7;
inline constexpr Long dbDate = 8;
inline constexpr Long dbText = 10;
inline constexpr Long dbLongBinary = 11;

/// Execute: undo the whole statement and raise where a row fails.
inline constexpr Long dbFailOnError = 128;

/// Native name of the order of texts, for indexes made by Database::executeNative that statements are to use.
inline constexpr const char* textCollation = "GERMAN";

/// State of the copy buffer of a record set.
enum class EditMode : Long { None = 0, InProgress = 1, Add = 2 };

} // namespace dao
