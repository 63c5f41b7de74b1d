// A row or node is shown anew, in its place, with its twin in the other list.
#include "browser/BrowserHost.h"

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse\n"
                     "50 Werkzeug: 7 Ahle, 12 Senkkopf\n"_s;

class RowRefreshTest : public BrowserHost {
protected:
    RowRefreshTest()
        : BrowserHost(shop) {
        browser->Populate();
        events.take();
    }

    void changeArticle(Long article, const QString& assignments) const {
        catalogue.run(u"UPDATE ARTIKEL SET %1 WHERE \"Artikel-Schlüssel\" = %2"_s.arg(assignments).arg(article));
    }
    void changeCategory(Long category, const QString& assignments) const {
        catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET %1 WHERE \"Kategorie-Schlüssel\" = %2"_s.arg(assignments)
                          .arg(category));
    }
    void removeArticle(Long article) const {
        catalogue.run(u"DELETE FROM ARTIKEL WHERE \"Artikel-Schlüssel\" = %1"_s.arg(article));
    }
    QString poolLine(Long article) const { return rowsOf(pool()).filter(u"A%1|"_s.arg(article)).value(0); }
    QString listLine(Long assignment) const { return rowsOf(list()).filter(u"A%1|"_s.arg(assignment)).value(0); }
};

} // namespace

