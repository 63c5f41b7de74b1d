// The tree under a real mouse and keyboard.
#include "catalogue/CatalogueFile.h"
#include "desktop/BrowserWindow.h"

#include <QMenu>

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

using TreeTest = BrowserWindow;

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

TEST_F(TreeTest, F5ReadsThePaneAnewAndKeepsTheView) {
    const Ref<Node> node = rootWithChildren();
    node->setExpanded(true);
    const Long last = tree_->Nodes().Item(60)->Tag().toLong();
    ASSERT_NE(last, node->Tag().toLong());
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    openCatalogue(*workspace, folder_.path(u"Werkzeug.sqlite"_s))
        ->Execute(u"DELETE FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=%1"_s.arg(last), dao::dbFailOnError);
    click(textOf(*node));
    press(u"F5"_s);
    EXPECT_TRUE(waitUntil([&] { return tree_->Nodes().Count() == 59 && rootWithChildren()->Expanded(); }));
}

TEST_F(TreeTest, CtrlQCloses) {
    press(u"ctrl+q"_s);
    EXPECT_TRUE(waitUntil([&] { return !window_.isVisible(); }));
    EXPECT_EQ(window_.browser(), nullptr);
}

} // namespace
