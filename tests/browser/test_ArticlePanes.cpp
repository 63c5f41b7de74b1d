#include "browser/BrowserHost.h"

#include <QHeaderView>
#include <QTest>

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse\n"
                     "50 Werkzeug: 7 Ahle, 12 Senkkopf\n"
                     "60 Leer\n"_s;

class ArticlesOnShow : public BrowserHost {
protected:
    ArticlesOnShow()
        : BrowserHost(shop) {}

    void select(Long category) const { browser->setSelected(acbPaneCategoryTree, category); }
    void setActive(Long article, const QString& value) const {
        catalogue.run(u"UPDATE ARTIKEL SET Aktiv = %1 WHERE \"Artikel-Schlüssel\" = %2"_s.arg(value).arg(article));
    }
    static void clickOnHeader(ListView& view, int column) {
        QHeaderView& header = *view.header();
        const QPoint middle(header.sectionViewportPosition(column) + header.sectionSize(column) / 2,
                            header.height() / 2);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, middle);
    }
};

class EmptyShop : public BrowserHost {};

} // namespace

TEST_F(ArticlesOnShow, aRowOfThePoolKnowsItsArticle) {
    setActive(7, u"0"_s);
    browser->Populate();
    EXPECT_EQ(rowsOf(pool()),
              (QStringList{u"A7|7|00007|Ahle|Off"_s, u"A12|12|00012|Senkkopf|On"_s, u"A4711|4711|04711|Linse|On"_s}));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticlesOnShow, aRowOfTheListKnowsItsAssignment) {
    setActive(4711, u"0"_s);
    browser->Populate();
    EXPECT_EQ(rowsOf(list()), (QStringList{u"A1|1|001|00012|Senkkopf|On"_s, u"A2|2|002|04711|Linse|Off"_s}));
}

TEST_F(ArticlesOnShow, theListFollowsTheCategory) {
    browser->Populate();
    select(50);
    EXPECT_EQ(rowsOf(list()), (QStringList{u"A3|3|001|00007|Ahle|On"_s, u"A4|4|002|00012|Senkkopf|On"_s}));
    select(60);
    EXPECT_EQ(rowsOf(list()), QStringList());
}

TEST_F(ArticlesOnShow, aStateWithoutAValueIsOff) {
    setActive(12, u"NULL"_s);
    browser->Populate();
    EXPECT_EQ(poolRow(12)->SmallIcon(), u"Off"_s);
    EXPECT_EQ(list().ListItems().Item(1)->SmallIcon(), u"Off"_s);
}

