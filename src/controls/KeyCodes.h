#pragma once
// Keys and modifiers as the events of the controls name them.
#include "base/types.h"

#include <QtCore/qnamespace.h>

namespace mkl {

/// Codes of keys that the forms know.
enum KeyCodeConstants : Integer { vbKeyReturn = 13, vbKeyEscape = 27, vbKeyA = 65, vbKeyO = 79, vbKeyW = 87 };
/// Modifiers in a key's Shift.
enum ShiftConstants : Integer { vbShiftMask = 1, vbCtrlMask = 2, vbAltMask = 4 };

/// Virtual code of a Qt::Key (F1 = 112, Return = 13, A = 65), 0 for one that has none.
Integer keyCodeOf(int key);

/// 1 Shift, 2 Ctrl, 4 Alt.
Integer shiftStateOf(Qt::KeyboardModifiers modifiers);

} // namespace mkl
