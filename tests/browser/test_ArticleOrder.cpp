#include "browser/AssignmentHost.h"
#include "browser/dialogs/frmNewPosition.h"
#include "dao/WorkspaceNotifier.h"
#include "support/ScriptedForms.h"

using namespace mkl;

namespace {

class ArticleOrderTest : public AssignmentHost {
protected:
    ArticleOrderTest()
        : AssignmentHost(u"41 Schrauben\n50 Werkzeug: 1 Zange, 2 Ahle"_s) {}

    /// Gives category 41 articles at these positions, assignments and articles from 101 on, and shows them.
    void fill(const QList<Long>& positions, const QStringList& names = {}) {
        Long key = 100;
        for (const Long position : positions) {
            ++key;
            catalogue.addArticle(key, names.value(key - 101, u"Artikel %1"_s.arg(key)));
            catalogue.run(
                u"INSERT INTO ARTKAT VALUES (%1, %1, 41, %2, '2001-01-01 00:00:00')"_s.arg(key).arg(position));
        }
        show(41);
    }
    using AssignmentHost::positions;
    QString positions() const { return positions(41); }
    ArticleOrder& order() const { return *hub().articleOrder; }
};

} // namespace

TEST_F(ArticleOrderTest, numbersFromOne) {
    fill({1, 3, 7});
    order().Cat_RenumberArticles(41, 0, 0);
    EXPECT_EQ(positions(), u"1* 2* 3*"_s);
    EXPECT_EQ(positions(50), u"1 2"_s);
    EXPECT_FALSE(browser->Edited()); // a matter of the caller
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleOrderTest, opensAGap) {
    fill({1, 2, 3, 4});
    order().Cat_RenumberArticles(41, 3, 2);
    EXPECT_EQ(positions(), u"1 2 5* 6*"_s);
    order().Cat_RenumberArticles(41, 1, 1);
    EXPECT_EQ(positions(), u"2* 3* 4* 5*"_s); // what follows is numbered densely
}