TEST_F(ArticlesOnShow, valuesThatAreMissingAreEmptyTexts) {
    catalogue.run(u"UPDATE ARTIKEL SET Artikelname = NULL WHERE \"Artikel-Schlüssel\" = 12;"
                  "UPDATE ARTKAT SET \"Order\" = NULL WHERE ArtKatID = 1"_s);
    browser->Populate();
    EXPECT_EQ(poolRow(12)->SubItems(1), QString());
    EXPECT_EQ(rowsOf(list()).first(), u"A1|1||00012||On"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticlesOnShow, theIconsHavePictures) {
    for (const QString& key : {u"On"_s, u"Off"_s})
        EXPECT_FALSE(browser->findChild<ImageList*>()->picture(key).isNull());
}

TEST_F(ArticlesOnShow, positionsSortAsTexts) {
    for (const auto& [article, position] : {std::pair{12, 999}, {7, 1000}, {4711, 2}})
        catalogue.assign(article, 60, position);
    browser->Populate();
    select(60);
    EXPECT_EQ(textsOf(list()), (QStringList{u"002"_s, u"1000"_s, u"999"_s}));
}

TEST_F(ArticlesOnShow, namesSortAsInALexicon) {
    for (const auto& [key, name] : {std::pair{20, u"Zange"_s}, {21, u"Öse"_s}, {22, u"ölkanne"_s}, {23, u"Ohr"_s}})
        catalogue.addArticle(key, name);
    browser->Populate();
    pool().setSortKey(1);
    QStringList names;
    for (const Ref<ListItem>& item : pool().ListItems())
        names.append(item->SubItems(1));
    EXPECT_EQ(names, (QStringList{u"Ahle"_s, u"Linse"_s, u"Ohr"_s, u"ölkanne"_s, u"Öse"_s, u"Senkkopf"_s, u"Zange"_s}));
}

TEST_F(ArticlesOnShow, aClickOnAColumnsHeadSortsByItAlwaysAscending) {
    browser->show();
    browser->Populate();
    select(50);
    catalogue.assign(4711, 50, 3);
    browser->RefreshPane(acbPaneArticleList);
    for (int turn = 0; turn < 2; ++turn) {
        clickOnHeader(list(), 2);
        EXPECT_EQ(list().SortKey(), 2);
        EXPECT_EQ(textsOf(list()), (QStringList{u"001"_s, u"003"_s, u"002"_s}));
    }
    clickOnHeader(pool(), 1);
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00007"_s, u"04711"_s, u"00012"_s}));
    events.take();
    clickOnHeader(pool(), 0);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(ArticlesOnShow, aReadGoesBackToTheFirstColumn) {
    browser->Populate();
    list().setSortKey(2);
    pool().setSortKey(1);
    browser->RefreshPane(acbPaneArticleList);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(list().SortKey(), 0);
    EXPECT_EQ(pool().SortKey(), 0);
    EXPECT_EQ(textsOf(list()), (QStringList{u"001"_s, u"002"_s}));
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00007"_s, u"00012"_s, u"04711"_s}));
}

TEST_F(ArticlesOnShow, aNumberThatOutgrowsThePatternShowsInFull) {
    browser->Populate();
    catalogue.addArticle(1234567, u"Neu"_s);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00007"_s, u"00012"_s, u"04711"_s, u"1234567"_s}));
    catalogue.addArticle(9123456, u"Neuer"_s);
    catalogue.run(u"DELETE FROM ARTIKEL WHERE \"Artikel-Schlüssel\" = 1234567"_s);
    catalogue.addArticle(99999, u"Fünf Stellen"_s);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(textsOf(pool()).mid(3), (QStringList{u"9123456"_s, u"99999"_s})) << "as texts";
    browser->Populate();
    EXPECT_EQ(textsOf(pool()).mid(3), (QStringList{u"00099999"_s, u"09123456"_s}));
}

TEST_F(ArticlesOnShow, theStatusBarTellsOfBothLists) {
    browser->Populate();
    EXPECT_EQ(panel(u"LV"_s), u"2 Artikel in Kategorie 'Schrauben' (Kat-Nr. 41)"_s);
    EXPECT_EQ(panel(u"LVArt"_s), u"3 Artikel / 1 ausgewählt"_s);
    select(60);
    EXPECT_EQ(panel(u"LV"_s), u"0 Artikel in Kategorie 'Leer' (Kat-Nr. 60)"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticlesOnShow, aNameWithAPlaceholderIsNotFilledAgain) {
    catalogue.run(
        u"UPDATE \"ARTIKEL/KATEGORIEN\" SET Kategoriename = '%3 & Co - %1' WHERE \"Kategorie-Schlüssel\" = 41"_s);
    browser->Populate();
    EXPECT_EQ(panel(u"LV"_s), u"2 Artikel in Kategorie '%3 & Co - %1' (Kat-Nr. 41)"_s);
}

TEST_F(ArticlesOnShow, withoutASelectedNodeThePanelStays) {
    browser->Populate();
    tree().setSelectedItem({});
    hub().paneStatus->ShowListStatus(0);
    hub().paneStatus->ShowListStatus(99);
    EXPECT_EQ(panel(u"LV"_s), u"2 Artikel in Kategorie 'Schrauben' (Kat-Nr. 41)"_s);
}

TEST_F(ArticlesOnShow, theCountOfThePoolCanBeGiven) {
    browser->Populate();
    hub().paneStatus->ShowPoolStatus(2);
    EXPECT_EQ(panel(u"LVArt"_s), u"3 Artikel / 2 ausgewählt"_s);
    pool().setSelectedItem({});
    hub().paneStatus->ShowPoolStatus(0);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 0);
}

TEST_F(ArticlesOnShow, statementOfTheList) {
    const auto statement = [this](bool useFilter) { return hub().articlePanes->ListStatement(41, useFilter); };
    const QString plain = statement(true);
    EXPECT_TRUE(plain.contains(u"WHERE (True AND ([ARTKAT].[Kategorie-Schlüssel]=41)) ORDER BY"_s))
        << plain.toStdString();
    browser->setFilter(acbPaneArticleList, u"[Order]>1"_s);
    EXPECT_TRUE(statement(true).contains(u"([ARTKAT].[Kategorie-Schlüssel]=41 AND [Order]>1)"_s));
    EXPECT_EQ(statement(false), plain);
}

TEST_F(ArticlesOnShow, statementOfThePool) {
    const auto statement = [this] { return hub().articlePanes->PoolStatement(); };
    EXPECT_EQ(statement(),
              u"SELECT * FROM ARTIKEL WHERE ([Absender-Schlüssel] Like '*') ORDER BY [Artikel-Schlüssel];"_s);
    browser->setWorkgroupFilter(u"IN(3,7)"_s);
    browser->setFilter(acbPaneArticlePool, u"[Artikelname] Like 'A*'"_s);
    tick(u"KLVArt_Active"_s);
    EXPECT_EQ(statement(), u"SELECT * FROM ARTIKEL WHERE ([Artikelname] Like 'A*' AND [Absender-Schlüssel] IN(3,7) AND "
                           "[Aktiv]=-1) ORDER BY [Artikel-Schlüssel];"_s);
    tick(u"KLVArt_InActive"_s);
    EXPECT_TRUE(statement().contains(u"[Aktiv]=-1 AND [Aktiv]=0)"_s));
}

TEST_F(ArticlesOnShow, statementOfTheUnassignedArticles) {
    tick(u"KLVArt_UnCategorized"_s);
    tick(u"KLVArt_InActive"_s);
    browser->setFilter(acbPaneArticlePool, u"[Artikelname] Like 'A*'"_s);
    const QString statement = hub().articlePanes->PoolStatement();
    EXPECT_TRUE(statement.contains(u"WHERE (True AND ((ARTKAT.[Artikel-Schlüssel] Is Null) AND "
                                   "(ARTIKEL.[Absender-Schlüssel] Like '*') AND [Aktiv]=0 AND "
                                   "[Artikelname] Like 'A*'))"_s))
        << statement.toStdString();
}

TEST_F(ArticlesOnShow, theTicksNarrowThePool) {
    catalogue.addArticle(30, u"Übrig"_s);
    setActive(7, u"0"_s);
    tick(u"KLVArt_UnCategorized"_s);
    browser->Populate();
    EXPECT_EQ(textsOf(pool()), QStringList{u"00030"_s});
    tick(u"KLVArt_UnCategorized"_s, false);
    tick(u"KLVArt_InActive"_s);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(textsOf(pool()), QStringList{u"00007"_s});
    tick(u"KLVArt_Active"_s);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(textsOf(pool()), QStringList());
    tick(u"KLVArt_InActive"_s, false);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00012"_s, u"00030"_s, u"04711"_s}));
}

TEST_F(ArticlesOnShow, theWorkgroupNarrowsThePoolAndNotTheList) {
    catalogue.run(u"UPDATE ARTIKEL SET \"Absender-Schlüssel\" = 7 WHERE \"Artikel-Schlüssel\" = 12"_s);
    browser->setWorkgroupFilter(u"IN(1)"_s);
    browser->Populate();
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00007"_s, u"04711"_s}));
    EXPECT_EQ(textsOf(list()), (QStringList{u"001"_s, u"002"_s}));
    tick(u"KLVArt_UnCategorized"_s);
    catalogue.addArticle(30, u"Übrig"_s);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(textsOf(pool()), QStringList{u"00030"_s});
}

TEST_F(ArticlesOnShow, aFilterOfThePaneNarrowsIt) {
    browser->Populate();
    browser->setFilter(acbPaneArticleList, u"[Artikelname] Like 's*'"_s);
    EXPECT_EQ(list().ListItems().Count(), 2) << "at the next read";
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(textsOf(list()), QStringList{u"001"_s});
    browser->setFilter(acbPaneArticlePool, u"[Artikel-Schlüssel]>10"_s);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00012"_s, u"04711"_s}));
}

TEST_F(ArticlesOnShow, aFilterThatTheDatabaseRejectsIsReportedAndEmptiesThePane) {
    browser->Populate();
    for (const auto& [filter, number] : {std::pair{u"[Aktiv]="_s, 3075}, {u"[Unbekannt]=1"_s, 3061}}) {
        browser->setFilter(acbPaneArticleList, filter);
        browser->setFilter(acbPaneArticlePool, filter);
        browser->RefreshPane(acbPaneArticleList);
        browser->RefreshPane(acbPaneArticlePool);
        EXPECT_EQ(takeReports(), (QStringList{u"PopulateLV: %1"_s.arg(number), u"PopulateLVArt: %1"_s.arg(number)}));
        EXPECT_EQ(list().ListItems().Count(), 0);
        EXPECT_EQ(pool().ListItems().Count(), 0);
        EXPECT_TRUE(list().isVisibleTo(browser.get()));
        EXPECT_TRUE(pool().isVisibleTo(browser.get()));
        EXPECT_EQ(screen().MousePointer(), vbDefault);
    }
    browser->setFilter(acbPaneArticleList, {});
    browser->setFilter(acbPaneArticlePool, {});
    browser->Populate();
    EXPECT_EQ(list().ListItems().Count(), 2);
    EXPECT_EQ(pool().ListItems().Count(), 3);
}

TEST_F(ArticlesOnShow, aColumnOfBothTablesNeedsItsTablesName) {
    browser->setFilter(acbPaneArticleList, u"[LetzteÄnderung] Is Null"_s);
    browser->Populate();
    EXPECT_EQ(takeReports(), QStringList{u"PopulateLV: 3079"_s});
    browser->setFilter(acbPaneArticleList, u"ARTKAT.[LetzteÄnderung] Is Null"_s);
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticlesOnShow, aListThatIsOffIsNotRead) {
    browser->Populate();
    browser->setShowArticleList(false);
    select(50);
    EXPECT_EQ(textsOf(list()), (QStringList{u"001"_s, u"002"_s}));
    EXPECT_EQ(list().ListItems().Item(1)->Tag(), Variant(1)) << "rows of the category before";
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(list().ListItems().Item(1)->Tag(), Variant(1));
}

TEST_F(ArticlesOnShow, aPoolThatIsOffIsNotRead) {
    browser->setShowArticlePool(false);
    browser->Populate();
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(pool().ListItems().Count(), 0);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 0);
}

TEST_F(ArticlesOnShow, aPoolWithoutRowsKeepsItsSelectionAndPanel) {
    browser->Populate();
    browser->setFilter(acbPaneArticlePool, u"False"_s);
    events.take();
    EXPECT_FALSE(hub().articlePanes->PopulateLVArt(true));
    EXPECT_EQ(pool().ListItems().Count(), 0);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 7);
    EXPECT_EQ(panel(u"LVArt"_s), u"3 Artikel / 1 ausgewählt"_s);
    EXPECT_EQ(events.take(), QStringList());
    browser->setFilter(acbPaneArticlePool, {});
    EXPECT_TRUE(hub().articlePanes->PopulateLVArt(true));
}

