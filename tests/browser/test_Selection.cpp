// What is selected, and what the host hears of it in which order.
#include "browser/BrowserHost.h"

#include <QApplication>
#include <QTest>

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse\n"
                     "50 Werkzeug: 7 Ahle, 12 Senkkopf\n"
                     "60 Leer\n"
                     "70 Nägel: 30 Stift, 31 Haken\n"_s;

class SelectionTest : public BrowserHost {
protected:
    SelectionTest()
        : BrowserHost(shop) {
        browser->show();
    }

    void populate() {
        browser->Populate();
        QApplication::processEvents();
        events.take();
    }
    static QPoint middleOf(const ListView& view, const QString& key) {
        const Ref<ListItem> item = view.ListItems().Item(key);
        return view.visualRect(view.model()->index(item->Index() - 1, 0)).center();
    }
    static void click(const ListView& view, const QString& key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, middleOf(view, key));
    }
    void clickNode(Long category) const {
        const QModelIndexList found = tree().model()->match(tree().model()->index(0, 0), Qt::DisplayRole,
                                                            node(category)->Text(), 1, Qt::MatchExactly);
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().visualRect(found.value(0)).center());
    }
    /// Moves the user to that article of the list, without a word.
    void goTo(Long article) {
        browser->setSelected(acbPaneArticleList, article);
        EXPECT_EQ(events.take(), QStringList());
    }
    void rename(Long article, const QString& name) const {
        catalogue.run(
            u"UPDATE ARTIKEL SET Artikelname = '%1' WHERE \"Artikel-Schlüssel\" = %2"_s.arg(name).arg(article));
    }
};

class DesignTime : public SelectionTest {
protected:
    DesignTime() { browser->setUserMode(false); }
};

} // namespace

TEST_F(SelectionTest, aReadSelectsTheFirstOfEachPane) {
    browser->Populate();
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(7, 0)"_s, u"ItemClick(A7, 7, 0)"_s, u"ItemSelected(41, 2)"_s,
                                          u"ItemSelected(12, 1)"_s, u"ItemClick(A-41, 41, 2)"_s}));
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 7);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 12);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41);
    EXPECT_EQ(list().SelectedItem()->Key(), u"A1"_s);
    EXPECT_TRUE(list().SelectedItem()->Selected());
    EXPECT_EQ(pool().SelectedItem()->Key(), u"A7"_s);
}

TEST_F(SelectionTest, theSamePopulateAgainRaisesNothing) {
    populate();
    browser->Populate();
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(SelectionTest, aCategoryWithTheArticleKeepsIt) {
    populate();
    clickNode(50);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(50, 2)"_s, u"ItemClick(A-50, 50, 2)"_s}));
    EXPECT_EQ(list().SelectedItem()->Key(), u"A4"_s) << "article 12 in its other category";
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 12);
}

TEST_F(SelectionTest, aCategoryWithoutTheArticleTellsOfNoneAndThenOfItsFirst) {
    populate();
    clickNode(70);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(70, 2)"_s, u"ItemSelected(0, 1)"_s, u"ItemSelected(30, 1)"_s,
                                          u"ItemClick(A-70, 70, 2)"_s}));
    EXPECT_EQ(list().SelectedItem()->Key(), u"A5"_s);
}

TEST_F(SelectionTest, anEmptyCategoryHasNoArticle) {
    populate();
    clickNode(60);
    EXPECT_EQ(events.take(),
              (QStringList{u"ItemSelected(60, 2)"_s, u"ItemSelected(0, 1)"_s, u"ItemClick(A-60, 60, 2)"_s}));
    clickNode(70);
    EXPECT_EQ(events.take(),
              (QStringList{u"ItemSelected(70, 2)"_s, u"ItemSelected(30, 1)"_s, u"ItemClick(A-70, 70, 2)"_s}));
}

TEST_F(SelectionTest, everyNodeClickReadsTheList) {
    populate();
    rename(12, u"Zylinder"_s);
    clickNode(41);
    EXPECT_EQ(list().ListItems().Item(1)->SubItems(2), u"Zylinder"_s);
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(hub().state.CurrentNodeKey, u"A-41"_s);
}

TEST_F(SelectionTest, aClickOnARowOfTheListTellsTheArticleAndTheAssignment) {
    populate();
    click(list(), u"A2"_s);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(4711, 1)"_s, u"ItemClick(A2, 2, 1)"_s}));
    click(list(), u"A2"_s);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(SelectionTest, whatWasClickedLastIsKnownByPane) {
    populate();
    click(list(), u"A2"_s);
    events.take();
    goTo(12);
    click(list(), u"A2"_s);
    EXPECT_EQ(events.take(), QStringList{u"ItemSelected(4711, 1)"_s}) << "the same as last time";
    click(list(), u"A1"_s);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(12, 1)"_s, u"ItemClick(A1, 1, 1)"_s}));
}

TEST_F(SelectionTest, aClickOnARowOfThePool) {
    populate();
    click(pool(), u"A12"_s);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(12, 0)"_s, u"ItemClick(A12, 12, 0)"_s}));
    click(pool(), u"A12"_s);
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(panel(u"LVArt"_s), u"5 Artikel / 1 ausgewählt"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 12) << "the other list has its own selection";
}

TEST_F(SelectionTest, selectingByCodeRaisesNoClick) {
    populate();
    pool().setSelectedItem(poolRow(12));
    list().setSelectedItem(list().ListItems().Item(u"A2"_s));
    tree().setSelectedItem(node(50));
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 7);
}

