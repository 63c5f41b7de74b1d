#include "browser/AssignmentHost.h"

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse, 30 Ösen, 31 Ringe\n"
                     "50 Werkzeug: 7 Ahle\n"
                     "60 Leer\n"_s;

class ArticleAssignmentTest : public AssignmentHost {
protected:
    ArticleAssignmentTest()
        : AssignmentHost(shop) {
        catalogue.addArticle(99, u"Zange"_s);
        catalogue.addArticle(100, u"Beil"_s);
        show(41);
    }

    ArticleAssignment& assignment() const { return *hub().articleAssignment; }
    ArticleAssignment::ItemList poolRows(std::initializer_list<Long> articles) const {
        ArticleAssignment::ItemList items;
        for (const Long article : articles)
            items.push_back(poolRow(article));
        return items;
    }
    ArticleAssignment::ItemList listRows(std::initializer_list<Long> rows) const {
        ArticleAssignment::ItemList items;
        for (const Long row : rows)
            items.push_back(list().ListItems().Item(row));
        return items;
    }
    void deletePosition(Long answer = vbYes) {
        user.answers = {answer};
        assignment().kLV_DeletePosition();
    }
    void forbid(const QString& what) const {
        catalogue.run(u"CREATE TRIGGER verboten BEFORE %1 BEGIN SELECT RAISE(ABORT, 'nein'); END"_s.arg(what));
    }
};

} // namespace

TEST_F(ArticleAssignmentTest, knowsWhatACategoryHolds) {
    EXPECT_TRUE(assignment().Article_IsInCat(12, 41));
    EXPECT_FALSE(assignment().Article_IsInCat(12, 50));
    EXPECT_FALSE(assignment().Article_IsInCat(1, 99));
    browser->setFilter(acbPaneArticleList, u"[Order]<>1"_s); // asks the table, not the list
    EXPECT_TRUE(assignment().Article_IsInCat(12, 41));
}

TEST_F(ArticleAssignmentTest, withoutADatabaseNothingIsInACategory) {
    browser->setBackend({});
    EXPECT_FALSE(assignment().Article_IsInCat(12, 41));
    EXPECT_EQ(takeReports(), QStringList{u"Article_IsInCat: 91"_s});
}

TEST_F(ArticleAssignmentTest, selectedRowsComeInTheOrderOfTheList) {
    ArticleAssignment::ItemList items = poolRows({12});
    select(list(), {4, 1, 3});
    EXPECT_EQ(assignment().Article_SelectedArray(items, acbPaneArticleList), 3);
    QStringList keys;
    for (const Ref<ListItem>& item : items)
        keys.append(item->SubItems(1));
    EXPECT_EQ(keys, (QStringList{u"00012"_s, u"00030"_s, u"00031"_s}));
    list().setSortKey(2); // Linse, Ösen, Ringe, Senkkopf
    assignment().Article_SelectedArray(items, acbPaneArticleList);
    EXPECT_EQ(items.front()->SubItems(2), u"Ösen"_s);
    list().deselectOthers({});
    EXPECT_EQ(assignment().Article_SelectedArray(items, acbPaneArticleList), 0);
    EXPECT_TRUE(items.empty());
    select(pool(), {2});
    EXPECT_EQ(assignment().Article_SelectedArray(items, acbPaneArticlePool), 1);
    EXPECT_EQ(items.front(), pool().ListItems().Item(2));
}

TEST_F(ArticleAssignmentTest, theArticleOfARow) {
    EXPECT_EQ(assignment().ArticleID_FromListItem(*poolRow(4711), acbPaneArticlePool), 4711);
    EXPECT_EQ(assignment().ArticleID_FromListItem(*list().ListItems().Item(2), acbPaneArticleList), 4711);
    const Ref<ListItem> row = pool().ListItems().Add({}, u"X"_s, u"X"_s);
    EXPECT_EQ(assignment().ArticleID_FromListItem(*row, acbPaneArticlePool), 0); // a tag without a value
    EXPECT_EQ(takeReports(), QStringList{u"ArticleID_FromListItem: 94"_s});
}

TEST_F(ArticleAssignmentTest, addsRowsFromAPosition) {
    EXPECT_EQ(assignment().Cat_AddArticles(50, 5, poolRows({99, 100}), acbPaneArticlePool), 2);
    EXPECT_EQ(articles(50), u"7@1 99@5* 100@6*"_s);
    EXPECT_FALSE(browser->Edited()); // a matter of the caller
}

TEST_F(ArticleAssignmentTest, whatIsThereIsPassedOverWithoutAGap) {
    EXPECT_EQ(assignment().Cat_AddArticles(41, 5, poolRows({99, 4711, 100}), acbPaneArticlePool), 2);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 31@4 99@5* 100@6*"_s);
}

TEST_F(ArticleAssignmentTest, anArticleTwiceAmongTheItemsIsAddedOnce) {
    EXPECT_EQ(assignment().Cat_AddArticles(60, 1, poolRows({99, 99}), acbPaneArticlePool), 1);
    EXPECT_EQ(articles(60), u"99@1*"_s);
}

