#include "browser/ContextMenus.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "browser/FolderImages.h"
#include "controls/PopupMenu.h"

#include <algorithm>
#include <array>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// By pane; names are compared without case.
constexpr std::array<QStringView, 3> prefixes{u"kLVArt_", u"kLV_", u"kTV_"};

bool isOfPane(const MenuEntry& entry, acbPanes pane) {
    return entry.form().name.startsWith(prefixes[static_cast<size_t>(pane)], Qt::CaseInsensitive);
}

std::vector<PopupRow> rowsBelow(const MenuTable& menus, QStringView parent) {
    std::vector<PopupRow> rows;
    for (const MenuEntry& entry : menus) {
        if (entry.form().parent != parent || !entry.Visible()) continue;
        PopupRow row{.name = entry.Name(), .caption = entry.Caption(), .enabled = entry.Enabled()};
        if (entry.isSeparator()) row.caption.clear();
        if (entry.form().isCheckable) row.checked = entry.Checked();
        row.rows = rowsBelow(menus, entry.form().name);
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace

void ContextMenus::showMenuOf(acbPanes pane, Single X, Single Y) {
    if (!hub_.face.UserMode()) return;
    const BrowserUi& ui = hub_.ui;
    if (pane == acbPaneCategoryTree) {
        const Place place{*ui.TV, X, Y};
        if (ui.TV->Nodes().Count() == 0) {
            if (hub_.state.ArtKatTable) TVPopupMenuNew(place);
        } else if (ui.TV->SelectedItem()) {
            ShowTVPopup(place);
        }
        return;
    }
    const bool isPool = pane == acbPaneArticlePool;
    ListView& list = isPool ? *ui.LVArt : *ui.LV;
    const Place place{list, X, Y};
    if (list.ListItems().Count() == 0 || !list.SelectedItem())
        showClosePopup(pane, place);
    else if (isPool)
        ShowLVArtPopup(place);
    else
        ShowLVPopup(place);
}

bool ContextMenus::isOff(acbPanes pane) const {
    return hub_.state.ShowMenu[static_cast<size_t>(pane)] & acbMenuNone;
}

// What an earlier opening has hidden shows again first.
void ContextMenus::showByFlags(acbPanes pane) {
    const acbMenus shown = hub_.state.ShowMenu[static_cast<size_t>(pane)];
    for (MenuEntry& entry : hub_.ui.menus) {
        if (!isOfPane(entry, pane)) continue;
        const std::optional<acbMenus> flag = entry.form().flag;
        const bool isOffered = !flag || (shown & *flag);
        const bool isSubEntry = hub_.ui.menus.isSubEntry(entry);
        entry.setVisible(isSubEntry || isOffered);
        if (isSubEntry) entry.setTag(isOffered ? u"-1"_s : u"0"_s);
    }
}

Long ContextMenus::VisibleMenuCount(acbPanes Pane) {
    Long count = 0;
    for (MenuEntry& entry : hub_.ui.menus) {
        if (!isOfPane(entry, Pane) || !entry.Visible() || (entry.Tag() != "-1"_L1 && !entry.Tag().isEmpty())) continue;
        if (count == 0 && entry.isSeparator())
            entry.setVisible(false);
        else
            ++count;
    }
    return count;
}

void ContextMenus::ShowTVPopup(const Place& place) {
    if (isOff(acbPaneCategoryTree)) return;
    showByFlags(acbPaneCategoryTree);
    if (VisibleMenuCount(acbPaneCategoryTree) == 0) return;
    captionActivation(hub_.ui.menus.Item(u"kTV_Activate"), isActiveImage(hub_.ui.TV->SelectedItem()->Image()));
    popUp(u"KTV", place);
}

void ContextMenus::TVPopupMenuNew(const Place& place) {
    if (isOff(acbPaneCategoryTree)) return;
    constexpr std::array<QStringView, 4> shown{u"KTV", u"kTV_New", u"kTV_Bar4", u"kTV_Close"};
    for (MenuEntry& entry : hub_.ui.menus)
        if (entry.form().name.startsWith(u"KTV", Qt::CaseInsensitive))
            entry.setVisible(std::ranges::find(shown, entry.form().name) != shown.end());
    popUp(u"KTV", place);
}

void ContextMenus::ShowLVPopup(const Place& place) {
    if (isOff(acbPaneArticleList)) return;
    MenuTable& menus = hub_.ui.menus;
    const ListView& list = *hub_.ui.LV;
    const bool Multi = list.SelectedCount() > 1;
    showByFlags(acbPaneArticleList);
    for (const QStringView name : {u"kLV_ActivateAll", u"kLV_DeActivateAll"})
        menus.Item(name).setVisible(Multi);
    menus.Item(u"kLV_ActivateAll").setEnabled(LV_AnySelectedInState(true));
    menus.Item(u"kLV_DeActivateAll").setEnabled(LV_AnySelectedInState(false));
    for (const QStringView name : {u"kLV_NewPosition", u"kLV_Properties", u"kLV_Bar2", u"kLV_Activate"})
        if (Multi) menus.Item(name).setVisible(false);
    menus.Item(u"kLV_DeletePosition")
        .setCaption(text(Multi ? TextId::BrowserMenuDeleteSelection : TextId::BrowserMenuDeletePosition));
    if (VisibleMenuCount(acbPaneArticleList) == 0) return;
    captionActivation(menus.Item(u"kLV_Activate"), isActiveIcon(list.SelectedItem()->SmallIcon()));
    popUp(u"KLV", place);
}

bool ContextMenus::LV_AnySelectedInState(bool Inactive) const {
    return std::ranges::any_of(hub_.ui.LV->SelectedItems(), [Inactive](const Ref<ListItem>& row) {
        return isActiveIcon(row->SmallIcon()) != Inactive;
    });
}

void ContextMenus::ShowLVArtPopup(const Place& place) {
    if (isOff(acbPaneArticlePool)) return;
    MenuTable& menus = hub_.ui.menus;
    const ListView& pool = *hub_.ui.LVArt;
    showByFlags(acbPaneArticlePool);
    if (VisibleMenuCount(acbPaneArticlePool) == 0) return;
    const Long selected = pool.SelectedCount();
    MenuEntry& marked = menus.Item(u"KLVArt_Marked");
    marked.setEnabled(marked.Checked() || selected >= 2);
    menus.Item(u"KLVArt_Properties").setEnabled(selected == 1);
    MenuEntry& activate = menus.Item(u"KLVArt_Activate");
    captionActivation(activate, isActiveIcon(pool.SelectedItem()->SmallIcon()));
    activate.setEnabled(selected == 1);
    popUp(u"KLVArt", place);
}

void ContextMenus::showClosePopup(acbPanes pane, const Place& place) {
    if (!isOff(pane)) popUp(u"KClose", place);
}

void ContextMenus::popUp(QStringView menu, const Place& place) {
    const PopupMenu form{menu.toString(), text(TextId::BrowserMenuOf, {place.pane.accessibleName()}),
                         rowsBelow(hub_.ui.menus, menu)};
    popupRunner().popUp(place.pane, form, popupPoint(place.pane, place.X, place.Y),
                        [hub = hub_.weak_from_this()](const QString& entry) {
                            if (const auto open = hub.lock(); open && !open->state.closed)
                                open->menuCommands->run(entry);
                        });
}

} // namespace mkl
