#include "browser/DragHints.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/NodeText.h"
#include "browser/TreeNodes.h"
#include "controls/StatusBar.h"

namespace mkl {

void DragHints::DragOver(acbPanes pane, Single X, Single Y, Integer State) {
    if (hub_.state.springOpenInterval == 0) return;
    const bool isOver = State != vbLeave;
    const Ref<Node> node = isOver && pane == acbPaneCategoryTree ? hub_.ui.TV->HitTest(X, Y) : nullptr;
    watch(node.get());
    QString outcome;
    if (isOver && pane == acbPaneCategoryTree) outcome = outcomeOnTree();
    if (isOver && pane == acbPaneArticleList) outcome = outcomeOnList();
    hub_.ui.SB->setOverlay(outcome.isEmpty() ? text(TextId::BrowserDropNone) : outcome);
}

void DragHints::DragEnd() {
    watch(nullptr);
    hub_.ui.SB->setOverlay({});
}

void DragHints::watch(Node* node) {
    Ref<Node>& watched = hub_.state.drag.springNode;
    if (watched.get() == node) return;
    watched = node;
    IntervalTimer& timer = *hub_.ui.SpringTimer;
    timer.setInterval(hub_.state.springOpenInterval);
    timer.setEnabled(node && node->Children() > 0 && !node->Expanded());
}

// A node that has left the tree meanwhile does not open.
void DragHints::SpringTimer_Timer() {
    hub_.ui.SpringTimer->setEnabled(false);
    if (const Ref<Node> node = hub_.state.drag.springNode) node->setExpanded(true);
}

// Empty where a drop does nothing.
QString DragHints::outcomeOnTree() const {
    const DragState& drag = hub_.state.drag;
    const Ref<Node> target = hub_.ui.TV->DropHighlight();
    if (!target || (!drag.DragNode && !drag.DragItem)) return {};
    const QString name = NameFromNodeText(target->Text());
    if (drag.DragFromPool) return text(TextId::BrowserDropInsert, {name});
    const Ref<Node> source = hub_.ui.TV->SelectedItem();
    if (!source || source == target) return {};
    const bool isUseless = drag.DragFromTree && (source->Parent() == target || TV_IsAncestor(*target, *source));
    if (isUseless) return {};
    if (drag.DragCopy == 1) return text(TextId::BrowserDropCopy, {name});
    return text(drag.DragFromTree ? TextId::BrowserDropOnCategory : TextId::BrowserDropMove, {name});
}

QString DragHints::outcomeOnList() const {
    const DragState& drag = hub_.state.drag;
    const Ref<Node> category = hub_.ui.TV->SelectedItem();
    if (!drag.DragItem || !category || drag.DragFromTree) return {};
    Ref<ListItem> target = hub_.ui.LV->DropHighlight();
    if (drag.DragFromPool) {
        const QString name = NameFromNodeText(category->Text());
        if (!target && hub_.ui.LV->ListItems().Count() > 0) target = hub_.ui.LV->ListItems().Item(1);
        if (!target) return text(TextId::BrowserDropInsert, {name});
        return text(TextId::BrowserDropInsertAt, {name, QString::number(target->Text().toLong())});
    }
    if (!target || target == drag.DragItem || drag.DragCopy == 1) return {};
    return text(TextId::BrowserDropOnPosition,
                {QString::number(drag.DragItem->Text().toLong()), QString::number(target->Text().toLong())});
}

} // namespace mkl
