#include "browser/Selection.h"

#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "browser/NodeText.h"
#include "controls/Screen.h"

#include <QScopeGuard>
#include <algorithm>

namespace mkl {

namespace {

/// The assignment of the first row for which the call gives the number.
template<class NumberOf>
Long firstAssignment(const ListView& list, Long number, NumberOf&& numberOf) {
    for (const Ref<ListItem>& item : list.ListItems())
        if (numberOf(*item) == number) return item->Tag().toLong();
    return 0;
}

} // namespace

void Selection::PoolItemClick(ListItem& item) {
    const Ref<ListItem> kept = &item; // a handler may clear the pane
    // 1.
    const Long former = hub_.state.SelectedPoolArticle;
    // 2.
    hub_.paneStatus->ShowPoolStatus(-1);
    // 3.
    if (!raiseItemSelected(acbPaneArticlePool, former)) return;
    // 4.
    raiseItemClick(acbPaneArticlePool, item);
}

void Selection::ListItemClick(ListItem& item) {
    const Ref<ListItem> kept = &item;
    // 1., 2.
    SetSelectedArticle(articleOfListRow(item));
    // 3.
    if (!hub_.state.closed) raiseItemClick(acbPaneArticleList, item);
}

void Selection::NodeClick(Node& node) {
    BrowserState& state = hub_.state;
    const Ref<Node> kept = &node;
    // 1.
    state.CurrentNodeKey = node.Key();
    const Long former = state.SelectedCategory;
    // 2.
    SetCategoryOfTree(node.Tag().toLong());
    // 3.
    hub_.articlePanes->PopulateLV(state.SelectedCategory);
    // 4.
    if (!raiseItemSelected(acbPaneCategoryTree, former)) return;
    // 5., 6.
    selectArticleOfCategory();
    // 7.
    if (!state.closed) raiseItemClick(acbPaneCategoryTree, node);
}

void Selection::selectArticleOfCategory() {
    const auto isEmpty = [this] { return hub_.state.closed || hub_.ui.LV->ListItems().Count() == 0; };
    if (isEmpty()) return SetSelectedArticle(0);
    if (SelectArticleInList(hub_.state.SelectedListArticle) || isEmpty()) return;
    selectFirstRow();
    SetSelectedArticle(articleOfListRow(*hub_.ui.LV->ListItems().Item(1)));
}

void Selection::selectFirstRow() {
    const Ref<ListItem> first = hub_.ui.LV->ListItems().Item(1);
    hub_.ui.LV->setSelectedItem(first);
    first->EnsureVisible();
}

void Selection::selectKeptArticle() {
    if (hub_.ui.LV->ListItems().Count() == 0) return;
    if (hub_.state.SelectedListArticle < 1)
        selectFirstRow();
    else
        SelectArticleInList(hub_.state.SelectedListArticle);
}

void Selection::LetSelected(acbPanes Pane, Long Selected) {
    BrowserState& state = hub_.state;
    const BrowserUi& ui = hub_.ui;
    const bool mayShow = hub_.face.UserMode() && Selected > 0;
    switch (Pane) {
    case acbPaneArticlePool:
        if (!state.ShowArticlePool) return;
        state.SelectedPoolArticle = Selected;
        if (mayShow && ui.LVArt->ListItems().Count() > 0) {
            const Ref<ListItem> item = ui.LVArt->ListItems().Item(rowKey(Selected));
            ui.LVArt->setSelectedItem(item);
            item->EnsureVisible();
            PoolItemClick(*item);
        }
        break;
    case acbPaneArticleList:
        state.SelectedListArticle = Selected;
        SetSelectedArticle(Selected);
        if (mayShow && ui.LV->ListItems().Count() > 0) SelectArticleInList(Selected);
        break;
    case acbPaneCategoryTree:
        state.SelectedCategory = Selected;
        if (mayShow && ui.TV->Nodes().Count() > 0) {
            ui.TV->setSelectedItem(ui.TV->Nodes().Item(nodeKey(Selected)));
            SetCategoryOfTree(Selected);
            NodeClick(*ui.TV->SelectedItem());
        }
        break;
    }
}

void Selection::SetCategoryOfTree(Long CategoryKey) {
    hub_.state.SelectedCategory = CategoryKey;
    hub_.paneStatus->ShowListStatus(CategoryKey);
}

void Selection::SetSelectedArticle(Long ArticleKey) {
    if (hub_.state.closed || ArticleKey == hub_.state.SelectedListArticle) return;
    hub_.state.SelectedListArticle = ArticleKey;
    Q_EMIT hub_.face.ItemSelected(ArticleKey, acbPaneArticleList);
}

bool Selection::SelectArticleInList(Long ArticleKey) {
    const ListItemCollection& items = hub_.ui.LV->ListItems();
    if (items.Count() == 0) return false;
    const auto found = std::ranges::find_if(
        items, [ArticleKey](const Ref<ListItem>& item) { return articleOfListRow(*item) == ArticleKey; });
    if (found == items.end()) {
        SetSelectedArticle(0);
        return false;
    }
    const Ref<ListItem> item = *found;
    hub_.ui.LV->setSelectedItem(item);
    item->EnsureVisible();
    SetSelectedArticle(ArticleKey);
    return true;
}

Long Selection::ArtKatID_FromArticle(Long ArticleKey) const {
    return firstAssignment(*hub_.ui.LV, ArticleKey, articleOfListRow);
}

Long Selection::ArtKatID_FromPosition(Long Position) const {
    return firstAssignment(*hub_.ui.LV, Position, positionOfListRow);
}

Long& Selection::selectedKey(acbPanes pane) const {
    if (pane == acbPaneArticlePool) return hub_.state.SelectedPoolArticle;
    return pane == acbPaneArticleList ? hub_.state.SelectedListArticle : hub_.state.SelectedCategory;
}

bool Selection::raiseItemSelected(acbPanes pane, Long former) {
    const Long key = selectedKey(pane);
    if (!hub_.state.closed && key != former) Q_EMIT hub_.face.ItemSelected(key, pane);
    return !hub_.state.closed;
}

// What was reported last is remembered by pane and moves with the raise alone.
void Selection::raiseItemClick(acbPanes pane, Item& item) {
    Long& lastClicked = hub_.state.LastClicked[static_cast<size_t>(pane)];
    if (lastClicked == selectedKey(pane)) return;
    acbPanes argument = pane;
    Q_EMIT hub_.face.ItemClick(&item, item.Tag().toLong(), argument);
    lastClicked = selectedKey(pane);
}

void Selection::CollapsePoolSelection() {
    const auto pointer = qScopeGuard([] { screen().setMousePointer(vbDefault); });
    screen().setMousePointer(vbHourglass);
    ListView& pool = *hub_.ui.LVArt;
    const Ref<ListItem> selected = pool.SelectedItem();
    if (!selected || hub_.paneStatus->PoolSelectionCount() <= 1) return;
    pool.deselectOthers(selected);
    hub_.paneStatus->ShowPoolStatus(-1);
}

void Selection::afterCollapse() {
    const Ref<Node> selected = hub_.ui.TV->SelectedItem();
    if (!selected) {
        hub_.state.SelectedCategory = 0;
        hub_.articlePanes->ClearArticleList();
    } else if (selected->Key() != hub_.state.CurrentNodeKey) {
        NodeClick(*selected);
    } else {
        const Long former = hub_.state.SelectedCategory;
        SetCategoryOfTree(selected->Tag().toLong());
        raiseItemSelected(acbPaneCategoryTree, former);
    }
}

} // namespace mkl
