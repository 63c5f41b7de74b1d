#include "browser/DragDrop.h"
#include "browser/DragHost.h"

using namespace mkl;

namespace {

class DragDropTest : public DragHost {
protected:
    DragDropTest()
        : DragHost(dragCatalogue) {
        catalogue.addArticle(99, u"Zange"_s);
        show(41);
        node(41)->setExpanded(true);
        node(411)->setExpanded(true);
    }

    QString flags() const {
        QString set;
        if (drag().DragFromPool) set += u'P';
        if (drag().DragFromTree) set += u'T';
        if (drag().DragFromList) set += u'L';
        return set;
    }
};

} // namespace

// --- press ----------------------------------------------------------------------------------------------------------

TEST_F(DragDropTest, aPressOnARowStartsTheTimer) {
    press(list(), 2);
    EXPECT_EQ(flags(), u"L"_s);
    EXPECT_EQ(drag().DragItem, list().ListItems().Item(2));
    EXPECT_EQ(keyOf(drag().DropNode), u"41"_s);
    EXPECT_EQ(drag().DragCopy, 0);
    EXPECT_TRUE(timer().Enabled());
    EXPECT_EQ(timer().Interval(), 200);
    WindowMouse::releaseAt(list(), WindowMouse::placeOf(list(), 2));
    expectEnd();
    EXPECT_EQ(flags(), u"L"_s); // until the next press
    press(pool(), 1);
    EXPECT_EQ(flags(), u"P"_s);
    EXPECT_EQ(drag().DragItem, pool().ListItems().Item(1));
}

TEST_F(DragDropTest, aReleaseBeforeTheTimerIsAClick) {
    EventLog log;
    log.record(browser.get(), &ArtCatBrowser::Click, u"Click"_s);
    press(50);
    dropOn(50);
    expectEnd();
    EXPECT_EQ(log.take(), QStringList{u"Click()"_s});
    timer().tick(); // disabled
    EXPECT_EQ(icon(tree()), u"-"_s);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 50);
}

TEST_F(DragDropTest, aPressOnANodeSelectsItAndReadsItsArticlesOnce) {
    events.take();
    press(50);
    EXPECT_EQ(flags(), u"T"_s);
    EXPECT_EQ(keyOf(drag().DragNode), u"50"_s);
    EXPECT_EQ(keyOf(drag().DropNode), u"-"_s);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(50, 2)"_s, u"ItemClick(A-50, 50, 2)"_s}));
    EXPECT_EQ(textsOf(list()).size(), 2);
    const Ref<ListItem> row = list().ListItems().Item(1);
    dropOn(50);
    EXPECT_EQ(list().ListItems().Item(1), row);
}

TEST_F(DragDropTest, besideTheRowsOfAListNothingIsDragged) {
    WindowMouse::pressAt(list(), freeArea(list()));
    EXPECT_EQ(flags(), QString());
    EXPECT_FALSE(timer().Enabled());
    WindowMouse::pressAt(tree(), freeArea(tree())); // in the tree a press counts, but there is nothing to drop
    EXPECT_EQ(flags(), u"T"_s);
    EXPECT_FALSE(drag().DragNode);
    wait();
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s);
    over(60);
    EXPECT_FALSE(tree().DropHighlight());
    dropOn(60);
    expectEnd();
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41);
}

TEST_F(DragDropTest, theSignThatCollapsesNeitherSelectsNorDrags) {
    press(50);
    dropOn(50);
    const QRect row = tree().visualRect(tree().indexAt(WindowMouse::placeOf(tree(), node(41))));
    WindowMouse::pressAt(tree(), {row.left() - tree().indentation() / 2, row.center().y()});
    EXPECT_FALSE(drag().DragNode);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 50);
    EXPECT_FALSE(node(41)->Expanded());
}

TEST_F(DragDropTest, withoutMultiSelectThePressSelectsTheRow) {
    list().setMultiSelect(false);
    events.take();
    press(list(), 3);
    EXPECT_EQ(list().SelectedItem(), list().ListItems().Item(3));
    EXPECT_EQ(events.take().value(0), u"ItemSelected(30, 1)"_s);
}

