#include "browser/KeptView.h"

#include "browser/ArtCatBrowserPrivate.h"

namespace mkl {

KeptView::KeptView(const ArtCatBrowserPrivate& hub, const ListView& list) {
    if (hub.state.keepsView) inSight_ = list.keysInSight();
}

KeptView::KeptView(const ArtCatBrowserPrivate& hub, const TreeView& tree) {
    if (!hub.state.keepsView) return;
    inSight_ = tree.keysInSight();
    for (const Ref<Node>& node : tree.Nodes())
        if (node->Expanded()) expanded_.insert(node->Key());
}

void KeptView::restore(ListView& list) const {
    scroll(list, list.ListItems());
}

void KeptView::restore(TreeView& tree) const {
    if (!expanded_.isEmpty())
        for (const Ref<Node>& node : tree.Nodes())
            if (expanded_.contains(node->Key())) node->setExpanded(true);
    scroll(tree, tree.Nodes());
}

/// The first row that was in sight and still exists becomes the topmost one.
template<class Items>
void KeptView::scroll(ItemView& view, const Items& items) const {
    Ref<Item> top;
    for (const QString& key : inSight_) {
        ErrorFrame::quietly([&] { top = items.Item(key).get(); });
        if (!top) continue;
        view.setTopItem(*top);
        return;
    }
}

} // namespace mkl
