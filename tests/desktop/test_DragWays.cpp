// Drags that come to nothing, and what helps on the way.
#include "desktop/DragWindow.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

class DragWays : public DragWindow {
protected:
    void SetUp() override {
        DragWindow::SetUp();
        before_ = everything();
        for (const ItemView* view : std::initializer_list<ItemView*>{tree_, &list(), &pool()}) {
            QObject::connect(view, &ItemView::DragOver, &window_, [this] { ++overs_; });
            QObject::connect(view, &ItemView::DragDrop, &window_, [this] { ++drops_; });
            QObject::connect(view, &ItemView::DragCancelled, &window_, [this] { ++cancelled_; });
        }
    }
    void expectUnchanged() {
        expectNothing();
        EXPECT_EQ(everything(), before_);
    }

    QString before_;
    int overs_ = 0;
    int drops_ = 0;
    int cancelled_ = 0;
};

class DragOverALongTree : public DragWays {
protected:
    QString makeCatalogue() override { return folder_.demo(u"Garten.sqlite"_s, 120); }
};

TEST_F(DragWays, AShortClick) {
    xdotool(toPoint(nodeAt(83)) << u"mousedown"_s << u"1"_s << u"sleep"_s << u"0.05"_s << u"mouseup"_s << u"1"_s);
    ASSERT_TRUE(waitUntil([&] { return browser().Selected(acbPaneCategoryTree) == 83; }));
    // Later than a drag would have begun the mouse comes by again.
    xdotool(QStringList{u"sleep"_s, u"0.3"_s} + toPoint(nodeAt(17)));
    EXPECT_TRUE(waitUntil([&] { return QCursor::pos() == nodeAt(17); }));
    EXPECT_EQ(overs_, 0);
    EXPECT_EQ(browser().Selected(acbPaneCategoryTree), 83);
    expectUnchanged();
}

TEST_F(DragWays, CtrlTooLateDoesNotCopy) {
    selectCategory(category(17));
    dragFrom(rowOf(list(), 1));
    xdotool({u"keydown"_s, u"ctrl"_s});
    moveTo(nodeAt(27));
    expectIcon(u"ImageDragArticle"_s);
    releaseAndAnswer([] {
        xdotool({u"keyup"_s, u"ctrl"_s});
        press(u"Return"_s);
    });
    expectSoon([&] { return articlesOf(17); }, u"45@1 100@2 40@3"_s);
    EXPECT_EQ(articlesOf(27), u"44@1 40@2 41@3 42@4 43@5"_s);
}

TEST_F(DragWays, DropsOnNothing) {
    selectCategory(category(17));
    const QPoint outside = window_.frameGeometry().bottomRight() + QPoint(30, -60);
    int rounds = 0;
    for (const QPoint& nothing : {middleOf("picSplitter"), middleOf("SB"), outside}) {
        dragFrom(rowOf(list(), 1));
        moveTo(nodeAt(83));
        expectIcon(u"ImageDragArticle"_s);
        moveTo(nothing);
        expectIcon(u"ImageNoDrop"_s);
        EXPECT_EQ(line(), u"Hier ist kein Ablegen möglich"_s);
        release();
        ++rounds;
        EXPECT_TRUE(waitUntil([&] { return cancelled_ == rounds; }));
        expectUnchanged();
    }
    EXPECT_EQ(drops_, 0);
    dragFrom(rowOf(list(), 1)); // on the pool, which takes nothing
    moveTo(rowOf(pool(), 3));
    expectIcon(u"ImageNoDrop"_s);
    release();
    expectUnchanged();
}

TEST_F(DragWays, EscapeEndsIt) {
    selectCategory(category(17));
    dragFrom(rowOf(list(), 1));
    moveTo(nodeAt(83));
    expectIcon(u"ImageDragArticle"_s);
    press(u"Escape"_s);
    EXPECT_TRUE(waitUntil([&] { return cancelled_ == 1; }));
    expectNothing();
    release();
    EXPECT_TRUE(waitUntil([] { return QGuiApplication::mouseButtons() == Qt::NoButton; }));
    EXPECT_EQ(tree_->SelectedItem(), category(17));
    EXPECT_EQ(drops_, 0);
    expectUnchanged();
    clickRow(list(), 2); // and all is as usual
    EXPECT_EQ(list().SelectedCount(), 1);
}