TEST_F(ArticlesOnShow, thePoolCountsOnTheProgressBar) {
    browser->Populate();
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(constituent<ProgressBar>(u"PB"_s).Max(), 3);
    EXPECT_EQ(constituent<ProgressBar>(u"PB"_s).Value(), 3);
}

TEST_F(ArticlesOnShow, theProgressDisplayNamesWhatIsRead) {
    QStringList texts;
    pump.whenServed = [&] {
        const auto& label = constituent<QLabel>(u"lblStatus"_s);
        if (constituent<ProgressBar>(u"PB"_s).isVisibleTo(browser.get()) && !texts.contains(label.text()))
            texts.append(label.text());
    };
    browser->Populate();
    EXPECT_EQ(texts, (QStringList{u"Artikel einlesen ..."_s, u"Kategorien einlesen ..."_s}));
}

TEST_F(ArticlesOnShow, aFillingPaneIsNotDrawn) {
    struct Paints : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint;
            return false;
        }
        int count = 0;
    } paints;
    browser->show();
    browser->Populate();
    QCoreApplication::processEvents();
    int changes = 0;
    for (const ListView* view : {&pool(), &list()}) {
        view->viewport()->installEventFilter(&paints);
        QObject::connect(view->model(), &QAbstractItemModel::rowsInserted, [&] { ++changes; });
        QObject::connect(view->model(), &QAbstractItemModel::dataChanged, [&] { ++changes; });
    }
    browser->RefreshPane(acbPaneArticlePool);
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(changes, 0) << "the view hears of all rows at once";
    EXPECT_EQ(paints.count, 0);
    QCoreApplication::processEvents();
    EXPECT_GT(paints.count, 0);
}