TEST_F(DragDropTest, theSwitchTheOtherButtonsAndDesignTimeDragNothing) {
    browser->setAllowDragDrop(false);
    press(50);
    EXPECT_EQ(flags(), QString());
    EXPECT_FALSE(timer().Enabled());
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 50);
    dropOn(50);
    browser->setAllowDragDrop(true);
    browser->setUserMode(false);
    press(list(), 1);
    EXPECT_FALSE(timer().Enabled());
    dropOn(list(), 1);
    browser->setUserMode(true);
    WindowMouse::pressAt(tree(), WindowMouse::placeOf(tree(), node(60)), {}, Qt::RightButton);
    EXPECT_FALSE(timer().Enabled());
    EXPECT_EQ(flags(), QString());
}

TEST_F(DragDropTest, theHostMayTakeThePressAway) {
    QObject::connect(browser.get(), &ArtCatBrowser::MouseDown, browser.get(), [](Integer& Button) { Button = 0; });
    press(list(), 2);
    EXPECT_EQ(flags(), QString());
}

TEST_F(DragDropTest, onlyCtrlAtThePressCopies) {
    press(list(), 2, Qt::ControlModifier);
    EXPECT_EQ(drag().DragCopy, 1);
    wait();
    over(50);
    EXPECT_EQ(icon(list()), u"ImageCopyArticle"_s);
    dropOnFreeArea(tree());
    press(list(), 2);
    QTest::keyPress(browser->windowHandle(), Qt::Key_Control);
    wait();
    over(50);
    EXPECT_EQ(drag().DragCopy, 0);
    EXPECT_EQ(icon(list()), u"ImageDragArticle"_s);
    QTest::keyRelease(browser->windowHandle(), Qt::Key_Control);
}

TEST_F(DragDropTest, aCtrlPressOnASelectedRowKeepsTheSelectionThroughADrag) {
    select(list(), {1, 2, 3});
    press(list(), 2, Qt::ControlModifier);
    wait();
    EXPECT_EQ(list().SelectedCount(), 3);
    over(60);
    putAt(0);
    WindowMouse::releaseAt(tree(), WindowMouse::placeOf(tree(), node(60)), Qt::ControlModifier);
    EXPECT_EQ(articles(60), u"12@1* 4711@2* 30@3*"_s);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
}

// --- over the tree --------------------------------------------------------------------------------------------------

TEST_F(DragDropTest, aCategoryOverTheTree) {
    press(60);
    wait();
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s); // over itself
    over(50);
    EXPECT_EQ(icon(tree()), u"ImageDragFolder"_s);
    EXPECT_EQ(tree().DropHighlight(), node(50));
    EXPECT_EQ(keyOf(drag().DropNode), u"50"_s);
    over(60);
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s);
    over(4111);
    EXPECT_EQ(icon(tree()), u"ImageDragFolder"_s);
    overFreeArea(tree());
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s);
    EXPECT_FALSE(tree().DropHighlight());
    over(50);
    WindowMouse::moveTo(list(), WindowMouse::placeOf(list(), 1));
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s);
    EXPECT_FALSE(tree().DropHighlight() || list().DropHighlight());
}

TEST_F(DragDropTest, aTopCategoryOverItsDescendants) {
    press(41);
    wait();
    over(411);
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s);
    over(4111);
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s);
    over(60);
    EXPECT_EQ(icon(tree()), u"ImageDragFolder"_s);
}

TEST_F(DragDropTest, aSubcategoryOverItsParent) {
    press(411, Qt::ControlModifier);
    wait();
    over(41);
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s);
    over(60);
    EXPECT_EQ(icon(tree()), u"ImageCopyFolder"_s);
}

TEST_F(DragDropTest, anArticleOfTheListOverTheTree) {
    press(list(), 2);
    wait();
    over(41); // the selected node was the first one under the mouse by definition
    EXPECT_FALSE(tree().DropHighlight());
    over(50);
    EXPECT_EQ(icon(list()), u"ImageDragArticle"_s);
    over(41);
    EXPECT_EQ(icon(list()), u"ImageNoDrop"_s);
    EXPECT_EQ(tree().DropHighlight(), node(41));
    over(list(), 3);
    EXPECT_FALSE(tree().DropHighlight());
    EXPECT_EQ(list().DropHighlight(), list().ListItems().Item(3));
    over(50);
    EXPECT_FALSE(list().DropHighlight());
}