TEST_F(DragWays, TheRightButtonEndsItWithoutAMenu) {
    dragFrom(nodeAt(17));
    moveTo(nodeAt(83));
    expectIcon(u"ImageDragFolder"_s);
    xdotool({u"mousedown"_s, u"3"_s});
    EXPECT_TRUE(waitUntil([&] { return cancelled_ == 1; }));
    xdotool({u"mouseup"_s, u"3"_s, u"mouseup"_s, u"1"_s});
    EXPECT_TRUE(waitUntil([] { return QGuiApplication::mouseButtons() == Qt::NoButton; }));
    EXPECT_EQ(tree_->SelectedItem(), category(17));
    expectUnchanged();
}

TEST_F(DragWays, AnotherProgramDeletesTheTarget) {
    selectCategory(category(17));
    dragFrom(rowOf(list(), 1));
    moveTo(nodeAt(27));
    expectIcon(u"ImageDragArticle"_s);
    reader_->Execute(u"DELETE FROM ARTKAT WHERE [Kategorie-Schlüssel]=27"_s, dao::dbFailOnError);
    reader_->Execute(u"DELETE FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=27"_s, dao::dbFailOnError);
    const QString others = everything();
    doAndAnswer([this] { release(); }, {[] { press(u"Return"_s); }, // the position
                                        [] {
                                            keepPicture(u"drag-target-deleted"_s);
                                            press(u"Return"_s);
                                        }});
    EXPECT_EQ(everything(), others);
    expectNothing();
}

TEST_F(DragOverALongTree, TheWheelAndTheEdgesScroll) {
    const QScrollBar& bar = *tree_->verticalScrollBar();
    ASSERT_GT(bar.maximum(), 20);
    const auto inTree = [this](int y) { return tree_->viewport()->mapToGlobal(QPoint(60, y)); };
    dragFrom(rowOf(pool(), 1));
    moveTo(inTree(100));
    ASSERT_TRUE(waitUntil([&] { return static_cast<bool>(tree_->DropHighlight()); }));
    const Ref<Node> under = tree_->DropHighlight();
    xdotool({u"click"_s, u"5"_s});
    ASSERT_TRUE(waitUntil([&] { return bar.value() > 0; }));
    EXPECT_TRUE(waitUntil([&] { return tree_->DropHighlight() != under; })); // another one lies there now
    EXPECT_TRUE(drags());
    moveTo(inTree(tree_->viewport()->height() - 6));
    EXPECT_TRUE(waitUntil([&] { return bar.value() == bar.maximum(); }));
    keepPicture(u"drag-scrolled"_s);
    moveTo(inTree(6));
    EXPECT_TRUE(waitUntil([&] { return bar.value() == 0; }));
    press(u"Escape"_s);
    EXPECT_TRUE(waitUntil([&] { return cancelled_ == 1; }));
    expectUnchanged();
}

TEST_F(DragWays, AClosedCategoryOpens) {
    category(83)->setExpanded(false);
    selectCategory(category(17));
    dragFrom(rowOf(list(), 2));
    moveTo(nodeAt(83));
    ASSERT_TRUE(waitUntil([&] { return category(83)->Expanded(); }));
    keepPicture(u"drag-opened-category"_s);
    ASSERT_TRUE(waitUntil([&] { return !indexOf(*category(93)).isNull(); }));
    moveTo(nodeAt(93));
    EXPECT_TRUE(waitUntil([&] { return tree_->DropHighlight() == category(93); }));
    releaseAndAnswer([] { press(u"Return"_s); });
    expectSoon([&] { return articlesOf(93); }, u"45@1 20@2 21@3 22@4 23@5"_s);
    EXPECT_EQ(articlesOf(17), u"44@1 100@2 40@3"_s);
}

} // namespace
