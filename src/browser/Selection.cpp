#include "browser/Selection.h"

#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"

namespace mkl {

void Selection::NodeClick(Node& node) {
    BrowserState& state = hub_.state;
    const Ref<Node> kept = &node; // a handler may clear the tree
    // 1.
    state.CurrentNodeKey = node.Key();
    const Long former = state.SelectedCategory;
    // 2.
    SetCategoryOfTree(node.Tag().toLong());
    // 4.
    if (!raiseItemSelected(former)) return;
    // 7.
    Long& lastClicked = state.LastClicked[acbPaneCategoryTree];
    if (lastClicked == state.SelectedCategory) return;
    acbPanes pane = acbPaneCategoryTree;
    Q_EMIT hub_.face.ItemClick(&node, node.Tag().toLong(), pane);
    lastClicked = state.SelectedCategory;
}

void Selection::SetCategoryOfTree(Long CategoryKey) {
    hub_.state.SelectedCategory = CategoryKey;
}

bool Selection::raiseItemSelected(Long former) {
    const Long category = hub_.state.SelectedCategory;
    if (category != former) Q_EMIT hub_.face.ItemSelected(category, acbPaneCategoryTree);
    return !hub_.state.closed;
}

void Selection::afterCollapse() {
    const Ref<Node> selected = hub_.ui.TV->SelectedItem();
    if (!selected) {
        SetCategoryOfTree(0);
    } else if (selected->Key() != hub_.state.CurrentNodeKey) {
        NodeClick(*selected);
    } else {
        const Long former = hub_.state.SelectedCategory;
        SetCategoryOfTree(selected->Tag().toLong());
        raiseItemSelected(former);
    }
}

} // namespace mkl
