#pragma once
#include "jet/model/Schema.h"

namespace jet {

/// A column that an action fills.
struct TargetColumn {
    const Column* column = nullptr;
    bool isKey = false; ///< the whole key of a row; the engine would make up a value in place of Null
};

} // namespace jet
