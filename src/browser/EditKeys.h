#pragma once
#include "browser/ArtCatBrowserEnums.h"

namespace mkl {

class ArtCatBrowserPrivate;

/// Keys that change the catalogue. They work while editKeys is set, and where a key stands for a menu entry only as
/// long as the menu would show that, enabled.
class EditKeys {
public:
    explicit EditKeys(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Does what the key means in that pane; false if it means nothing or is not offered. The control may be gone
    /// afterwards.
    bool run(acbPanes pane, Integer KeyCode, Integer Shift);

private:
    ArtCatBrowserPrivate& hub_;
};

/// Whether ShowMenu lets the pane's menu show the entries of that flag.
bool menuOffers(const ArtCatBrowserPrivate& hub, acbPanes pane, acbMenus flag);

} // namespace mkl