TEST_F(ArticleAssignmentTest, addsFromTheListToo) {
    EXPECT_EQ(assignment().Cat_AddArticles(60, 1, listRows({2, 3}), acbPaneArticleList), 2);
    EXPECT_EQ(articles(60), u"4711@1* 30@2*"_s);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 31@4"_s);
}

TEST_F(ArticleAssignmentTest, fromThePoolOfTheUnassignedTheyVanishOneByOne) {
    tick(u"KLVArt_UnCategorized"_s);
    browser->RefreshPane(acbPaneArticlePool);
    ASSERT_EQ(textsOf(pool()), (QStringList{u"00099"_s, u"00100"_s}));
    const ArticleAssignment::ItemList items = poolRows({99, 100});
    forbid(u"INSERT ON ARTKAT WHEN NEW.[Artikel-Schlüssel] = 100"_s);
    EXPECT_EQ(assignment().Cat_AddArticles(60, 1, items, acbPaneArticlePool), 0);
    EXPECT_EQ(textsOf(pool()), QStringList{u"00100"_s}); // the first was added before the second failed
    EXPECT_EQ(items.front()->Tag().toLong(), 99);        // what was removed lives on
    EXPECT_EQ(articles(60), u"99@1*"_s);
}

TEST_F(ArticleAssignmentTest, rowsOfTheListStayInThePool) {
    tick(u"KLVArt_UnCategorized"_s);
    assignment().Cat_AddArticles(60, 1, listRows({1}), acbPaneArticleList);
    EXPECT_EQ(pool().ListItems().Count(), 7);
    EXPECT_EQ(list().ListItems().Count(), 4);
}

TEST_F(ArticleAssignmentTest, withoutAnOpenTableNothingIsAdded) {
    const ArticleAssignment::ItemList items = poolRows({99});
    hub().population->CloseArtKatTable();
    EXPECT_EQ(assignment().Cat_AddArticles(60, 1, items, acbPaneArticlePool), 0);
    EXPECT_EQ(takeReports(), QStringList{u"Cat_AddArticles: 91"_s});
}

TEST_F(ArticleAssignmentTest, aPositionBeyondTheLargestNumberIsReported) {
    constexpr Long highest = std::numeric_limits<Long>::max();
    EXPECT_EQ(assignment().Cat_AddArticles(60, highest, poolRows({99, 100}), acbPaneArticlePool), 0);
    EXPECT_EQ(takeReports(), QStringList{u"Cat_AddArticles: 6"_s});
    EXPECT_EQ(articles(60), u"99@2147483647*"_s); // what was written stays written
}

TEST_F(ArticleAssignmentTest, deletesAndClosesTheGaps) {
    EXPECT_EQ(assignment().Cat_DeleteArticles(41, listRows({1, 3})), 2);
    EXPECT_EQ(articles(41), u"4711@1* 31@2*"_s);
    EXPECT_EQ(articles(50), u"7@1"_s);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(ArticleAssignmentTest, theArticlesThemselvesStay) {
    assignment().Cat_DeleteArticles(41, listRows({1, 2, 3, 4}));
    EXPECT_EQ(articles(41), QString());
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(pool().ListItems().Count(), 7);
}

TEST_F(ArticleAssignmentTest, whatTheFilterHidesIsNotDeleted) {
    const ArticleAssignment::ItemList items = listRows({2});
    browser->setFilter(acbPaneArticleList, u"[Order]<>2"_s);
    catalogue.run(u"UPDATE ARTKAT SET [Order]=9 WHERE [Artikel-Schlüssel]=31"_s);
    EXPECT_EQ(assignment().Cat_DeleteArticles(41, items), 0);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 31@9"_s); // and nothing is numbered
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleAssignmentTest, anEmptyCategoryHasNothingToDelete) {
    EXPECT_EQ(assignment().Cat_DeleteArticles(60, listRows({1})), 0);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleAssignmentTest, aFailedDeletionIsReportedAndNumbersNothing) {
    forbid(u"DELETE ON ARTKAT WHEN OLD.[Order] = 2"_s);
    EXPECT_EQ(assignment().Cat_DeleteArticles(41, listRows({1, 2})), 0);
    EXPECT_EQ(takeReports().size(), 1);
    EXPECT_EQ(articles(41), u"4711@2 30@3 31@4"_s);
}

// --- the menu entry -------------------------------------------------------------------------------------------------

TEST_F(ArticleAssignmentTest, onePositionIsDeletedAfterTheQuestion) {
    select(list(), {3});
    browser->setSelected(acbPaneArticleList, 30);
    events.take();
    deletePosition();
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(
        user.shown.first().text,
        u"Möchten Sie den Artikel 30 aus der Kategorie 'Schrauben' löschen? Die Artikeldaten bleiben erhalten."_s);
    EXPECT_EQ(user.shown.first().flags, vbYesNo | vbQuestion);
    EXPECT_EQ(articles(41), u"12@1* 4711@2* 31@3*"_s);
    EXPECT_EQ(selectedRow(list()), u"002 04711"_s); // the one before it
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(4711, 1)"_s, u"ItemClick(A2, 2, 1)"_s}));
    EXPECT_EQ(panel(u"LV"_s), u"3 Artikel in Kategorie 'Schrauben' (Kat-Nr. 41)"_s);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleAssignmentTest, behindTheFirstTheNextOneIsSelected) {
    select(list(), {1});
    deletePosition();
    EXPECT_EQ(selectedRow(list()), u"001 04711"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 4711);
}

TEST_F(ArticleAssignmentTest, behindTheOnlyOneNothingIsSelected) {
    show(50);
    ASSERT_EQ(browser->Selected(acbPaneArticleList), 7);
    deletePosition();
    EXPECT_EQ(list().ListItems().Count(), 0);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 0);
    EXPECT_EQ(events.take(), QStringList{u"ItemSelected(0, 1)"_s});
    EXPECT_EQ(panel(u"LV"_s), u"0 Artikel in Kategorie 'Werkzeug' (Kat-Nr. 50)"_s);
}

