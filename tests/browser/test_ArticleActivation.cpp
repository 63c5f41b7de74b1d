#include "browser/BrowserHost.h"

using namespace mkl;

namespace {

class ArticleActivationTest : public BrowserHost {
protected:
    ArticleActivationTest()
        : BrowserHost(u"41 Schrauben: 12 Senkkopf, 4711 Linse\n50 Werkzeug: 12 Senkkopf"_s) {
        browser->Populate();
        events.take();
    }
    bool activate(Long article, acbPanes pane, bool active) const {
        return hub().articleActivation->LVActivate(article, pane, active);
    }
    QString stored(const QString& column, Long article) const {
        const Variant value =
            catalogue.database()
                ->OpenRecordset(
                    u"SELECT [%1] AS Wert FROM ARTIKEL WHERE [Artikel-Schlüssel]=%2"_s.arg(column).arg(article),
                    dao::dbOpenSnapshot)
                ->value(u"Wert");
        return value.isNull() ? u"Null"_s : value.toText();
    }
};

} // namespace

TEST_F(ArticleActivationTest, bothListsShowTheStoredState) {
    const QString before = stored(u"LetzteÄnderung"_s, 12);
    EXPECT_TRUE(activate(12, acbPaneArticlePool, false));
    EXPECT_EQ(poolRow(12)->SmallIcon(), u"Off"_s);
    EXPECT_EQ(list().ListItems().Item(u"A1"_s)->SmallIcon(), u"Off"_s);
    EXPECT_TRUE(Variant(stored(u"Aktiv"_s, 12)).toText() != stored(u"Aktiv"_s, 4711));
    EXPECT_EQ(stored(u"LetzteÄnderung"_s, 12), before);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleActivationTest, fromTheListTheArticleIsMeant) {
    EXPECT_TRUE(activate(4711, acbPaneArticleList, false));
    EXPECT_EQ(poolRow(4711)->SmallIcon(), u"Off"_s);
    EXPECT_EQ(list().ListItems().Item(u"A2"_s)->SmallIcon(), u"Off"_s);
    EXPECT_TRUE(activate(4711, acbPaneArticleList, true));
    EXPECT_EQ(list().ListItems().Item(u"A2"_s)->SmallIcon(), u"On"_s);
}

TEST_F(ArticleActivationTest, otherCategoriesShowItAtTheirNextRead) {
    EXPECT_TRUE(activate(12, acbPaneArticleList, false));
    browser->setSelected(acbPaneCategoryTree, 50);
    EXPECT_EQ(list().ListItems().Item(1)->SmallIcon(), u"Off"_s);
}

TEST_F(ArticleActivationTest, aVanishedArticleIsToldAndCountsAsDone) {
    catalogue.run(u"DELETE FROM ARTIKEL WHERE \"Artikel-Schlüssel\" = 12"_s);
    EXPECT_TRUE(activate(12, acbPaneArticlePool, false));
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(poolRow(12)->SmallIcon(), u"On"_s);
}

TEST_F(ArticleActivationTest, aFailureIsReportedAndNothingIsEdited) {
    catalogue.run(u"DROP TABLE ARTIKEL"_s);
    EXPECT_FALSE(activate(12, acbPaneArticlePool, false));
    EXPECT_EQ(takeReports(), QStringList{u"LVActivate: 3078"_s});
    EXPECT_FALSE(browser->Edited());
}

// The list has no row of that number: the failure is the command's.
TEST_F(ArticleActivationTest, aRowThatIsNotOnShowFailsBehindTheWriting) {
    catalogue.addArticle(30, u"Stift"_s);
    EXPECT_FALSE(activate(30, acbPaneArticleList, false));
    EXPECT_EQ(takeReports(), QStringList{u"LVActivate: 35601"_s});
    EXPECT_FALSE(browser->Edited());
    EXPECT_NE(stored(u"Aktiv"_s, 30), stored(u"Aktiv"_s, 12));
}
