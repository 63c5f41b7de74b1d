// The tree under a real mouse and keyboard.
#include "TestFolder.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "browser/ArtCatBrowser.h"
#include "controls/TreeView.h"
#include "core/ScriptedAsker.h"
#include "desktop/Desktop.h"
#include "support/Printing.h"

#include <QApplication>
#include <QMenu>
#include <QSettings>

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

class TreeTest : public ::testing::Test {
protected:
    void SetUp() override {
        QApplication::setDoubleClickInterval(1); // two clicks of a test stay two
        window_.show();
        // A window manager that has just started may leave the first window without focus unasked.
        ASSERT_TRUE(waitUntil([this] {
            window_.activateWindow();
            return window_.isActiveWindow();
        }));
        ASSERT_TRUE(window_.showFile(folder_.demo(u"Werkzeug.sqlite"_s, 60)));
        tree_ = window_.browser()->CategoryTreeView();
        QObject::connect(window_.browser(), &ArtCatBrowser::ItemSelected, &window_, [this](Long key, acbPanes pane) {
            if (pane == acbPaneCategoryTree) selected_ += u"%1 in %2"_s.arg(key).arg(pane);
        });
        QObject::connect(window_.browser(), &ArtCatBrowser::ItemClick, &window_,
                         [this](Item*, Long key, acbPanes& pane) { clicked_ += u"%1 in %2"_s.arg(key).arg(pane); });
        ASSERT_TRUE(waitUntil([this] { return tree_->isVisible() && !indexOf(*rootWithChildren()).isNull(); }));
    }

    Ref<Node> rootWithChildren() const {
        Ref<Node> node = tree_->Nodes().Item(1)->FirstSibling();
        while (node && node->Children() == 0)
            node = node->Next();
        return node;
    }

    /// Where the node's row is, in the viewport's coordinates.
    QRect indexOf(const Node& node) const {
        const QModelIndexList hits = tree_->model()->match(tree_->model()->index(0, 0), Qt::DisplayRole, node.Text(), 1,
                                                           Qt::MatchExactly | Qt::MatchRecursive);
        return hits.isEmpty() ? QRect() : tree_->visualRect(hits.first());
    }
    QPoint textOf(const Node& node) const { return tree_->viewport()->mapToGlobal(indexOf(node).center()); }
    QPoint branchOf(const Node& node) const {
        const QRect row = indexOf(node);
        return tree_->viewport()->mapToGlobal(QPoint(row.left() - tree_->indentation() / 2, row.center().y()));
    }

    TestFolder folder_;
    QSettings settings_{folder_.path(u"settings.ini"_s), QSettings::IniFormat};
    ScriptedAsker asker_;
    MainWindow window_{settings_};
    TreeView* tree_ = nullptr;
    QStringList selected_;
    QStringList clicked_;
};

TEST_F(TreeTest, AClickOnTheBranchExpandsAndCollapses) {
    const Ref<Node> node = rootWithChildren();
    click(branchOf(*node));
    EXPECT_TRUE(waitUntil([&] { return node->Expanded(); }));
    EXPECT_TRUE(node->Image().startsWith(u"OrdnerAuf"_s)) << node->Image().toStdString();
    keepPicture(u"tree-expanded"_s);
    click(branchOf(*node));
    EXPECT_TRUE(waitUntil([&] { return !node->Expanded(); }));
    EXPECT_TRUE(node->Image().startsWith(u"OrdnerZu"_s)) << node->Image().toStdString();
}

TEST_F(TreeTest, AClickOnANodeSelectsIt) {
    const Ref<Node> node = tree_->Nodes().Item(1)->FirstSibling()->Next();
    ASSERT_TRUE(node);
    const QString expected = u"%1 in 2"_s.arg(node->Tag().toLong());
    click(textOf(*node));
    EXPECT_TRUE(waitUntil([&] { return clicked_ == QStringList(expected); })) << clicked_.join(u' ').toStdString();
    EXPECT_EQ(selected_, QStringList(expected));
    EXPECT_EQ(tree_->SelectedItem(), node);
    EXPECT_EQ(window_.browser()->Selected(acbPaneCategoryTree), node->Tag().toLong());
}

TEST_F(TreeTest, KeysWalkTheTree) {
    const Ref<Node> node = rootWithChildren();
    click(textOf(*node));
    ASSERT_TRUE(waitUntil([&] { return tree_->hasFocus() && tree_->SelectedItem() == node; }));
    press(u"Right"_s);
    EXPECT_TRUE(waitUntil([&] { return node->Expanded(); }));
    press(u"Down"_s);
    EXPECT_TRUE(waitUntil([&] { return tree_->SelectedItem() == node->Child(); }));
    EXPECT_EQ(clicked_.last(), u"%1 in 2"_s.arg(node->Child()->Tag().toLong()));
    press(u"Left"_s);
    EXPECT_TRUE(waitUntil([&] { return tree_->SelectedItem() == node; }));
    press(u"Left"_s);
    EXPECT_TRUE(waitUntil([&] { return !node->Expanded(); }));
}

TEST_F(TreeTest, ACollapseTakesTheSelectionAlong) {
    const Ref<Node> node = rootWithChildren();
    node->setExpanded(true);
    click(textOf(*node->Child()));
    ASSERT_TRUE(waitUntil([&] { return tree_->SelectedItem() == node->Child(); }));
    click(branchOf(*node));
    EXPECT_TRUE(waitUntil([&] { return tree_->SelectedItem() == node; }));
    EXPECT_EQ(selected_.last(), u"%1 in 2"_s.arg(node->Tag().toLong()));
}

TEST_F(TreeTest, MenusOpenByKey) {
    press(u"alt+d"_s);
    EXPECT_TRUE(waitUntil([] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr; }));
    keepPicture(u"menu-file"_s);
    press(u"Escape"_s);
    EXPECT_TRUE(waitUntil([] { return QApplication::activePopupWidget() == nullptr; }));
}

TEST_F(TreeTest, F5ReadsAnew) {
    rootWithChildren()->setExpanded(true);
    press(u"F5"_s);
    EXPECT_TRUE(waitUntil([&] { return tree_->Nodes().Count() == 60 && !rootWithChildren()->Expanded(); }));
}

TEST_F(TreeTest, CtrlQCloses) {
    press(u"ctrl+q"_s);
    EXPECT_TRUE(waitUntil([&] { return !window_.isVisible(); }));
    EXPECT_EQ(window_.browser(), nullptr);
}

} // namespace
