// Commands over wide and deep trees: nothing may grow with the depth but the heap.
#include "browser/DatedHost.h"
#include "browser/TreeNodes.h"

using namespace mkl;

namespace {

class LargeTreesTest : public DatedHost {
protected:
    LargeTreesTest()
        : DatedHost(u"100000 Werkzeug"_s) {}

    /// Keys from 1 on, each the child of the one before it, below the top level.
    void makeChain(Long length) const { catalogue.addChain(length); }
    /// Keys from 1001 on below one parent, their names falling as the keys rise.
    void makeLevel(const QString& parent, Long count) const {
        catalogue.run(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %2) INSERT INTO "
                      "\"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", Kategoriename, Parent, \"Order\", Aktiv, "
                      "\"Absender-Schlüssel\") SELECT 1000 + i, 'K' || (100000 - i), %1, i, -1, 1 FROM n"_s.arg(parent)
                          .arg(count));
    }
    Long count(const QString& criterion) const {
        return catalogue.database()
            ->OpenRecordset(u"SELECT Count(*) FROM [ARTIKEL/KATEGORIEN] WHERE "_s + criterion, dao::dbOpenSnapshot)
            ->value(0)
            .toLong();
    }
    void activate(Long category) {
        show(category);
        captionActivation(hub().ui.menus.Item(u"kTV_Activate"), node(category)->Image().endsWith(u"On"));
        user.answers = {vbYes};
        hub().categoryEditing->kTV_Activate();
    }
};

} // namespace

TEST_F(LargeTreesTest, deletesASubtreeOf10000) {
    catalogue.addCategory({.key = 40, .name = u"Groß"_s, .order = 2});
    makeLevel(u"40"_s, 10'000);
    show(40);
    user.answers = {vbYes};
    hub().categoryEditing->kTV_Delete();
    EXPECT_EQ(count(u"True"_s), 1);
    EXPECT_EQ(tree().Nodes().Count(), 1);
    EXPECT_EQ(depth(), 0);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(LargeTreesTest, deletesAChainOf10000) {
    makeChain(10'000);
    show(1);
    user.answers = {vbYes};
    hub().categoryEditing->kTV_Delete();
    EXPECT_TRUE(user.shown.first().text.contains(u"(Anzahl: 9999)"_s));
    EXPECT_EQ(count(u"True"_s), 1);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(LargeTreesTest, sortsALevelOf5000) {
    makeLevel(u"NULL"_s, 5'000);
    show(100'000);
    user.answers = {vbYes};
    hub().categoryOrder->kTV_SortInc();
    EXPECT_EQ(count(u"[Parent] Is Null And [Order]=[Kategorie-Schlüssel]-1000"_s), 0);
    EXPECT_EQ(count(u"[Parent] Is Null And [Kategorie-Schlüssel]+[Order]=6001"_s), 5'000);
    EXPECT_EQ(node(100'000)->FirstSibling(), node(6000));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(LargeTreesTest, movesWithinALevelOf5000) {
    makeLevel(u"NULL"_s, 5'000);
    show(3000);
    hub().categoryOrder->moveSelected(1);
    EXPECT_EQ(count(u"LetzteÄnderung Is Not Null"_s), 5'001);
    EXPECT_EQ(node(3001)->Next(), node(3000));
}

TEST_F(LargeTreesTest, deactivatesAChainOf10000) {
    makeChain(10'000);
    activate(1);
    EXPECT_EQ(count(u"[Aktiv]=True"_s), 1);
    EXPECT_TRUE(node(10'000)->Image().endsWith(u"Off"_s));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(LargeTreesTest, worksAtTheEndOfAChainOf10000) {
    makeChain(10'000);
    show(10'000);
    EXPECT_TRUE(TV_IsAncestor(*node(10'000), *node(1)));
    user.texts = {u"ganz unten"_s};
    hub().categoryEditing->kTV_Rename();
    EXPECT_EQ(node(10'000)->Text(), u"001 - ganz unten"_s);
    EXPECT_TRUE(hub().categoryOrder->OrderCategory(*node(10'000), false));
    user.answers = {vbYes};
    hub().categoryEditing->kTV_Delete();
    EXPECT_EQ(count(u"True"_s), 10'000);
    EXPECT_EQ(takeReports(), QStringList());
}