TEST_F(SelectionTest, anotherCategoryByTheHost) {
    populate();
    browser->setSelected(acbPaneCategoryTree, 70);
    EXPECT_EQ(events.take(),
              (QStringList{u"ItemSelected(0, 1)"_s, u"ItemSelected(30, 1)"_s, u"ItemClick(A-70, 70, 2)"_s}))
        << "not of the value that was set";
    EXPECT_EQ(tree().SelectedItem(), node(70));
    EXPECT_EQ(panel(u"LV"_s), u"2 Artikel in Kategorie 'Nägel' (Kat-Nr. 70)"_s);
}

TEST_F(SelectionTest, theSameCategoryByTheHostReadsTheListAndRaisesNothing) {
    populate();
    rename(12, u"Zylinder"_s);
    browser->setSelected(acbPaneCategoryTree, 41);
    EXPECT_EQ(list().ListItems().Item(1)->SubItems(2), u"Zylinder"_s);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(SelectionTest, anUnknownCategoryIsTheHostsError) {
    populate();
    EXPECT_EQ(errorOf([&] { browser->setSelected(acbPaneCategoryTree, 99); }), 35601);
    EXPECT_EQ(tree().SelectedItem(), node(41));
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 99) << "stored all the same";
}

TEST_F(SelectionTest, noneAndNegativeKeysAreStoredAlone) {
    populate();
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneCategoryTree})
        for (const Long key : {0, -5}) {
            browser->setSelected(pane, key);
            EXPECT_EQ(browser->Selected(pane), key);
        }
    browser->setSelected(acbPaneArticleList, 0);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 0);
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(tree().SelectedItem(), node(41));
}

TEST_F(SelectionTest, anArticleOfThePoolByTheHost) {
    populate();
    browser->setSelected(acbPaneArticlePool, 4711);
    EXPECT_EQ(events.take(), QStringList{u"ItemClick(A4711, 4711, 0)"_s});
    EXPECT_EQ(pool().SelectedItem(), poolRow(4711));
    EXPECT_EQ(errorOf([&] { browser->setSelected(acbPaneArticlePool, 99); }), 35601);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 99);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(SelectionTest, anArticleOfAPoolThatIsOffIsDropped) {
    browser->setShowArticlePool(false);
    populate();
    browser->setSelected(acbPaneArticlePool, 12);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 0);
}

TEST_F(SelectionTest, anArticleOfTheListByTheHostRaisesNothing) {
    populate();
    goTo(4711);
    EXPECT_EQ(list().SelectedItem()->Key(), u"A2"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 4711);
}

TEST_F(SelectionTest, anArticleThatTheListDoesNotShowSelectsNone) {
    populate();
    browser->setSelected(acbPaneArticleList, 30);
    EXPECT_EQ(events.take(), QStringList{u"ItemSelected(0, 1)"_s});
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 0);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(SelectionTest, anArticleSetBeforeTheReadIsSelectedByIt) {
    browser->setSelected(acbPaneArticleList, 4711);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 4711);
    browser->setShowArticlePool(false);
    browser->Populate();
    EXPECT_EQ(list().SelectedItem()->Key(), u"A2"_s);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(41, 2)"_s, u"ItemClick(A-41, 41, 2)"_s}));
}

TEST_F(SelectionTest, aCategorySetBeforeTheReadIsSelectedByIt) {
    browser->setSelected(acbPaneCategoryTree, 70);
    browser->setShowArticlePool(false);
    browser->Populate();
    EXPECT_EQ(tree().SelectedItem(), node(70));
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(30, 1)"_s, u"ItemClick(A-70, 70, 2)"_s}));
}

TEST_F(SelectionTest, aListThatIsOffStoresItsArticle) {
    populate();
    browser->setShowArticleList(false);
    browser->setSelected(acbPaneArticleList, 4711);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 4711);
}