TEST_F(DragDropTest, anArticleOfThePoolOverTheTree) {
    press(pool(), 1);
    wait();
    EXPECT_EQ(icon(pool()), u"ImageNoDrop"_s);
    over(50);
    EXPECT_EQ(icon(pool()), u"ImageCopyArticle"_s);
    overFreeArea(tree());
    EXPECT_EQ(icon(pool()), u"ImageNoDrop"_s);
    over(41);
    EXPECT_EQ(icon(pool()), u"ImageCopyArticle"_s); // also over the selected one
    EXPECT_EQ(tree().DropHighlight(), node(41));
}

TEST_F(DragDropTest, withoutASelectedNodeThePictureStays) {
    press(pool(), 1);
    wait();
    tree().setSelectedItem({});
    over(50);
    EXPECT_EQ(icon(pool()), u"ImageNoDrop"_s); // as it was when the drag began
    EXPECT_EQ(tree().DropHighlight(), node(50));
}

// --- over the list and the pool -------------------------------------------------------------------------------------

TEST_F(DragDropTest, anArticleOfTheListOverTheList) {
    press(list(), 2);
    wait();
    EXPECT_EQ(icon(list()), u"ImageNoDrop"_s); // over itself
    over(list(), 1);
    EXPECT_EQ(icon(list()), u"ImageDragArticle"_s);
    EXPECT_EQ(drag().DropItem, list().ListItems().Item(1));
    overFreeArea(list());
    EXPECT_EQ(icon(list()), u"ImageNoDrop"_s);
    EXPECT_FALSE(drag().DropItem || list().DropHighlight());
}

TEST_F(DragDropTest, withCtrlTheListTakesNothing) {
    press(list(), 2, Qt::ControlModifier);
    wait();
    over(list(), 1);
    EXPECT_EQ(icon(list()), u"ImageNoDrop"_s);
}

TEST_F(DragDropTest, anArticleOfThePoolOverTheList) {
    press(pool(), 2);
    wait();
    over(list(), 1);
    EXPECT_EQ(icon(pool()), u"ImageCopyArticle"_s);
    EXPECT_EQ(list().DropHighlight(), list().ListItems().Item(1));
    overFreeArea(list());
    EXPECT_EQ(icon(pool()), u"ImageCopyArticle"_s);
    EXPECT_FALSE(list().DropHighlight());
    over(pool(), 1); // leaving the list forbids, and the pool is no target
    EXPECT_EQ(icon(pool()), u"ImageNoDrop"_s);
    dropOn(pool(), 1);
    expectEnd();
}

// --- ends -----------------------------------------------------------------------------------------------------------

TEST_F(DragDropTest, escapeEndsADrag) {
    press(60);
    wait();
    over(50);
    QTest::keyClick(browser->windowHandle(), Qt::Key_Escape);
    expectEnd();
    dropOn(50);
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
}

TEST_F(DragDropTest, aDropOnNothingEndsADrag) {
    press(60);
    wait();
    over(50);
    auto& bar = constituent<StatusBar>(u"SB"_s);
    WindowMouse::releaseAt(bar, bar.rect().center());
    expectEnd();
    press(list(), 1);
    wait();
    WindowMouse::releaseAt(*browser, {-50, -50});
    expectEnd();
}

TEST_F(DragDropTest, aReleaseThatTheControlNeverSawBeginsNoDrag) {
    press(60);
    WindowMouse::releaseAll();
    press(list(), 1);
    timer().tick();
    WindowMouse::releaseAll();
    expectEnd();
}

TEST_F(DragDropTest, theControlMayGoInTheMiddle) {
    press(60);
    wait();
    over(50);
    browser.reset();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(DragDropTest, aDragMovesNoFocus) {
    pool().setFocus();
    for (const Long article : {7, 12, 99})
        pool().setSelectedItem(poolRow(article));
    press(pool(), 1);
    wait();
    over(50);
    over(list(), 1);
    EXPECT_TRUE(pool().hasFocus());
    EXPECT_EQ(pool().SelectedCount(), 3);
}

TEST_F(DragDropTest, theEndLetsGoOfAllPictures) {
    const auto kept = hub().shared_from_this();
    press(60);
    wait();
    over(50);
    browser.reset();
    EXPECT_FALSE(kept->state.drag.DragNode || kept->state.drag.DropNode);
    EXPECT_FALSE(kept->state.drag.DragFromTree);
}