TEST_F(ArticleOrderTest, behindTheLastNothingMoves) {
    fill({1, 2, 3, 4});
    order().Cat_RenumberArticles(41, 5, 3);
    order().Cat_RenumberArticles(99, 5, 3);
    EXPECT_EQ(positions(), u"1 2 3 4"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleOrderTest, aMissingPositionIsReportedAndNothingMoves) {
    fill({1, 2, 4});
    order().Cat_RenumberArticles(41, 3, 1);
    EXPECT_EQ(positions(), u"1 2 4"_s);
    EXPECT_EQ(takeReports(), (QStringList{u"-1072"_s, u"Cat_RenumberArticles: 3021"_s}));
}

TEST_F(ArticleOrderTest, theFirstPositionIsNotComparedWithTheHighest) {
    fill({2, 3});
    order().Cat_RenumberArticles(41, 1, 1);
    EXPECT_EQ(positions(), u"2 3"_s);
    EXPECT_EQ(takeReports(), (QStringList{u"-1072"_s, u"Cat_RenumberArticles: 3021"_s}));
}

TEST_F(ArticleOrderTest, aGapBeyondTheLargestNumberIsReported) {
    fill({1, 2});
    order().Cat_RenumberArticles(41, 2, std::numeric_limits<Long>::max());
    EXPECT_EQ(positions(), u"1 2"_s);
    EXPECT_EQ(takeReports(), QStringList{u"Cat_RenumberArticles: 6"_s});
}

TEST_F(ArticleOrderTest, renumberingIgnoresTheFilter) {
    fill({1, 3, 7});
    browser->setFilter(acbPaneArticleList, u"[Order]<>3"_s);
    order().Cat_RenumberArticles(41, 0, 0);
    EXPECT_EQ(positions(), u"1* 2* 3*"_s);
}

TEST_F(ArticleOrderTest, movesDown) {
    fill({1, 2, 3, 4, 5});
    EXPECT_TRUE(order().ReorderCategories(4, 2, 104, 102, 41));
    EXPECT_EQ(positions(), u"1* 4* 2* 3* 5"_s);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleOrderTest, movesUp) {
    fill({1, 2, 3, 4, 5});
    EXPECT_TRUE(order().ReorderCategories(2, 4, 102, 104, 41));
    EXPECT_EQ(positions(), u"1 3* 4* 2* 5*"_s);
}

TEST_F(ArticleOrderTest, movesToTheEnds) {
    fill({1, 2, 3});
    EXPECT_TRUE(order().ReorderCategories(3, 1, 103, 101, 41));
    EXPECT_EQ(positions(), u"3* 1* 2*"_s);
    EXPECT_TRUE(order().ReorderCategories(1, 3, 102, 101, 41));
    EXPECT_EQ(positions(), u"1* 2* 3*"_s);
}

TEST_F(ArticleOrderTest, movingToItsOwnPlaceRewritesIt) {
    fill({1, 2, 3});
    EXPECT_TRUE(order().ReorderCategories(2, 2, 102, 102, 41));
    EXPECT_EQ(positions(), u"1 2* 3*"_s);
}

TEST_F(ArticleOrderTest, aFilterHidesRowsFromTheMove) {
    fill({1, 2, 3, 4});
    browser->setFilter(acbPaneArticleList, u"[ArtKatID]<>103"_s);
    EXPECT_TRUE(order().ReorderCategories(1, 4, 101, 104, 41));
    EXPECT_EQ(positions(), u"2* 3* 3 1*"_s);
}

TEST_F(ArticleOrderTest, anUnknownTargetIsReportedAndRolledBack) {
    fill({1, 2});
    EXPECT_FALSE(order().ReorderCategories(2, 1, 0, 101, 41));
    EXPECT_EQ(positions(), u"1 2"_s);
    EXPECT_EQ(takeReports(), QStringList{u"ReorderCategories: 3021"_s});
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleOrderTest, aMoveInAnEmptyCategoryIsDoneAtOnce) {
    fill({});
    EXPECT_TRUE(order().ReorderCategories(2, 1, 0, 0, 41));
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleOrderTest, swapsTwo) {
    fill({1, 2, 3});
    EXPECT_TRUE(order().LV_SwapPositions(101, 3, 103, 1));
    EXPECT_EQ(positions(), u"3* 2 1*"_s);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleOrderTest, ofASwapTheVanishedOneIsReported) {
    fill({1, 2, 3});
    EXPECT_TRUE(order().LV_SwapPositions(999, 3, 103, 1));
    EXPECT_EQ(positions(), u"1 2 1*"_s);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
}

TEST_F(ArticleOrderTest, aFailingSwapLeavesBothAsTheyWere) {
    fill({1, 2, 3});
    catalogue.run(u"CREATE TRIGGER verboten BEFORE UPDATE ON ARTKAT WHEN OLD.ArtKatID = 103 "
                  "BEGIN SELECT RAISE(ABORT, 'nein'); END"_s);
    EXPECT_FALSE(order().LV_SwapPositions(101, 3, 103, 1));
    EXPECT_EQ(positions(), u"1 2 3"_s);
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"SwapCategories: "_s)) << reports.first().toStdString();
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleOrderTest, withoutAReadASwapIsReported) {
    EXPECT_FALSE(order().LV_SwapPositions(101, 3, 103, 1));
    EXPECT_EQ(takeReports(), QStringList{u"SwapCategories: 91"_s});
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleOrderTest, sortsByName) {
    fill({1, 2, 3, 4}, {u"Öse"_s, u"Zange"_s, u"ahle"_s, u"Ofen"_s});
    user.answers = {vbYes};
    order().ReorderAlphabetical(41, u"Schrauben"_s, false);
    EXPECT_EQ(positions(), u"3* 4* 1* 2*"_s);
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_TRUE(user.shown.first().text.contains(u"'Schrauben' wirklich alphabetisch aufsteigend"_s));
    EXPECT_EQ(user.shown.first().flags, vbYesNo | vbQuestion);
    EXPECT_EQ(textsOf(list()), (QStringList{u"001"_s, u"002"_s, u"003"_s, u"004"_s}));
    EXPECT_EQ(list().ListItems().Item(1)->Tag().toLong(), 103);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ArticleOrderTest, sortsBackwards) {
    fill({1, 2, 3}, {u"Ahle"_s, u"Zange"_s, u"Ofen"_s});
    user.answers = {vbYes};
    order().ReorderAlphabetical(41, u"Schrauben"_s, true);
    EXPECT_EQ(positions(), u"3* 1* 2*"_s);
    EXPECT_TRUE(user.shown.first().text.contains(u"absteigend"_s));
}

