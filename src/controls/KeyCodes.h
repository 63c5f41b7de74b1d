#pragma once
// Keys and modifiers as the events of the controls name them.
#include "base/types.h"

#include <QtCore/qnamespace.h>

namespace mkl {

/// Virtual code of a Qt::Key (F1 = 112, Return = 13, A = 65), 0 for one that has none.
Integer keyCodeOf(int key);

/// 1 Shift, 2 Ctrl, 4 Alt.
Integer shiftStateOf(Qt::KeyboardModifiers modifiers);

} // namespace mkl