TEST_F(RowRefreshTest, aRowOfThePoolAndItsTwin) {
    changeArticle(12, u"Artikelname = 'Zylinder', Aktiv = 0"_s);
    browser->RefreshItem(12, acbPaneArticlePool);
    EXPECT_EQ(poolLine(12), u"A12|12|00012|Zylinder|Off"_s);
    EXPECT_EQ(listLine(1), u"A1|1|001|00012|Zylinder|Off"_s);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(RowRefreshTest, aRowOfTheListByItsAssignment) {
    changeArticle(4711, u"Artikelname = 'Linsenkopf', Aktiv = NULL"_s);
    browser->RefreshItem(2, acbPaneArticleList);
    EXPECT_EQ(listLine(2), u"A2|2|002|04711|Linsenkopf|Off"_s);
    EXPECT_EQ(poolLine(4711), u"A4711|4711|04711|Linsenkopf|Off"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(RowRefreshTest, aRowOfTheListByItsArticle) {
    changeArticle(4711, u"Artikelname = 'Linsenkopf'"_s);
    browser->RefreshItem(4711, acbPaneArticleList);
    EXPECT_EQ(listLine(2), u"A2|2|002|04711|Linsenkopf|On"_s);
    EXPECT_EQ(poolLine(4711), u"A4711|4711|04711|Linsenkopf|On"_s);
}

TEST_F(RowRefreshTest, anAssignmentCountsBeforeAnArticleOfTheSameNumber) {
    browser->setSelected(acbPaneCategoryTree, 50); // assignments 3 and 4
    catalogue.addArticle(4, u"Vier"_s);
    catalogue.assign(4, 50, 3);
    browser->RefreshPane(acbPaneArticleList);
    changeArticle(12, u"Artikelname = 'Zwölf'"_s);
    changeArticle(4, u"Artikelname = 'Neu'"_s);
    browser->RefreshItem(4, acbPaneArticleList);
    EXPECT_EQ(listLine(4), u"A4|4|002|00012|Zwölf|On"_s);
    EXPECT_EQ(listLine(5), u"A5|5|003|00004|Vier|On"_s);
}

TEST_F(RowRefreshTest, anArticleThatTheListDoesNotShowIsTheCallersError) {
    EXPECT_EQ(errorOf([&] { browser->RefreshItem(7, acbPaneArticleList); }), 35601);
    EXPECT_EQ(errorOf([&] { browser->RefreshItem(-1, acbPaneArticleList); }), 35601);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(RowRefreshTest, aKeyThatPoolOrTreeDoNotShowIsReported) {
    browser->RefreshItem(99, acbPaneArticlePool);
    browser->RefreshItem(99, acbPaneCategoryTree);
    EXPECT_EQ(takeReports(), (QStringList{u"RefreshItem: 35601"_s, u"RefreshItem: 35601"_s}));
    EXPECT_FALSE(hub().state.RefreshActive);
}

TEST_F(RowRefreshTest, aVanishedArticleIsToldAndItsRowsStay) {
    removeArticle(12);
    browser->RefreshItem(12, acbPaneArticlePool);
    EXPECT_EQ(takeReports(), (QStringList{u"-1072"_s, u"-1072"_s})) << "of the row and of its twin";
    EXPECT_EQ(poolLine(12), u"A12|12|00012|Senkkopf|On"_s);
    EXPECT_EQ(listLine(1), u"A1|1|001|00012|Senkkopf|On"_s);
    EXPECT_FALSE(hub().state.RefreshActive);
}

TEST_F(RowRefreshTest, aVanishedAssignmentIsTold) {
    catalogue.run(u"DELETE FROM ARTKAT WHERE ArtKatID = 1"_s);
    browser->RefreshItem(1, acbPaneArticleList);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(listLine(1), u"A1|1|001|00012|Senkkopf|On"_s);
}

TEST_F(RowRefreshTest, aRowThatNoLongerPassesTheFilterCountsAsVanished) {
    browser->setFilter(acbPaneArticleList, u"[Order]>1"_s);
    browser->RefreshItem(1, acbPaneArticleList);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
}

TEST_F(RowRefreshTest, aVanishedCategoryIsTold) {
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = 50"_s);
    browser->RefreshItem(50, acbPaneCategoryTree);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(node(50)->Text(), u"002 - Werkzeug"_s);
}

TEST_F(RowRefreshTest, anEmptyTableIsPassedOverInSilence) {
    catalogue.run(u"DELETE FROM ARTIKEL; DELETE FROM ARTKAT; DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
    browser->RefreshItem(12, acbPaneArticlePool);
    browser->RefreshItem(1, acbPaneArticleList);
    browser->RefreshItem(50, acbPaneCategoryTree);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(RowRefreshTest, aNewPositionShowsAndTheRowStaysWhereItIs) {
    catalogue.run(u"UPDATE ARTKAT SET \"Order\" = 9 WHERE ArtKatID = 1"_s);
    browser->RefreshItem(1, acbPaneArticleList);
    EXPECT_EQ(textsOf(list()), (QStringList{u"009"_s, u"002"_s}));
    browser->RefreshPane(acbPaneArticleList);
    EXPECT_EQ(textsOf(list()), (QStringList{u"002"_s, u"009"_s}));
}

TEST_F(RowRefreshTest, aNodeKeepsItsPlaceAmongItsSiblings) {
    changeCategory(41, u"\"Order\" = 9, Kategoriename = 'Schrauben - neu', Aktiv = 0"_s);
    node(41)->setExpanded(true);
    browser->RefreshItem(41, acbPaneCategoryTree);
    EXPECT_EQ(treeLines(), (QStringList{u"009 - Schrauben - neu"_s, u"002 - Werkzeug"_s}));
    EXPECT_EQ(node(41)->Image(), node(41)->Expanded() ? u"OrdnerAufOff"_s : u"OrdnerZuOff"_s);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(RowRefreshTest, anOpenFolderStaysOpen) {
    catalogue.addCategory({.key = 42, .name = u"Holz"_s, .parent = 41});
    browser->RefreshPane(acbPaneCategoryTree);
    node(41)->setExpanded(true);
    changeCategory(41, u"Aktiv = 0"_s);
    browser->RefreshItem(41, acbPaneCategoryTree);
    EXPECT_EQ(node(41)->Image(), u"OrdnerAufOff"_s);
    EXPECT_TRUE(node(41)->Expanded());
}

TEST_F(RowRefreshTest, withTheListOffItsRowsStay) {
    browser->setShowArticleList(false);
    changeArticle(12, u"Artikelname = 'Zylinder'"_s);
    browser->RefreshItem(12, acbPaneArticlePool);
    EXPECT_EQ(poolLine(12), u"A12|12|00012|Zylinder|On"_s);
    EXPECT_EQ(listLine(1), u"A1|1|001|00012|Senkkopf|On"_s);
    EXPECT_EQ(errorOf([&] { browser->RefreshItem(99, acbPaneArticleList); }), 0) << "nothing happens at all";
}

TEST_F(RowRefreshTest, withThePoolOffItsRowsStay) {
    browser->setShowArticlePool(false);
    changeArticle(12, u"Artikelname = 'Zylinder'"_s);
    browser->RefreshItem(99, acbPaneArticlePool);
    browser->RefreshItem(1, acbPaneArticleList);
    EXPECT_EQ(poolLine(12), u"A12|12|00012|Senkkopf|On"_s);
    EXPECT_EQ(listLine(1), u"A1|1|001|00012|Zylinder|On"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(RowRefreshTest, aTwinThatThePoolDoesNotShowIsReported) {
    browser->setFilter(acbPaneArticlePool, u"[Artikel-Schlüssel]<>12"_s);
    browser->RefreshPane(acbPaneArticlePool);
    browser->RefreshItem(1, acbPaneArticleList);
    EXPECT_EQ(takeReports(), QStringList{u"RefreshItem: 35601"_s});
    EXPECT_FALSE(hub().state.RefreshActive);
}

TEST_F(RowRefreshTest, emptyPanesAreLeftAlone) {
    pool().ListItems().Clear();
    list().ListItems().Clear();
    tree().Nodes().Clear();
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree})
        EXPECT_EQ(errorOf([&] { browser->RefreshItem(12, pane); }), 0);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(RowRefreshTest, withoutASelectedNodeTheListCannotBeReadAgain) {
    tree().setSelectedItem({});
    browser->RefreshItem(1, acbPaneArticleList);
    EXPECT_EQ(takeReports(), QStringList{u"RefreshItem: 91"_s});
}

TEST_F(RowRefreshTest, aLackingTableIsReportedAndTheRowStays) {
    catalogue.run(u"DROP TABLE ARTIKEL"_s);
    browser->RefreshItem(12, acbPaneArticlePool);
    EXPECT_EQ(takeReports().first(), u"RefreshItem: 3078"_s);
    EXPECT_EQ(poolLine(12), u"A12|12|00012|Senkkopf|On"_s);
}

TEST_F(RowRefreshTest, theControlMayBeDeletedWhileTheUserReadsTheReport) {
    struct Deleting final : ErrorHandler {
        void ReportProcError(const QString&) override { gone(); }
        void ReportError(Long, const QString&, const QString&, const QString&, Long, const Variant&,
                         const Variant&) override {
            gone();
        }
        std::function<void()> gone;
    };
    const QList<std::function<void()>> calls{
        [this] { browser->RefreshItem(12, acbPaneArticlePool); },
        [this] { browser->RefreshItem(1, acbPaneArticleList); },
        [this] { browser->RefreshItem(50, acbPaneCategoryTree); },
        [this] { browser->RefreshPane(acbPaneArticlePool); },
        [this] { browser->RefreshPane(acbPaneArticleList); },
        [this] { browser->RefreshPane(acbPaneCategoryTree); },
        [this] { browser->setSelected(acbPaneCategoryTree, 41); },
        [this] {
            const auto kept = hub().shared_from_this();
            kept->articleActivation->LVActivate(12, acbPaneArticlePool, false);
        },
    };
    for (const auto& call : calls) {
        browser.reset();
        const auto handler = makeRef<Deleting>();
        const ErrorHandlerFactory former = setErrorHandlerFactory([handler] { return handler; });
        makeBrowser();
        setErrorHandlerFactory(former);
        browser->Populate();
        const std::weak_ptr<ArtCatBrowserPrivate> gone = hub().weak_from_this();
        handler->gone = [this] { browser.reset(); };
        catalogue.run(u"ALTER TABLE ARTIKEL RENAME TO fort; ALTER TABLE \"ARTIKEL/KATEGORIEN\" RENAME TO auchfort"_s);
        call();
        catalogue.run(u"ALTER TABLE fort RENAME TO ARTIKEL; ALTER TABLE auchfort RENAME TO \"ARTIKEL/KATEGORIEN\""_s);
        EXPECT_EQ(browser, nullptr);
        EXPECT_TRUE(gone.expired());
        EXPECT_EQ(screen().MousePointer(), vbDefault);
    }
}
