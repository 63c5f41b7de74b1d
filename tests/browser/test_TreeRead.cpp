#include "browser/BrowserHost.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

const QString forest = u"41 Schrauben: 1 Linse, 2 Senkkopf\n"
                       "  42 Holzschrauben {inaktiv}\n"
                       "    43 Edelstahl\n"
                       "  44 Blechschrauben\n"
                       "50 Werkzeug {Absender 7}\n"
                       "  51 Hammer {Absender 3}\n"_s;

class ForestRead : public BrowserHost {
protected:
    ForestRead()
        : BrowserHost(forest) {}
};

class EmptyCatalogue : public BrowserHost {};

} // namespace

TEST_F(ForestRead, populateGivesTheNumberOfNodesOfAllLevels) {
    EXPECT_EQ(browser->Populate(), 6);
    EXPECT_EQ(treeLines(), (QStringList{u"001 - Schrauben"_s, u"  001 - Holzschrauben"_s, u"    001 - Edelstahl"_s,
                                        u"  002 - Blechschrauben"_s, u"002 - Werkzeug"_s, u"  001 - Hammer"_s}));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ForestRead, aNodeKnowsItsCategory) {
    browser->Populate();
    EXPECT_EQ(node(42)->Key(), u"A-42"_s);
    EXPECT_EQ(node(42)->Tag(), Variant(42));
    EXPECT_EQ(node(42)->Text(), u"001 - Holzschrauben"_s);
    EXPECT_EQ(node(42)->Image(), u"OrdnerZuOff"_s);
    EXPECT_EQ(node(43)->Image(), u"OrdnerZuOn"_s);
}

TEST_F(ForestRead, allNodesStartCollapsed) {
    browser->setKeepsView(false);
    browser->Populate();
    node(41)->setExpanded(true);
    browser->Populate();
    for (const Ref<Node>& node : tree().Nodes())
        EXPECT_FALSE(node->Expanded());
}

TEST_F(ForestRead, theStatusBarShowsTheCount) {
    browser->Populate();
    EXPECT_EQ(treePanel(), u"6 Kategorien"_s);
}

TEST_F(ForestRead, readingAgainReplacesTheTree) {
    browser->Populate();
    catalogue.addCategory({.key = 60, .name = u"Farben"_s, .order = 3});
    EXPECT_EQ(browser->Populate(), 7);
    EXPECT_EQ(treeLines().last(), u"003 - Farben"_s);
}

TEST_F(ForestRead, levelsStandInTheOrderOfPositions) {
    catalogue.addCategory({.key = 7, .name = u"Zuerst"_s, .order = 0});
    catalogue.addCategory({.key = 45, .name = u"Dazwischen"_s, .parent = 41, .order = 1});
    browser->Populate();
    EXPECT_EQ(tree().Nodes().Item(1)->Text(), u"000 - Zuerst"_s);
    EXPECT_EQ(node(41)->Children(), 3);
    EXPECT_EQ(node(44)->Next(), nullptr);
}

TEST_F(ForestRead, theFirstNodeIsSelectedAndReported) {
    browser->Populate();
    EXPECT_EQ(tree().SelectedItem(), node(41));
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(1, 0)"_s, u"ItemClick(A1, 1, 0)"_s, u"ItemSelected(41, 2)"_s,
                                          u"ItemSelected(1, 1)"_s, u"ItemClick(A-41, 41, 2)"_s}));
}

TEST_F(ForestRead, aRereadKeepsTheSelectionWithoutEvents) {
    browser->Populate();
    Q_EMIT tree().NodeClick(node(43).get());
    events.take();
    browser->Populate();
    EXPECT_EQ(tree().SelectedItem(), node(43));
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 43);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(ForestRead, aSelectedCategoryThatIsGoneGivesTheFirstNode) {
    browser->Populate();
    Q_EMIT tree().NodeClick(node(51).get());
    events.take();
    browser->setWorkgroupFilter(u"IN(1)"_s);
    EXPECT_EQ(tree().SelectedItem(), node(41));
    EXPECT_EQ(events.take(),
              (QStringList{u"ItemSelected(41, 2)"_s, u"ItemSelected(1, 1)"_s, u"ItemClick(A-41, 41, 2)"_s}));
}

TEST_F(ForestRead, onlyRootsAreFilteredBySender) {
    browser->setWorkgroupFilter(u"IN(7)"_s);
    EXPECT_EQ(browser->Populate(), 2);
    EXPECT_EQ(treeLines(), (QStringList{u"002 - Werkzeug"_s, u"  001 - Hammer"_s}));
    browser->setWorkgroupFilter(u"In(3)"_s);
    EXPECT_EQ(treeLines(), QStringList());
    EXPECT_EQ(treePanel(), u"0 Kategorien"_s);
}