TEST_F(ArticleOrderTest, noMeansNo) {
    fill({1, 2}, {u"Zange"_s, u"Ahle"_s});
    user.answers = {vbNo};
    order().ReorderAlphabetical(41, u"Schrauben"_s, false);
    EXPECT_EQ(positions(), u"1 2"_s);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(ArticleOrderTest, aFilterSortsWhatItShows) {
    fill({1, 2, 3}, {u"Zange"_s, u"Beil"_s, u"Ahle"_s});
    browser->setFilter(acbPaneArticleList, u"[ArtKatID]<>102"_s);
    user.answers = {vbYes};
    order().ReorderAlphabetical(41, u"Schrauben"_s, false);
    EXPECT_EQ(positions(), u"2* 2 1*"_s);
}

TEST_F(ArticleOrderTest, withoutRowsTheTransactionStaysOpenAndTheHostHears) {
    fill({});
    QList<int> told;
    QObject::connect(&catalogue.workspace()->notifier(), &dao::WorkspaceNotifier::transactionLeftOpen,
                     &catalogue.workspace()->notifier(), [&](int open) { told.append(open); });
    user.answers = {vbYes, vbYes};
    order().ReorderAlphabetical(41, u"Schrauben"_s, false);
    EXPECT_EQ(depth(), 1);
    EXPECT_EQ(told, QList<int>{1});
    order().ReorderAlphabetical(41, u"Schrauben"_s, false); // the next one nests
    EXPECT_EQ(depth(), 2);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_FALSE(browser->Edited());
    catalogue.workspace()->Rollback();
    catalogue.workspace()->Rollback();
}

TEST_F(ArticleOrderTest, withoutANodeNothingIsAsked) {
    order().ReorderAlphabetical(41, u"Schrauben"_s, false);
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(ArticleOrderTest, theControlMayBeClosedByTheQuestion) {
    fill({1, 2}, {u"Zange"_s, u"Ahle"_s});
    user.answers = {vbYes};
    user.whileShown = [this] { browser.reset(); };
    const auto kept = hub().shared_from_this();
    kept->articleOrder->ReorderAlphabetical(41, u"Schrauben"_s, false);
    EXPECT_EQ(positions(), u"1 2"_s);
    EXPECT_EQ(depth(), 0);
}

// --- the menu entries -----------------------------------------------------------------------------------------------

namespace {

class OrderMenuTest : public ArticleOrderTest {
protected:
    /// The user types the position and confirms.
    void type(Long position) {
        forms.answers.append([position](QDialog& dialog) {
            auto& form = dynamic_cast<frmNewPosition&>(dialog);
            form.UD.setValue(position);
            form.TB.Buttons(u"OK"_s).click();
        });
    }
    void newPosition(Long row, Long position) {
        list().setSelectedItem(list().ListItems().Item(row));
        type(position);
        order().kLV_NewPosition();
    }

    ScriptedForms forms;
};

} // namespace

TEST_F(OrderMenuTest, theSelectedArticleGoesToItsNewPosition) {
    fill({1, 2, 3, 4, 5});
    newPosition(2, 4);
    EXPECT_EQ(positions(), u"1* 4* 2* 3* 5"_s);
    EXPECT_EQ(selectedRow(list()), u"004 0102"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 102);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(102, 1)"_s, u"ItemClick(A102, 102, 1)"_s}));
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(OrderMenuTest, thePresentPositionConfirmedWritesNothing) {
    fill({1, 2, 3});
    newPosition(2, 2);
    EXPECT_EQ(positions(), u"1 2 3"_s);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(OrderMenuTest, aPositionBeyondTheNumberOfRowsIsClampedAndMoves) {
    fill({2, 3, 9}); // the dialog goes to 3, the number of rows
    newPosition(3, 9);
    EXPECT_EQ(positions(), u"2 4* 3*"_s);
    EXPECT_EQ(selectedRow(list()), u"003 0103"_s);
}

TEST_F(OrderMenuTest, aPositionThatNoRowShowsIsReported) {
    fill({1, 3, 4});
    newPosition(1, 2);
    EXPECT_EQ(positions(), u"1 3 4"_s);
    EXPECT_EQ(takeReports(), QStringList{u"ReorderCategories: 3021"_s});
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(OrderMenuTest, withoutARowTheEntryReports) {
    fill({});
    order().kLV_NewPosition();
    EXPECT_EQ(takeReports(), QStringList{u"kLV_NewPosition_Click: 91"_s});
}

TEST_F(OrderMenuTest, theDialogMayCloseTheControl) {
    fill({1, 2, 3});
    list().setSelectedItem(list().ListItems().Item(1));
    forms.answers.append([this](QDialog&) { browser.reset(); });
    const auto kept = hub().shared_from_this();
    kept->articleOrder->kLV_NewPosition();
    EXPECT_EQ(positions(), u"1 2 3"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(OrderMenuTest, sortsTheSelectedCategory) {
    fill({1, 2, 3}, {u"Ofen"_s, u"Zange"_s, u"Ahle"_s});
    user.answers = {vbYes, vbYes};
    order().kLV_SortInc();
    EXPECT_EQ(positions(), u"2* 3* 1*"_s);
    EXPECT_TRUE(user.shown.first().text.contains(u"'Schrauben' wirklich alphabetisch aufsteigend"_s));
    order().kLV_SortDesc();
    EXPECT_EQ(positions(), u"2* 1* 3*"_s);
    EXPECT_EQ(positions(50), u"1 2"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(OrderMenuTest, withoutANodeNothingIsSorted) {
    order().kLV_SortInc();
    order().kLV_SortDesc();
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(OrderMenuTest, aStepGoesToTheNeighbourByPosition) {
    fill({1, 4, 9}, {u"c"_s, u"a"_s, u"b"_s});
    list().setSelectedItem(list().ListItems().Item(1));
    order().moveSelected(1);
    EXPECT_EQ(positions(), u"4* 3* 9"_s);
    list().setSortKey(2); // by name; the sequence of the positions counts
    order().moveSelected(1);
    EXPECT_EQ(positions(), u"9* 7* 8*"_s);
    order().moveSelected(1); // behind the last one there is nothing
    EXPECT_EQ(positions(), u"9* 7* 8*"_s);
    EXPECT_EQ(list().SelectedItem()->Tag().toLong(), 101);
    order().moveSelected(-1);
    EXPECT_EQ(positions(), u"8* 7* 9*"_s);
    EXPECT_EQ(takeReports(), QStringList());
}
