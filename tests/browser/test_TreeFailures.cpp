#include "base/Texts.h"
#include "browser/BrowserHost.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

/// A table of categories that takes anything.
class DamagedCatalogue : public BrowserHost {
protected:
    DamagedCatalogue() { catalogue.allowBadKeys(); }

    /// The numbers of the errors that the user was asked about.
    QList<Long> asked() const {
        QList<Long> numbers;
        for (const MessageBox& box : user.shown)
            numbers.append(box.detail.section(u"Fehler Nr.: "_s, 1).section(u"\r\n"_s, 0, 0).toInt());
        return numbers;
    }
    void addRoot(Long key, const QString& name, Long order) const {
        catalogue.addCategory({.key = key, .name = name, .order = order});
    }
    void addChild(Long parent, Long key, const QString& name, Long order) const {
        catalogue.addCategory({.key = key, .name = name, .parent = parent, .order = order});
    }
};

class Filtered : public BrowserHost {
protected:
    Filtered()
        : BrowserHost(u"41 Schrauben\n50 Werkzeug"_s) {}

    /// Populate with this filter of the tree: the reports.
    QStringList reportsOf(const QString& filter) {
        browser->setFilter(acbPaneCategoryTree, filter);
        EXPECT_EQ(browser->Populate(), 0);
        EXPECT_EQ(tree().Nodes().Count(), 0);
        EXPECT_EQ(treePanel(), u"0 Kategorien"_s);
        return takeReports();
    }
};

class WithoutSchema : public BrowserHost {};

} // namespace

TEST_F(DamagedCatalogue, aRootTwiceAsksForEachStatementThatMissesTheNode) {
    addRoot(1, u"A"_s, 1);
    addRoot(1, u"B"_s, 2);
    addRoot(2, u"C"_s, 3);
    EXPECT_EQ(browser->Populate(), 2);
    EXPECT_EQ(asked(), (QList<Long>{35602, 91, 91}));
    EXPECT_EQ(treeLines(), (QStringList{u"001 - A"_s, u"003 - C"_s}));
    EXPECT_EQ(node(1)->Tag(), Variant(1));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(DamagedCatalogue, childrenOfARootTwiceAskOnceMore) {
    addRoot(1, u"A"_s, 1);
    addRoot(1, u"B"_s, 2);
    addChild(1, 3, u"Kind"_s, 1);
    addChild(1, 4, u"Kind 2"_s, 2);
    browser->Populate();
    EXPECT_EQ(asked(), (QList<Long>{35602, 91, 91, 35602}));
    EXPECT_EQ(treeLines(), (QStringList{u"001 - A"_s, u"  001 - Kind"_s, u"  002 - Kind 2"_s}));
}

TEST_F(DamagedCatalogue, theQuestionNamesTheCategory) {
    addRoot(1, u"A"_s, 1);
    addChild(1, 5, u"Kind %1-&X"_s, 12);
    addChild(1, 5, u"Kind zwei"_s, 13);
    browser->Populate();
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown[0].text, codedText(1034));
    EXPECT_EQ(user.shown[0].flags, 20);
    EXPECT_EQ(user.shown[0].detail, u"Kategorie: Kind zwei\r\nPosition: 13\r\nSchlüssel: 5\r\n"
                                    "Übergeordneter Schlüssel: 1\r\nFehler Nr.: 35602\r\nFehler: "_s +
                                        runTimeText(35602, {u"A-5"_s}));
}

TEST_F(DamagedCatalogue, theQuestionTakesAnyNameAsItStands) {
    addRoot(1, u"A"_s, 1);
    addRoot(1, u"50 %1 & %2 - mehr"_s, 2);
    user.answers = {vbNo};
    browser->Populate();
    EXPECT_TRUE(user.shown.at(0).detail.startsWith(u"Kategorie: 50 %1 & %2 - mehr\r\nPosition: 2\r\nSchlüssel: 1\r\n"
                                                   "Übergeordneter Schlüssel: \r\n"_s));
}

TEST_F(DamagedCatalogue, aChildTwiceAsksOnceAndDropsTheRestOfItsRoot) {
    addRoot(1, u"A"_s, 1);
    addChild(1, 2, u"gut"_s, 1);
    addChild(2, 4, u"tief"_s, 1);
    addChild(4, 2, u"doppelt"_s, 1);
    addChild(4, 5, u"fehlt"_s, 2);
    addChild(1, 6, u"fehlt auch"_s, 2);
    addRoot(9, u"B"_s, 2);
    EXPECT_EQ(browser->Populate(), 4);
    EXPECT_EQ(asked(), (QList<Long>{35602}));
    EXPECT_EQ(treeLines(), (QStringList{u"001 - A"_s, u"  001 - gut"_s, u"    001 - tief"_s, u"002 - B"_s}));
}

