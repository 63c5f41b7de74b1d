#include "browser/DatedHost.h"
#include "browser/TreeNodes.h"
#include "browser/dialogs/frmNewPosition.h"
#include "dao/WorkspaceNotifier.h"
#include "support/ScriptedForms.h"

using namespace mkl;

namespace {

const QString forest = u"41 Schrauben: 12 Senkkopf, 30 Ösen\n"
                       "  411 Holz\n"
                       "  412 Blech\n"
                       "50 Werkzeug\n"
                       "  501 Zangen\n"
                       "60 Ähren: 7 Ahle\n"_s;

class CategoryOrderTest : public DatedHost {
protected:
    explicit CategoryOrderTest(const QString& picture = forest)
        : DatedHost(picture) {}

    CategoryOrder& order() const { return *hub().categoryOrder; }
    void type(Long position) {
        forms.answers.append([position](QDialog& dialog) {
            auto& form = dynamic_cast<frmNewPosition&>(dialog);
            form.UD.setValue(position);
            form.TB.Buttons(u"OK"_s).click();
        });
    }
    void newPosition(Long category, Long position) {
        show(category);
        type(position);
        order().kTV_NewPosition();
    }
    void forbid(const QString& what) const {
        catalogue.run(u"CREATE TRIGGER verboten BEFORE %1 BEGIN SELECT RAISE(ABORT, 'nein'); END"_s.arg(what));
    }
    QString orderOf(Long category) const {
        QStringList keys;
        for (Ref<Node> each = node(category)->FirstSibling(); each; each = each->Next())
            keys.append(each->Tag().toText());
        return keys.join(u' ');
    }

    ScriptedForms forms;
};

} // namespace

TEST_F(CategoryOrderTest, writesTheLevelAsItIsOnScreen) {
    show(41);
    catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Order\"=7"_s);
    EXPECT_TRUE(order().OrderCategory(*node(60), false));
    EXPECT_EQ(level(0), u"41@1* 50@2* 60@3*"_s);
    EXPECT_EQ(level(41), u"411@7 412@7"_s);
    EXPECT_TRUE(order().OrderCategory(*node(411), false));
    EXPECT_EQ(level(41), u"411@1* 412@2*"_s);
    EXPECT_FALSE(browser->Edited()); // a matter of the caller
}

TEST_F(CategoryOrderTest, theNodeItselfCanBePassedOver) {
    show(41);
    EXPECT_TRUE(order().OrderCategory(*node(41), true));
    EXPECT_EQ(level(0), u"41@1 50@1* 60@2*"_s);
}

TEST_F(CategoryOrderTest, aVanishedCategoryStopsTheWalk) {
    show(41);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=50"_s);
    EXPECT_FALSE(order().OrderCategory(*node(60), false));
    EXPECT_EQ(level(0), u"41@1* 60@3"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(CategoryOrderTest, aRemovedNodeHasNoLevel) {
    show(41);
    const Ref<Node> removed = node(60);
    tree().Nodes().Remove(removed->Key());
    EXPECT_FALSE(order().OrderCategory(*removed, false));
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
}

TEST_F(CategoryOrderTest, aFailedWriteIsReportedThere) {
    show(41);
    forbid(u"UPDATE ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=50"_s);
    EXPECT_FALSE(order().OrderCategory(*node(41), false));
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"OrderCategory: "_s));
    EXPECT_EQ(level(0), u"41@1* 50@2 60@3"_s);
}

// --- sorting --------------------------------------------------------------------------------------------------------

