#pragma once
#include "base/types.h"

namespace mkl {

/// Values of Screen::MousePointer that the controls use; others show as the arrow.
enum MousePointerConstants : Long { vbDefault = 0, vbSizeWE = 9, vbHourglass = 11 };

/// The screen as the controls see it. Replaceable, so that tests can give it another size or resolution.
class Screen {
public:
    virtual ~Screen() = default;

    virtual Single Width() const = 0;  ///< twips, of the primary screen
    virtual Single Height() const = 0; ///< twips
    virtual Single TwipsPerPixelX() const = 0;
    virtual Single TwipsPerPixelY() const = 0;

    /// The pointer that shows over every window; 0 leaves it to the controls. A property, not a counter: whatever
    /// was set before, one 0 ends it.
    virtual Long MousePointer() const = 0;
    virtual void setMousePointer(Long pointer) = 0;
};

/// The screen in force; the application's unless another was set.
Screen& screen();
/// Puts another screen in force and returns the former one; nullptr restores the application's. The caller keeps
/// ownership.
Screen* setScreen(Screen* screen);

} // namespace mkl
