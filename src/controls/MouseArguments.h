#pragma once
// What the mouse events of the controls tell, out of one of Qt's.
#include "controls/KeyCodes.h"
#include "controls/Twips.h"

#include <QMouseEvent>

namespace mkl {

/// Button: 1 left, 2 right, 4 middle, or their sum. Shift: 1 Shift, 2 Ctrl, 4 Alt. X, Y: twips within the widget.
struct MouseArguments {
    MouseArguments(const QMouseEvent& event, Qt::MouseButtons buttons)
        : Button(static_cast<Integer>(buttons & (Qt::LeftButton | Qt::RightButton | Qt::MiddleButton)))
        , Shift(shiftStateOf(event.modifiers()))
        , X(twipsX(event.position().x()))
        , Y(twipsY(event.position().y())) {}

    Integer Button;
    Integer Shift;
    Single X;
    Single Y;
};

} // namespace mkl
