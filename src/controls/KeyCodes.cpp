#include "controls/KeyCodes.h"

#include <algorithm>
#include <array>

namespace mkl {

namespace {

struct KeyCode {
    int key;
    Integer code;
};

constexpr std::array keyCodes{
    KeyCode{Qt::Key_Backspace, 8}, KeyCode{Qt::Key_Tab, 9},       KeyCode{Qt::Key_Backtab, 9},
    KeyCode{Qt::Key_Return, 13},   KeyCode{Qt::Key_Enter, 13},    KeyCode{Qt::Key_Shift, 16},
    KeyCode{Qt::Key_Control, 17},  KeyCode{Qt::Key_Alt, 18},      KeyCode{Qt::Key_Escape, 27},
    KeyCode{Qt::Key_PageUp, 33},   KeyCode{Qt::Key_PageDown, 34}, KeyCode{Qt::Key_End, 35},
    KeyCode{Qt::Key_Home, 36},     KeyCode{Qt::Key_Left, 37},     KeyCode{Qt::Key_Up, 38},
    KeyCode{Qt::Key_Right, 39},    KeyCode{Qt::Key_Down, 40},     KeyCode{Qt::Key_Insert, 45},
    KeyCode{Qt::Key_Delete, 46},   KeyCode{Qt::Key_Menu, 93},
};

constexpr Integer firstFunctionKey = 112;

} // namespace

Integer keyCodeOf(int key) {
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16) return static_cast<Integer>(firstFunctionKey + (key - Qt::Key_F1));
    const bool letterOrDigit = (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
    if (letterOrDigit || key == Qt::Key_Space) return static_cast<Integer>(key);
    const auto found =
        std::find_if(keyCodes.begin(), keyCodes.end(), [key](const KeyCode& row) { return row.key == key; });
    return found == keyCodes.end() ? Integer(0) : found->code;
}

Integer shiftStateOf(Qt::KeyboardModifiers modifiers) {
    int state = 0;
    if (modifiers & Qt::ShiftModifier) state |= 1;
    if (modifiers & Qt::ControlModifier) state |= 2;
    if (modifiers & Qt::AltModifier) state |= 4;
    return static_cast<Integer>(state);
}

} // namespace mkl