TEST_F(DamagedCatalogue, aRootWithoutActiveStateAsksOnceAndKeepsItsChildren) {
    catalogue.addCategory({.key = 1, .name = u"A"_s, .active = {}});
    addChild(1, 2, u"Kind"_s, 1);
    EXPECT_EQ(browser->Populate(), 2);
    EXPECT_EQ(asked(), (QList<Long>{94}));
    EXPECT_EQ(node(1)->Image(), QString());
    EXPECT_EQ(node(1)->Tag(), Variant(1));
}

TEST_F(DamagedCatalogue, aChildWithoutActiveStateDropsWhatFollows) {
    addRoot(1, u"A"_s, 1);
    catalogue.addCategory({.key = 2, .name = u"Kind"_s, .parent = 1, .active = {}});
    addChild(2, 3, u"Enkel"_s, 1);
    addChild(1, 4, u"Kind 2"_s, 2);
    EXPECT_EQ(browser->Populate(), 2);
    EXPECT_EQ(asked(), (QList<Long>{94}));
    EXPECT_EQ(treeLines(), (QStringList{u"001 - A"_s, u"  001 - Kind"_s}));
}

TEST_F(DamagedCatalogue, aRootWithoutKeyHasNoChildren) {
    addRoot(1, u"A"_s, 1);
    catalogue.addCategory({.name = u"ohne"_s, .order = 2});
    EXPECT_EQ(browser->Populate(), 2);
    EXPECT_EQ(asked(), (QList<Long>{94}));
    EXPECT_EQ(tree().Nodes().Item(u"A-"_s)->Text(), u"002 - ohne"_s);
}

