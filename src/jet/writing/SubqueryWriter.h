#pragma once
#include "jet/syntax/Syntax.h"

namespace jet {

/// Whether the engine gives it as one of its own conditions.
bool isNativeCondition(const Subquery& subquery);

/// Whether values of that type are compared by our order of texts.
inline bool isCollated(ColumnType type) {
    return type == ColumnType::Text || type == ColumnType::Unknown;
}

/// The table that stands where an aggregate has none, and its column; no statement can spell the name.
inline constexpr QStringView singleRowTable = u".one";
inline constexpr QStringView singleRowColumn = u"c";

} // namespace jet
