#include "browser/EditKeys.h"

#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "browser/FolderImages.h"

#include <algorithm>
#include <array>

namespace mkl {

namespace {

using Hub = ArtCatBrowserPrivate;

// Virtual codes, and modifiers as in mouse events.
enum Keys : Integer { keyUp = 38, keyDown = 40, keyInsert = 45, keyDelete = 46, keyE = 'E', keyF2 = 113 };
enum Shifts : Integer { none = 0, ctrlKey = 2, altKey = 4 };

struct EditKey {
    acbPanes pane;
    Integer keyCode;
    Integer shift;
    bool (*isOffered)(const Hub&);
    void (*command)(Hub&);
};

bool hasRow(const ListView& list) {
    return list.ListItems().Count() > 0 && list.SelectedItem();
}

bool mayDeletePosition(const Hub& hub) {
    return menuOffers(hub, acbPaneArticleList, acbMenuDelete) && hasRow(*hub.ui.LV);
}

bool mayMovePosition(const Hub& hub) {
    return menuOffers(hub, acbPaneArticleList, acbMenuEditPosition) && hasRow(*hub.ui.LV) &&
           hub.ui.LV->SelectedCount() <= 1;
}

// No menu has an entry for what the mouse alone can do.
bool mayAddArticles(const Hub& hub) {
    return hub.state.AllowDragDrop && hub.ui.LVArt->SelectedCount() > 0 && hub.ui.TV->SelectedItem();
}

bool mayActivateInPool(const Hub& hub) {
    return menuOffers(hub, acbPaneArticlePool, acbMenuActivate) && hasRow(*hub.ui.LVArt) &&
           hub.ui.LVArt->SelectedCount() == 1;
}

// Of several rows the menu shows its entries whatever the flag says.
bool mayActivateInList(const Hub& hub) {
    return menuOffers(hub, acbPaneArticleList, acbMenuActivate) && hasRow(*hub.ui.LV);
}

// The commands do what the entry says, as the menu would let it stand there.

void activateInPool(Hub& hub) {
    captionActivation(hub.ui.menus.Item(u"KLVArt_Activate"), isActiveIcon(hub.ui.LVArt->SelectedItem()->SmallIcon()));
    hub.articleActivation->KLVArt_Activate();
}

// As long as one of several is inactive they become active.
void activateInList(Hub& hub) {
    const ListView& list = *hub.ui.LV;
    if (list.SelectedCount() <= 1) {
        captionActivation(hub.ui.menus.Item(u"kLV_Activate"), isActiveIcon(list.SelectedItem()->SmallIcon()));
        hub.articleActivation->kLV_Activate();
    } else if (hub.contextMenus->LV_AnySelectedInState(true)) {
        hub.articleActivation->kLV_ActivateAll();
    } else {
        hub.articleActivation->kLV_DeActivateAll();
    }
}

void activateCategory(Hub& hub) {
    captionActivation(hub.ui.menus.Item(u"kTV_Activate"), isActiveImage(hub.ui.TV->SelectedItem()->Image()));
    hub.categoryEditing->kTV_Activate();
}

bool mayMoveCategory(const Hub& hub) {
    return menuOffers(hub, acbPaneCategoryTree, acbMenuEditPosition) && hub.ui.TV->SelectedItem();
}

// The menu of an empty tree offers this as well.
bool mayMakeCategory(const Hub& hub) {
    const acbMenus shown = hub.state.ShowMenu[acbPaneCategoryTree];
    if (hub.ui.TV->SelectedItem()) return menuOffers(hub, acbPaneCategoryTree, abcMenuNew);
    return !(shown & acbMenuNone) && hub.ui.TV->Nodes().Count() == 0 && hub.state.ArtKatTable;
}

bool mayRenameCategory(const Hub& hub) {
    return menuOffers(hub, acbPaneCategoryTree, acbMenuRename) && hub.ui.TV->SelectedItem();
}

bool mayDeleteCategory(const Hub& hub) {
    return menuOffers(hub, acbPaneCategoryTree, acbMenuDelete) && hub.ui.TV->SelectedItem();
}

bool mayActivateCategory(const Hub& hub) {
    return menuOffers(hub, acbPaneCategoryTree, acbMenuActivate) && hub.ui.TV->SelectedItem();
}

constexpr std::array editKeys{
    EditKey{acbPaneArticlePool, keyInsert, none, mayAddArticles, [](Hub& hub) { hub.dropActions->addPoolSelection(); }},
    EditKey{acbPaneArticlePool, keyE, ctrlKey, mayActivateInPool, activateInPool},
    EditKey{acbPaneCategoryTree, keyInsert, none, mayMakeCategory, [](Hub& hub) { hub.categoryEditing->kTV_New(); }},
    EditKey{acbPaneCategoryTree, keyF2, none, mayRenameCategory, [](Hub& hub) { hub.categoryEditing->kTV_Rename(); }},
    EditKey{acbPaneCategoryTree, keyDelete, none, mayDeleteCategory,
            [](Hub& hub) { hub.categoryEditing->kTV_Delete(); }},
    EditKey{acbPaneCategoryTree, keyUp, altKey, mayMoveCategory, [](Hub& hub) { hub.categoryOrder->moveSelected(-1); }},
    EditKey{acbPaneCategoryTree, keyDown, altKey, mayMoveCategory,
            [](Hub& hub) { hub.categoryOrder->moveSelected(1); }},
    EditKey{acbPaneCategoryTree, keyE, ctrlKey, mayActivateCategory, activateCategory},
    EditKey{acbPaneArticleList, keyDelete, none, mayDeletePosition,
            [](Hub& hub) { hub.articleAssignment->kLV_DeletePosition(); }},
    EditKey{acbPaneArticleList, keyF2, none, mayMovePosition, [](Hub& hub) { hub.articleOrder->kLV_NewPosition(); }},
    EditKey{acbPaneArticleList, keyUp, altKey, mayMovePosition, [](Hub& hub) { hub.articleOrder->moveSelected(-1); }},
    EditKey{acbPaneArticleList, keyDown, altKey, mayMovePosition, [](Hub& hub) { hub.articleOrder->moveSelected(1); }},
    EditKey{acbPaneArticleList, keyE, ctrlKey, mayActivateInList, activateInList},
};

} // namespace

bool EditKeys::run(acbPanes pane, Integer KeyCode, Integer Shift) {
    if (!hub_.state.editKeys) return false;
    const auto key = std::ranges::find_if(editKeys, [&](const EditKey& each) {
        return each.pane == pane && each.keyCode == KeyCode && each.shift == Shift;
    });
    if (key == editKeys.end() || !key->isOffered(hub_)) return false;
    key->command(hub_);
    return true;
}

bool menuOffers(const ArtCatBrowserPrivate& hub, acbPanes pane, acbMenus flag) {
    const acbMenus shown = hub.state.ShowMenu[static_cast<size_t>(pane)];
    return !(shown & acbMenuNone) && (shown & flag);
}

} // namespace mkl
