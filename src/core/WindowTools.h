#pragma once
#include "base/types.h"

#include <QString>

class QWidget;

namespace mkl {

/// Edges of a window on the screen, in twips.
struct WindowRectangle {
    Single left = 0;
    Single top = 0;
    Single right = 0;
    Single bottom = 0;
};

/// Measures and places of windows.
class WindowTools {
public:
    /// Width in twips that a list's columns leave free at its right edge: ScrollBars vertical scroll bars and, if
    /// WithFrame, the list's frame.
    Single ListReserve(Long ScrollBars, bool WithFrame, const QWidget* Window) const;

    /// For a KeyPress: a printable character that Allowed does not hold becomes 0. Backspace and the other control
    /// characters pass.
    void FilterKey(Integer& KeyAscii, const QString& Allowed) const;

    /// The window's rectangle on the screen, in twips if InTwips, otherwise in pixels; false without a window.
    bool GetRectangle(const QWidget* Window, WindowRectangle& Rectangle, bool InTwips) const;

    /// Moves a form so that its centre lies over that of Owner, as far as the screen allows.
    void CenterOver(const QWidget* Owner, QWidget* Form) const;
};

} // namespace mkl