TEST_F(SelectionTest, anotherPaneIsIgnored) {
    populate();
    for (const Long number : {-1, 3}) {
        const auto pane = static_cast<acbPanes>(number);
        browser->setSelected(pane, 12);
        browser->RefreshPane(pane);
        browser->RefreshItem(12, pane);
        EXPECT_EQ(browser->Selected(pane), 0);
    }
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(SelectionTest, aRereadOfTheTreeKeepsCategoryAndArticle) {
    populate();
    clickNode(50);
    events.take();
    goTo(7);
    browser->RefreshPane(acbPaneCategoryTree);
    EXPECT_EQ(tree().SelectedItem(), node(50));
    EXPECT_EQ(list().SelectedItem()->Key(), u"A3"_s);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(SelectionTest, aCategoryThatIsGoneLeavesTheFirst) {
    populate();
    clickNode(50);
    events.take();
    browser->setFilter(acbPaneCategoryTree, u"[Order]<>2"_s);
    browser->RefreshPane(acbPaneCategoryTree);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(41, 2)"_s, u"ItemClick(A-41, 41, 2)"_s}));
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 12);
}

TEST_F(SelectionTest, aRereadOfTheListKeepsTheArticle) {
    populate();
    goTo(4711);
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(list().SelectedItem()->Key(), u"A2"_s);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(SelectionTest, aRereadOfThePoolSelectsItsFirst) {
    populate();
    click(pool(), u"A12"_s);
    events.take();
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(7, 0)"_s, u"ItemClick(A7, 7, 0)"_s}));
}

TEST_F(SelectionTest, anArticleComesBackWhenTheFilterGoes) {
    populate();
    goTo(4711);
    browser->setFilter(acbPaneArticleList, u"False"_s);
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(list().ListItems().Count(), 0);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 4711);
    browser->setFilter(acbPaneArticleList, {});
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(list().SelectedItem()->Key(), u"A2"_s);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(SelectionTest, anArticleThatAFilterHidesIsLeft) {
    populate();
    browser->setFilter(acbPaneArticleList, u"[ARTKAT].[Artikel-Schlüssel]=4711"_s);
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(events.take(), QStringList{u"ItemSelected(0, 1)"_s});
}

// The tag of a row is its assignment, and yet it is taken for an article.
TEST_F(SelectionTest, aRereadWithoutAnArticleLooksForTheRowsTag) {
    populate();
    browser->setSelected(acbPaneArticleList, 30);
    events.take();
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(events.take(), QStringList{u"ItemSelected(0, 1)"_s})
        << "from 1, the assignment of the row with the focus";
}

TEST_F(SelectionTest, aRereadWithoutACategoryTakesTheNodes) {
    populate();
    browser->setSelected(acbPaneCategoryTree, 0);
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41);
    EXPECT_EQ(list().ListItems().Count(), 2);
}

TEST_F(SelectionTest, assignmentsAreFoundByArticleAndPosition) {
    populate();
    EXPECT_EQ(hub().selection->ArtKatID_FromArticle(4711), 2);
    EXPECT_EQ(hub().selection->ArtKatID_FromArticle(30), 0);
    EXPECT_EQ(hub().selection->ArtKatID_FromPosition(2), 2);
    EXPECT_EQ(hub().selection->ArtKatID_FromPosition(9), 0);
    list().ListItems().Clear();
    EXPECT_EQ(hub().selection->ArtKatID_FromArticle(0), 0);
}

TEST_F(SelectionTest, severalRowsOfThePoolLastWhileTheUserIsThere) {
    for (QWidget* other : {static_cast<QWidget*>(&tree()), static_cast<QWidget*>(&list())}) {
        populate();
        pool().setFocus();
        click(pool(), u"A7"_s);
        click(pool(), u"A31"_s, Qt::ShiftModifier);
        EXPECT_EQ(hub().paneStatus->PoolSelectionCount(), 4);
        hub().paneStatus->ShowPoolStatus(-1);
        EXPECT_EQ(panel(u"LVArt"_s), u"5 Artikel / 4 ausgewählt"_s);
        const Ref<ListItem> focused = pool().SelectedItem();
        other->setFocus();
        EXPECT_EQ(hub().paneStatus->PoolSelectionCount(), 1);
        EXPECT_EQ(pool().SelectedItem(), focused);
        EXPECT_EQ(panel(u"LVArt"_s), u"5 Artikel / 1 ausgewählt"_s);
        EXPECT_EQ(screen().MousePointer(), vbDefault);
    }
}

TEST_F(SelectionTest, aCollapseMovesTheSelectionWithItsEvents) {
    catalogue.addCategory({.key = 42, .name = u"Holzschrauben"_s, .parent = 41});
    populate();
    node(41)->setExpanded(true);
    browser->setSelected(acbPaneCategoryTree, 42);
    events.take();
    node(41)->setExpanded(false);
    EXPECT_EQ(events.take(),
              (QStringList{u"ItemSelected(41, 2)"_s, u"ItemSelected(12, 1)"_s, u"ItemClick(A-41, 41, 2)"_s}));
}

TEST_F(DesignTime, nothingIsReadOrSelected) {
    browser->Populate();
    events.take();
    browser->setSelected(acbPaneCategoryTree, 99);
    browser->setSelected(acbPaneArticlePool, 99);
    browser->setSelected(acbPaneArticleList, 30);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 99);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 99);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 30);
    EXPECT_EQ(events.take(), QStringList());
    browser->setWorkgroupFilter(u"IN(99)"_s);
    EXPECT_EQ(tree().Nodes().Count(), 4);
}