TEST_F(ArticlesOnShow, aClearedListSelectsNothing) {
    browser->Populate();
    events.take();
    hub().articlePanes->ClearArticleList();
    EXPECT_EQ(list().ListItems().Count(), 0);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 0);
    EXPECT_EQ(events.take(), QStringList{u"ItemSelected(0, 1)"_s});
}

TEST_F(ArticlesOnShow, aDoubledAssignmentStopsTheListWithAReport) {
    catalogue.run(u"DROP TABLE ARTKAT;"
                  "CREATE TABLE ARTKAT (ArtKatID INTEGER, \"Artikel-Schlüssel\" INTEGER, "
                  "\"Kategorie-Schlüssel\" INTEGER, \"Order\" INTEGER, \"LetzteÄnderung\" DATETIME);"
                  "INSERT INTO ARTKAT VALUES (1, 12, 41, 1, NULL), (1, 7, 41, 2, NULL);"_s);
    browser->setSelected(acbPaneCategoryTree, 41);
    hub().categoryTree->X_PopulateTV(false);
    EXPECT_EQ(takeReports().first(), u"PopulateLV: 35602"_s);
    EXPECT_TRUE(list().isVisibleTo(browser.get()));
}

TEST_F(EmptyShop, nothingToShow) {
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(panel(u"LV"_s), QString());
    EXPECT_EQ(panel(u"LVArt"_s), QString());
    EXPECT_EQ(events.take(), QStringList());
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(takeReports(), QStringList());
}
