#pragma once
#include "browser/ArtCatBrowserEnums.h"

namespace mkl {

class ArtCatBrowserPrivate;
class ItemView;

/// Keys that do what menus and members do. A key works at run time, on the pane that has the focus, and where it stands
/// for a menu entry only as long as the menu would offer that.
class KeyCommands {
public:
    explicit KeyCommands(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Does what the key means; false if it means nothing. The control may be gone afterwards.
    bool run(Integer KeyCode, Integer Shift);

private:
    bool runOn(acbPanes pane, Integer keyCode, Integer shift);
    bool goToPane(acbPanes from, int step);
    bool refresh(acbPanes pane);
    bool showProperties(acbPanes pane);
    ItemView& viewOf(acbPanes pane) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
