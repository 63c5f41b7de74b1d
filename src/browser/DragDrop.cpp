#include "browser/DragDrop.h"

#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/TreeNodes.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Integer leftButton = 1;
constexpr Integer ctrlKey = 2;
constexpr Long delay = 200; // ms

} // namespace

void DragDrop::MouseDown(acbPanes pane, Integer Button, Integer Shift, Single X, Single Y) {
    if (!hub_.face.UserMode()) return;
    DragState& drag = hub_.state.drag;
    drag.DragFromList = drag.DragFromPool = drag.DragFromTree = false;
    drag.clickedNode.reset();
    if (Button != leftButton || !hub_.state.AllowDragDrop) return;
    if (pane == acbPaneCategoryTree)
        pressTree(Shift, X, Y);
    else
        pressList(pane == acbPaneArticleList ? *hub_.ui.LV : *hub_.ui.LVArt, Shift, X, Y);
}

// 1.
void DragDrop::pressList(ListView& list, Integer shift, Single x, Single y) {
    DragState& drag = hub_.state.drag;
    const bool isPool = &list == hub_.ui.LVArt;
    drag.DragItem = list.HitTest(x, y);
    drag.DropItem.reset();
    if (!drag.DragItem) return;
    if (!isPool && !list.MultiSelect()) {
        const Ref<ListItem> item = drag.DragItem;
        list.setSelectedItem(item);
        hub_.selection->ListItemClick(*item);
        if (hub_.state.closed) return;
    }
    if (const Ref<Node> selected = hub_.ui.TV->SelectedItem()) drag.DropNode = selected;
    drag.DragFromPool = isPool;
    drag.DragFromList = !isPool;
    DragStart(shift);
}

// 2. Who expands a node neither selects nor drags it.
void DragDrop::pressTree(Integer shift, Single x, Single y) {
    DragState& drag = hub_.state.drag;
    TreeView& tree = *hub_.ui.TV;
    drag.DragNode = tree.isOnExpander(x, y) ? nullptr : tree.HitTest(x, y);
    if (const Ref<Node> node = drag.DragNode) {
        tree.setSelectedItem(node);
        hub_.selection->NodeClick(*node);
        if (hub_.state.closed) return;
        drag.clickedNode = node;
    }
    drag.DropNode.reset();
    drag.DragFromTree = true;
    DragStart(shift);
}

bool DragDrop::takeClick(const Node& node) const {
    return std::exchange(hub_.state.drag.clickedNode, nullptr).get() == &node;
}

void DragDrop::DragStart(Integer Shift) {
    hub_.state.drag.DragCopy = Shift & ctrlKey ? 1 : 0;
    hub_.ui.DragTimer->setInterval(delay);
    hub_.ui.DragTimer->setEnabled(true);
}

void DragDrop::DragTimer_Timer() {
    const DragState& drag = hub_.state.drag;
    const BrowserUi& ui = hub_.ui;
    ui.DragTimer->setEnabled(false);
    ItemView* const source = drag.DragFromTree   ? static_cast<ItemView*>(ui.TV)
                             : drag.DragFromPool ? ui.LVArt
                             : drag.DragFromList ? ui.LV
                                                 : nullptr;
    if (!source) return;
    forbid(*source);
    source->Drag(vbBeginDrag);
}

void DragDrop::DragEnd() {
    const BrowserUi& ui = hub_.ui;
    DragState& drag = hub_.state.drag;
    ui.LV->setDropHighlight({});
    ui.LVArt->setDropHighlight({});
    ui.TV->setDropHighlight({});
    drag.DragItem.reset();
    drag.DropItem.reset();
    drag.DragNode.reset();
    drag.DropNode.reset();
    for (ItemView* pane : std::initializer_list<ItemView*>{ui.LV, ui.LVArt, ui.TV})
        pane->setDragIcon({});
    ui.DragTimer->setEnabled(false);
}

void DragDrop::DragOver(acbPanes pane, ItemView& Source, Single X, Single Y, Integer State) {
    switch (pane) {
    case acbPaneArticlePool: return forbid(Source);
    case acbPaneArticleList: return dragOverList(Source, X, Y, State);
    case acbPaneCategoryTree: return dragOverTree(Source, X, Y, State);
    }
}

void DragDrop::dragOverList(ItemView& source, Single x, Single y, Integer state) {
    DragState& drag = hub_.state.drag;
    ListView& list = *hub_.ui.LV;
    // 1.
    if (drag.DragFromList || drag.DragFromPool) hub_.ui.TV->setDropHighlight({});
    // 2.
    if (drag.DragFromTree) {
        if (drag.DragNode) forbid(source);
        return;
    }
    // 3.
    if (!drag.DragItem) return;
    const Ref<ListItem> hit = list.HitTest(x, y);
    // 4.
    if (!hit) {
        if (drag.DragFromPool && state != vbLeave)
            source.setDragIcon(hub_.ui.ImageCopyArticle->Picture());
        else
            forbid(source);
        list.setDropHighlight({});
        drag.DropItem.reset();
        return;
    }
    // 5.
    if (hit == drag.DropItem) return;
    drag.DropItem = hit;
    list.setDropHighlight(hit);
    if (const Ref<ListItem> selected = list.SelectedItem()) {
        source.setDragIcon({});
        const bool isUseless = hit == selected ? drag.DragFromList && state != vbLeave : drag.DragCopy == 1;
        if (isUseless) forbid(source);
    }
    if (source.DragIcon().isNull()) DragIconForState(source);
}

void DragDrop::dragOverTree(ItemView& source, Single x, Single y, Integer state) {
    DragState& drag = hub_.state.drag;
    TreeView& tree = *hub_.ui.TV;
    if (!drag.DragNode && !drag.DragItem) return;
    // 1.
    if (drag.DragFromList || drag.DragFromPool) hub_.ui.LV->setDropHighlight({});
    // 2.
    const Ref<Node> hit = tree.HitTest(x, y);
    if (hit == drag.DropNode) return;
    drag.DropNode = hit;
    // 3.
    if (!hit) {
        tree.setDropHighlight({});
        return forbid(source);
    }
    // 4.
    tree.setDropHighlight(hit);
    if (tree.SelectedItem()) {
        source.setDragIcon({});
        if (drag.DragFromPool)
            source.setDragIcon(hub_.ui.ImageCopyArticle->Picture());
        else if (isTreeDropUseless(*hit, state))
            forbid(source);
    }
    // 5.
    if (source.DragIcon().isNull()) DragIconForState(source);
}

bool DragDrop::isTreeDropUseless(const Node& hit, Integer state) const {
    const Ref<Node> selected = hub_.ui.TV->SelectedItem();
    if (&hit == selected.get()) return state != vbLeave;
    if (!hub_.state.drag.DragFromTree) return false;
    const Ref<Node> parent = selected->Parent();
    return parent ? parent.get() == &hit : TV_IsAncestor(hit, *selected);
}

void DragDrop::DragIconForState(ItemView& Source) const {
    const DragState& drag = hub_.state.drag;
    const BrowserUi& ui = hub_.ui;
    const bool copies = drag.DragCopy == 1;
    const Image* const image = drag.DragFromList   ? (copies ? ui.ImageCopyArticle : ui.ImageDragArticle)
                               : drag.DragFromPool ? ui.ImageCopyArticle
                                                   : (copies ? ui.ImageCopyFolder : ui.ImageDragFolder);
    Source.setDragIcon(image->Picture());
}

void DragDrop::forbid(ItemView& source) const {
    source.setDragIcon(hub_.ui.ImageNoDrop->Picture());
}

} // namespace mkl