TEST_F(DamagedCatalogue, aRootWithoutKeyInFrontCannotBeSelected) {
    catalogue.addCategory({.name = u"ohne"_s});
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(takeReports(), (QStringList{u"X_PopulateTV: 94"_s}));
    EXPECT_EQ(treePanel(), u"1 Kategorien"_s);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(DamagedCatalogue, nullNamesAndPositionsAreNoFailure) {
    catalogue.addCategory({.key = 1});
    catalogue.addCategory({.key = 2, .name = u"ohne Position"_s, .parent = 1, .order = {}});
    EXPECT_EQ(browser->Populate(), 2);
    EXPECT_EQ(treeLines(), (QStringList{u"001 - "_s, u"   - ohne Position"_s}));
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(DamagedCatalogue, answerNoStopsAtARoot) {
    addRoot(1, u"A"_s, 1);
    addRoot(1, u"B"_s, 2);
    addRoot(2, u"C"_s, 3);
    user.answers = {vbNo};
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(user.shown.size(), 1);
    EXPECT_EQ(treeLines(), (QStringList{u"001 - A"_s}));
    EXPECT_EQ(treePanel(), u"1 Kategorien"_s);
    EXPECT_EQ(tree().SelectedItem(), nullptr);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 0);
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(screen().MousePointer(), vbDefault);
    EXPECT_TRUE(tree().isVisibleTo(browser.get()));
}

TEST_F(DamagedCatalogue, answerNoStopsInASubtree) {
    addRoot(1, u"A"_s, 1);
    addChild(1, 2, u"Kind"_s, 1);
    addChild(1, 2, u"doppelt"_s, 2);
    addRoot(9, u"B"_s, 2);
    user.answers = {vbNo};
    browser->Populate();
    EXPECT_EQ(treeLines(), (QStringList{u"001 - A"_s, u"  001 - Kind"_s}));
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(DamagedCatalogue, answerNoToALaterQuestionStopsThere) {
    addRoot(1, u"A"_s, 1);
    addRoot(1, u"B"_s, 2);
    addRoot(2, u"C"_s, 3);
    user.answers = {vbYes, vbNo};
    browser->Populate();
    EXPECT_EQ(asked(), (QList<Long>{35602, 91}));
    EXPECT_EQ(treeLines(), (QStringList{u"001 - A"_s}));
}

TEST_F(DamagedCatalogue, theListStaysAsItWasAfterNo) {
    addRoot(1, u"A"_s, 1);
    addRoot(1, u"B"_s, 2);
    browser->ArticleListView()->ListItems().Add({}, u"A1"_s, u"001"_s);
    user.answers = {vbNo};
    browser->Populate();
    EXPECT_EQ(browser->ArticleListView()->ListItems().Count(), 1);
}

TEST_F(DamagedCatalogue, aTreeThatStoppedIsReadWholeTheNextTime) {
    addRoot(1, u"A"_s, 1);
    addRoot(1, u"B"_s, 2);
    user.answers = {vbNo};
    browser->Populate();
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategoriename\" = 'B'"_s);
    EXPECT_EQ(browser->Populate(), 1);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(1, 2)"_s, u"ItemClick(A-1, 1, 2)"_s}));
}

TEST_F(DamagedCatalogue, parentsThatGoInACircleThroughADoubledKeyEnd) {
    addRoot(1, u"A"_s, 1);
    addChild(1, 2, u"B"_s, 1);
    addChild(2, 1, u"A"_s, 1);
    EXPECT_EQ(browser->Populate(), 2);
    EXPECT_EQ(asked(), (QList<Long>{35602}));
}

TEST_F(Filtered, filtersThatTheDatabaseRejectsGiveAnEmptyTree) {
    EXPECT_EQ(reportsOf(u"[Aktiv]="_s), (QStringList{u"X_PopulateTV: 3075"_s}));
    EXPECT_EQ(reportsOf(u"[Unbekannt]=1"_s), (QStringList{u"X_PopulateTV: 3061"_s}));
    EXPECT_EQ(reportsOf(u"Unbekannt([Order])=1"_s), (QStringList{u"X_PopulateTV: 3085"_s}));
    browser->setFilter(acbPaneCategoryTree, QString());
    EXPECT_EQ(browser->Populate(), 2);
}

TEST_F(Filtered, aFilterIsNeverMoreThanOneCriterion) {
    for (const QString& filter :
         {u"True; DELETE FROM [ARTIKEL/KATEGORIEN]"_s, u"True) OR (True"_s,
          u"True UNION SELECT * FROM [ARTIKEL/KATEGORIEN]"_s, u"True -- "_s, u"True ORDER BY [Kategoriename]"_s}) {
        const QStringList reports = reportsOf(filter);
        ASSERT_EQ(reports.size(), 1) << filter.toStdString();
        EXPECT_TRUE(reports[0].startsWith(u"X_PopulateTV: 3"_s)) << reports[0].toStdString();
    }
    browser->setFilter(acbPaneCategoryTree, QString());
    EXPECT_EQ(browser->Populate(), 2);
}

TEST_F(Filtered, aWorkgroupFilterWithAnErrorIsReportedOnce) {
    browser->Populate();
    browser->setWorkgroupFilter(u"IN(3"_s);
    EXPECT_EQ(takeReports(), (QStringList{u"X_PopulateTV: 3075"_s}));
    EXPECT_EQ(tree().Nodes().Count(), 0);
    EXPECT_TRUE(tree().isVisibleTo(browser.get()));
}

TEST_F(WithoutSchema, noBackendGivesNothingAndOneReport) {
    browser->setBackend({});
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(takeReports(), (QStringList{u"Populate: 91"_s}));
    EXPECT_TRUE(tree().isVisibleTo(browser.get()));
}

TEST_F(WithoutSchema, aMissingTableIsReportedByTheProcedureThatReadsIt) {
    catalogue.run(u"DROP TABLE \"ARTIKEL/KATEGORIEN\""_s);
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(takeReports(), (QStringList{u"X_PopulateTV: 3078"_s}));
    catalogue.run(u"DROP TABLE \"ARTIKEL\""_s);
    browser->Populate();
    EXPECT_EQ(takeReports(),
              (QStringList{u"Article_MaxNo: 3078"_s, u"PopulateLVArt: 3078"_s, u"X_PopulateTV: 3078"_s}));
    catalogue.run(u"DROP TABLE \"ARTKAT\""_s);
    browser->Populate();
    EXPECT_EQ(takeReports(), (QStringList{u"Populate: 3078"_s}));
}

TEST_F(WithoutSchema, aMissingIndexIsReported) {
    catalogue.run(testsOnServer() ? u"ALTER TABLE ARTKAT DROP CONSTRAINT \"ARTKAT:ArtKatID\""_s
                                  : u"DROP INDEX \"ARTKAT:ArtKatID\""_s);
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(takeReports().size(), 1);
}

TEST_F(WithoutSchema, aMissingColumnIsReported) {
    catalogue.run(u"ALTER TABLE \"ARTIKEL/KATEGORIEN\" DROP COLUMN \"Kategoriename\""_s);
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(takeReports(), (QStringList{u"X_PopulateTV: 3061"_s}));
}

TEST_F(WithoutSchema, aClosedDatabaseIsReported) {
    catalogue.database()->Close();
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(takeReports(), (QStringList{u"Populate: 3420"_s}));
}