TEST_F(CategoryOrderTest, sortsTheLevelByName) {
    show(41);
    browser->setSelected(acbPaneArticleList, 30);
    events.take();
    user.answers = {vbYes};
    order().kTV_SortInc();
    EXPECT_EQ(level(0), u"60@1* 41@2* 50@3*"_s);
    EXPECT_EQ(level(41), u"411@1 412@2"_s); // the children stay
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_TRUE(user.shown.first().text.contains(u"alphabetisch aufsteigend"_s));
    EXPECT_EQ(user.shown.first().flags, vbYesNo | vbQuestion);
    EXPECT_EQ(orderOf(41), u"60 41 50"_s);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 30);
    EXPECT_EQ(list().SelectedItem()->SubItems(1), u"030"_s);
    EXPECT_FALSE(browser->Edited()); // a sort leaves it alone
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryOrderTest, sortsALowerLevelBackwards) {
    show(411);
    user.answers = {vbYes};
    order().kTV_SortDesc();
    EXPECT_EQ(level(41), u"411@1* 412@2*"_s);
    EXPECT_TRUE(user.shown.first().text.contains(u"absteigend"_s));
    user.answers = {vbYes};
    order().kTV_SortInc();
    EXPECT_EQ(level(41), u"412@1* 411@2*"_s);
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
}

TEST_F(CategoryOrderTest, noSortsNothing) {
    show(41);
    user.answers = {vbNo};
    order().Renumber(false);
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryOrderTest, withoutANodeNothingIsAsked) {
    order().Renumber(false);
    order().kTV_NewPosition();
    order().moveSelected(1);
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(CategoryOrderTest, whereTheFilterHidesTheLevelThereIsNothingToSort) {
    show(411);
    browser->setFilter(acbPaneCategoryTree, u"[Kategoriename] Like 'S*'"_s);
    user.answers = {vbYes, vbOK};
    order().Renumber(false);
    ASSERT_EQ(user.shown.size(), 2);
    EXPECT_EQ(user.shown.last().text, u"Es gibt nichts zu sortieren."_s);
    EXPECT_EQ(user.shown.last().flags, 64);
    EXPECT_EQ(level(41), u"411@1 412@2"_s);
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryOrderTest, whatTheFilterHidesIsNotSorted) {
    show(41);
    browser->setFilter(acbPaneCategoryTree, u"[Kategoriename] Not Like 'W*'"_s);
    user.answers = {vbYes};
    order().Renumber(false);
    EXPECT_EQ(level(0), u"60@1* 41@2* 50@2"_s);
}

TEST_F(CategoryOrderTest, withoutAnyRowTheTransactionStaysOpen) {
    show(41);
    browser->setFilter(acbPaneCategoryTree, u"[Kategoriename]='x'"_s);
    user.answers = {vbYes};
    order().Renumber(false);
    EXPECT_EQ(depth(), 1);
    EXPECT_EQ(takeReports(), QStringList());
    catalogue.workspace()->Rollback();
}

TEST_F(CategoryOrderTest, aFailedSortIsReportedAndRolledBack) {
    show(41);
    forbid(u"UPDATE ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=50"_s);
    user.answers = {vbYes};
    order().Renumber(false);
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"Renumber: "_s));
    EXPECT_EQ(depth(), 0);
}

// --- a new position -------------------------------------------------------------------------------------------------

TEST_F(CategoryOrderTest, theFirstGoesBehindTheLast) {
    newPosition(41, 3);
    EXPECT_EQ(level(0), u"50@1* 60@2* 41@3*"_s);
    EXPECT_EQ(orderOf(41), u"50 60 41"_s);
    EXPECT_EQ(level(41), u"411@1 412@2"_s);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41);
    EXPECT_EQ(tree().SelectedItem(), node(41));
    EXPECT_EQ(node(41)->Children(), 2);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryOrderTest, theLastGoesBeforeTheFirst) {
    newPosition(60, 1);
    EXPECT_EQ(level(0), u"60@1* 41@2* 50@3*"_s);
}

TEST_F(CategoryOrderTest, theSelectedArticleStaysSelected) {
    show(41);
    browser->setSelected(acbPaneArticleList, 30);
    type(2);
    order().kTV_NewPosition();
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 30);
    EXPECT_EQ(list().SelectedItem()->SubItems(1), u"030"_s);
}

TEST_F(CategoryOrderTest, thePresentPositionChangesNothing) {
    newPosition(50, 2);
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryOrderTest, placesAreCountedNotNumbers) {
    catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Order\"=\"Order\"*3 WHERE Parent IS NULL"_s); // 3, 6, 9
    newPosition(41, 2);
    EXPECT_EQ(level(0), u"41@1* 50@2* 60@3*"_s); // 2 is below 3: before the second node
    newPosition(41, 2);
    EXPECT_EQ(level(0), u"50@1* 41@2* 60@3*"_s);
}

