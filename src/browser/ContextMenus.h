#pragma once
#include "browser/ArtCatBrowserEnums.h"

#include <QStringView>

namespace mkl {

class ArtCatBrowserPrivate;
class ItemView;

/// Which context menu comes up and how its entries stand then. What they do is told by MenuCommands.
class ContextMenus {
public:
    /// Where a menu belongs: a point of a pane in twips.
    struct Place {
        ItemView& pane;
        Single X;
        Single Y;
    };

    explicit ContextMenus(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The user wants the menu of the pane, by the right button or the Menu key: that of its rows or, without any, the
    /// one of an empty pane. Nothing happens at design time.
    void showMenuOf(acbPanes pane, Single X, Single Y);

    /// The menus of a selected node or row.
    void ShowTVPopup(const Place& place);
    void ShowLVPopup(const Place& place);
    void ShowLVArtPopup(const Place& place);
    /// The menu of a tree without nodes.
    void TVPopupMenuNew(const Place& place);
    /// The menu of a list without rows.
    void showClosePopup(acbPanes pane, const Place& place);

    /// Hides the separators that would lead the pane's menu, and gives the number of entries that will show.
    Long VisibleMenuCount(acbPanes Pane);
    /// Whether at least one selected row of the list is inactive or, with False, active.
    bool LV_AnySelectedInState(bool Inactive) const;

private:
    bool isOff(acbPanes pane) const;
    void showByFlags(acbPanes pane);
    void popUp(QStringView menu, const Place& place);

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