TEST_F(ForestRead, theFilterOfTheTreeNarrowsTheRoots) {
    browser->setFilter(acbPaneCategoryTree, u"[Kategoriename] Like 'w*'"_s);
    EXPECT_EQ(browser->Populate(), 2);
    browser->setFilter(acbPaneCategoryTree, QString());
    EXPECT_EQ(browser->Populate(), 6);
}

TEST_F(ForestRead, filtersOfTheOtherPanesDoNotTouchTheTree) {
    browser->setFilter(acbPaneArticlePool, u"[Aktiv]=0"_s);
    browser->setFilter(acbPaneArticleList, u"[Order]=99"_s);
    EXPECT_EQ(browser->Populate(), 6);
}

TEST_F(ForestRead, theWorkgroupFilterReadsAgainOnlyIfItChanged) {
    browser->Populate();
    catalogue.addCategory({.key = 60, .name = u"Farben"_s, .order = 3});
    browser->setWorkgroupFilter(u"LIKE '*'"_s);
    EXPECT_EQ(tree().Nodes().Count(), 6);
    EXPECT_EQ(browser->WorkgroupFilter(), u"LIKE '*'"_s);
    browser->setWorkgroupFilter(u"IN(1,7)"_s);
    EXPECT_EQ(tree().Nodes().Count(), 7);
}

TEST_F(ForestRead, anEmptyWorkgroupFilterIsAChangeAndReadsBackWhole) {
    browser->Populate();
    catalogue.addCategory({.key = 60, .name = u"Farben"_s, .order = 3});
    browser->setWorkgroupFilter(QString());
    EXPECT_EQ(browser->WorkgroupFilter(), u"Like '*'"_s);
    EXPECT_EQ(tree().Nodes().Count(), 7);
}

TEST_F(ForestRead, theWorkgroupFilterReadsNothingBeforePopulateNorInDesignMode) {
    browser->setWorkgroupFilter(u"IN(7)"_s);
    EXPECT_EQ(tree().Nodes().Count(), 0);
    browser->Populate();
    browser->setUserMode(false);
    browser->setWorkgroupFilter(u"IN(1)"_s);
    EXPECT_EQ(tree().Nodes().Item(1)->Tag(), Variant(50));
}

TEST_F(ForestRead, aFilteredTreeDoesNotComeBackByTheWorkgroupFilter) {
    browser->setWorkgroupFilter(u"IN(99)"_s);
    EXPECT_EQ(browser->Populate(), 0);
    browser->setWorkgroupFilter(u"IN(1)"_s);
    EXPECT_EQ(tree().Nodes().Count(), 0) << "an empty tree is not read again by itself";
}

TEST_F(ForestRead, aSecondIconSetShowsAfterTheNextRead) {
    browser->Populate();
    browser->setImageset(acbImageset2);
    EXPECT_EQ(node(41)->Image(), u"OrdnerZuOn"_s);
    browser->Populate();
    EXPECT_EQ(node(41)->Image(), u"OrdnerZu2On"_s);
    EXPECT_EQ(node(42)->Image(), u"OrdnerZu2Off"_s);
}

TEST_F(ForestRead, everyImageHasAPicture) {
    for (const acbImagesets imageset : {acbImageset1, acbImageset2}) {
        browser->setImageset(imageset);
        browser->Populate();
        for (const Ref<Node>& node : tree().Nodes()) {
            EXPECT_FALSE(browser->findChild<ImageList*>()->picture(node->Image()).isNull())
                << node->Image().toStdString();
        }
    }
}

TEST_F(ForestRead, danglingParentsAndRingsStayInvisible) {
    catalogue.addCategory({.key = 70, .name = u"Waise"_s, .parent = 9999});
    catalogue.addCategory({.key = 71, .name = u"Kind der Waise"_s, .parent = 70});
    catalogue.addCategory({.key = 80, .name = u"Ring A"_s, .parent = 81});
    catalogue.addCategory({.key = 81, .name = u"Ring B"_s, .parent = 80});
    catalogue.addCategory({.key = 82, .name = u"Sich selbst"_s, .parent = 82});
    EXPECT_EQ(browser->Populate(), 6);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(ForestRead, theHourglassIsTakenBack) {
    Long seen = 0;
    pump.whenServed = [&] { seen = std::max(seen, screen().MousePointer()); };
    browser->Populate();
    browser->setWorkgroupFilter(u"IN(1)"_s); // the read itself shows the progress display
    EXPECT_EQ(seen, vbHourglass);
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}

TEST_F(EmptyCatalogue, givesNoNodesAndNoClick) {
    ProgressBar& bar = constituent<ProgressBar>(u"PB"_s);
    bar.setMax(77);
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(bar.Max(), 77) << "the bar is left as it was";
    EXPECT_EQ(treePanel(), u"0 Kategorien"_s);
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(tree().SelectedItem(), nullptr);
}

TEST_F(EmptyCatalogue, theSelectionOutlivesAnEmptyTree) {
    catalogue.addCategory({.key = 5, .name = u"Farben"_s});
    browser->Populate();
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 5);
}
