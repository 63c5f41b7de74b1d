#include "desktop/BrowserWindow.h"

namespace mkl::desktop {

void BrowserWindow::SetUp() {
    QApplication::setDoubleClickInterval(1); // two clicks of a test stay two
    window_.show();
    // A window manager that has just started may leave the first window without focus unasked.
    ASSERT_TRUE(waitUntil([this] {
        window_.activateWindow();
        return window_.isActiveWindow();
    }));
    ASSERT_TRUE(window_.showFile(makeCatalogue()));
    tree_ = browser().CategoryTreeView();
    QObject::connect(&browser(), &ArtCatBrowser::ItemSelected, &window_, [this](Long key, acbPanes pane) {
        if (pane == acbPaneCategoryTree) selected_ += u"%1 in %2"_s.arg(key).arg(pane);
    });
    QObject::connect(&browser(), &ArtCatBrowser::ItemClick, &window_,
                     [this](Item*, Long key, acbPanes& pane) { clicked_ += u"%1 in %2"_s.arg(key).arg(pane); });
    ASSERT_TRUE(waitUntil([this] { return tree_->isVisible() && !indexOf(*rootWithChildren()).isNull(); }));
}

Ref<Node> BrowserWindow::rootWithChildren() const {
    Ref<Node> node = tree_->Nodes().Item(1)->FirstSibling();
    while (node && node->Children() == 0)
        node = node->Next();
    return node;
}

QRect BrowserWindow::indexOf(const Node& node) const {
    const QModelIndexList hits = tree_->model()->match(tree_->model()->index(0, 0), Qt::DisplayRole, node.Text(), 1,
                                                       Qt::MatchExactly | Qt::MatchRecursive);
    return hits.isEmpty() ? QRect() : tree_->visualRect(hits.first());
}

QPoint BrowserWindow::branchOf(const Node& node) const {
    const QRect row = indexOf(node);
    return tree_->viewport()->mapToGlobal(QPoint(row.left() - tree_->indentation() / 2, row.center().y()));
}

QPoint BrowserWindow::rowOf(const ListView& list, int row) {
    const int name = list.model()->columnCount() - 1;
    return list.viewport()->mapToGlobal(list.visualRect(list.model()->index(row - 1, name)).center());
}

} // namespace mkl::desktop