TEST_F(ArticleAssignmentTest, severalPositionsAreDeletedAfterTheirQuestion) {
    select(list(), {1, 3});
    deletePosition();
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.first().text,
              u"2 Artikel aus der Kategorie 'Schrauben' löschen?\r\n\r\nBeachten Sie: Es werden nur die "
              "Kategoriezuordnungen gelöscht, die Artikeldaten bleiben erhalten."_s);
    EXPECT_EQ(user.shown.first().flags, 292);
    EXPECT_EQ(articles(41), u"4711@1* 31@2*"_s);
    EXPECT_EQ(textsOf(list()), (QStringList{u"001"_s, u"002"_s}));
    EXPECT_EQ(list().SelectedCount(), 0);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleAssignmentTest, withAllOfThemTheListIsCleared) {
    browser->setSelected(acbPaneArticleList, 12);
    select(list(), {1, 2, 3, 4});
    events.take();
    deletePosition();
    EXPECT_EQ(articles(41), QString());
    EXPECT_EQ(list().ListItems().Count(), 0);
    EXPECT_EQ(events.take(), QStringList{u"ItemSelected(0, 1)"_s});
    EXPECT_EQ(panel(u"LV"_s), u"0 Artikel in Kategorie 'Schrauben' (Kat-Nr. 41)"_s);
}

TEST_F(ArticleAssignmentTest, noLeavesEverythingAsItIs) {
    select(list(), {2});
    deletePosition(vbNo);
    select(list(), {2, 3});
    deletePosition(vbNo);
    EXPECT_EQ(user.shown.size(), 2);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 31@4"_s);
    EXPECT_EQ(list().SelectedCount(), 2);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(ArticleAssignmentTest, withoutNodeOrRowNothingIsAsked) {
    list().ListItems().Clear();
    deletePosition();
    tree().setSelectedItem({});
    deletePosition();
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_FALSE(browser->Edited());
}

TEST_F(ArticleAssignmentTest, aSwallowedFailureIsCommittedAllTheSame) {
    forbid(u"UPDATE ON ARTKAT WHEN OLD.[Artikel-Schlüssel] = 30"_s); // numbering stops there
    select(list(), {1});
    deletePosition();
    EXPECT_EQ(takeReports().size(), 1);
    EXPECT_EQ(articles(41), u"4711@1* 30@3 31@4"_s);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleAssignmentTest, withoutAWorkspaceItsOwnFailureIsReported) {
    browser->setWorkspace({});
    select(list(), {1});
    deletePosition();
    EXPECT_EQ(takeReports(), QStringList{u"DeletePosition: 91"_s});
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 31@4"_s);
}

TEST_F(ArticleAssignmentTest, theQuestionMayCloseTheControl) {
    for (const bool several : {false, true}) {
        makeBrowser();
        show(41);
        if (several)
            select(list(), {1, 2});
        else
            select(list(), {1});
        const auto kept = hub().shared_from_this();
        user.answers = {vbYes};
        user.whileShown = [this] { browser.reset(); };
        kept->articleAssignment->kLV_DeletePosition();
        user.whileShown = {};
        EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 31@4"_s);
        EXPECT_EQ(depth(), 0);
        EXPECT_EQ(takeReports(), QStringList());
    }
}

TEST_F(ArticleAssignmentTest, theReportOfAFailureMayCloseTheControl) {
    setErrorHandlerFactory({}); // the one that shows messages
    makeBrowser();
    show(41);
    forbid(u"UPDATE ON ARTKAT"_s);
    select(list(), {1});
    user.answers = {vbYes};
    user.whileShown = [this] {
        if (user.shown.size() == 2) browser.reset();
    };
    const auto kept = hub().shared_from_this();
    kept->articleAssignment->kLV_DeletePosition();
    EXPECT_EQ(user.shown.size(), 2);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 31@4"_s); // given up with the control
    EXPECT_EQ(depth(), 0);
}