TEST_F(CategoryOrderTest, aPlaceThatIsItsOwnMakesTheLevelDense) {
    catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Order\"=9 WHERE \"Kategorie-Schlüssel\"=60"_s);
    newPosition(60, 9); // the level has three
    EXPECT_EQ(level(0), u"41@1* 50@2* 60@3*"_s);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_TRUE(browser->Edited());
}

TEST_F(CategoryOrderTest, aFailureOfTheNumberingIsReportedThereAndCommitted) {
    show(41);
    forbid(u"UPDATE ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=60"_s);
    type(3);
    order().kTV_NewPosition();
    EXPECT_EQ(level(0), u"41@1 50@1* 60@3"_s);
    EXPECT_EQ(takeReports().size(), 1);
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryOrderTest, anOwnFailureReadsTheTreeAnew) {
    show(41);
    browser->setWorkspace({});
    type(3);
    order().kTV_NewPosition();
    EXPECT_EQ(takeReports(), QStringList{u"kTV_NewPosition_Click: 91"_s});
    EXPECT_EQ(orderOf(41), u"41 50 60"_s);
    EXPECT_EQ(node(41)->Children(), 2);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryOrderTest, theDialogMayCloseTheControl) {
    show(41);
    forms.answers.append([this](QDialog&) { browser.reset(); });
    const auto kept = hub().shared_from_this();
    kept->categoryOrder->kTV_NewPosition();
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(CategoryOrderTest, aStepGoesToTheNeighbour) {
    show(411);
    order().moveSelected(1);
    EXPECT_EQ(level(41), u"412@1* 411@2*"_s);
    order().moveSelected(1);
    EXPECT_EQ(level(41), u"412@1* 411@2*"_s);
    order().moveSelected(-1);
    EXPECT_EQ(level(41), u"411@1* 412@2*"_s);
    EXPECT_EQ(tree().SelectedItem(), node(411));
}

// --- swap and parent ------------------------------------------------------------------------------------------------

TEST_F(CategoryOrderTest, swapsPlacesAndParents) {
    show(41);
    EXPECT_TRUE(order().SwapCategories(*node(60), *node(411)));
    EXPECT_EQ(level(0), u"41@1 50@2 411@3*"_s);
    EXPECT_EQ(level(41), u"60@1* 412@2"_s);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryOrderTest, subtreesGoAlong) {
    show(41);
    EXPECT_TRUE(order().SwapCategories(*node(41), *node(501)));
    EXPECT_EQ(level(0), u"501@1* 50@2 60@3"_s);
    EXPECT_EQ(level(50), u"41@1*"_s);
    EXPECT_EQ(level(41), u"411@1 412@2"_s);
}

TEST_F(CategoryOrderTest, ofASwapTheVanishedOneIsReported) {
    show(41);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=41"_s);
    EXPECT_TRUE(order().SwapCategories(*node(41), *node(60)));
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(level(0), u"60@1* 50@2"_s);
}

TEST_F(CategoryOrderTest, aFailedSwapIsReportedThere) {
    show(41);
    forbid(u"UPDATE ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=60"_s);
    EXPECT_FALSE(order().SwapCategories(*node(41), *node(60)));
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"SwapCategories: "_s));
}

TEST_F(CategoryOrderTest, givesAnotherParent) {
    show(41);
    order().EditParent(411, Long(50));
    EXPECT_EQ(level(50), u"411@1* 501@1"_s);
    order().EditParent(411, {});
    EXPECT_EQ(level(0), u"41@1 411@1* 50@2 60@3"_s);
    order().EditParent(999, Long(50)); // nobody is told
    EXPECT_EQ(takeReports(), QStringList());
    browser->setBackend({});
    order().EditParent(411, Long(50));
    EXPECT_EQ(takeReports(), QStringList{u"EditParent: 91"_s});
}
