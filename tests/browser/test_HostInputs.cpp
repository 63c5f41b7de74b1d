// Hosts that hand in nothing, something else or something closed, that change things meanwhile, or call back.
#include "browser/BrowserHost.h"

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse\n50 Werkzeug: 7 Ahle, 12 Senkkopf\n"_s;

class HostInputs : public BrowserHost {
protected:
    HostInputs()
        : BrowserHost(shop) {}

    void readAll() {
        for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree})
            browser->RefreshPane(pane);
    }
    void expectUsable() {
        EXPECT_EQ(browser->Populate(), 2);
        EXPECT_EQ(takeReports(), QStringList());
        EXPECT_EQ(pool().ListItems().Count(), 3);
        EXPECT_EQ(list().ListItems().Count(), 2);
        for (const ItemView* pane : std::initializer_list<const ItemView*>{&pool(), &list(), &tree()})
            EXPECT_TRUE(pane->isVisibleTo(browser.get()));
        EXPECT_EQ(screen().MousePointer(), vbDefault);
    }
};

} // namespace

TEST_F(HostInputs, withoutABackendEveryReadIsReported) {
    browser->setBackend({});
    readAll();
    EXPECT_EQ(takeReports(), (QStringList{u"PopulateLVArt: 91"_s, u"PopulateLV: 91"_s, u"X_PopulateTV: 91"_s}));
    browser->setBackend(catalogue.database());
    expectUsable();
}

TEST_F(HostInputs, aBackendTakenAwayBehindTheRead) {
    browser->Populate();
    browser->setBackend({});
    browser->RefreshItem(12, acbPaneArticlePool);
    browser->RefreshItem(1, acbPaneArticleList);
    browser->RefreshItem(41, acbPaneCategoryTree);
    const QStringList reports = takeReports();
    EXPECT_EQ(reports.size(), 3);
    EXPECT_EQ(QSet<QString>(reports.begin(), reports.end()), QSet<QString>{u"RefreshItem: 91"_s});
    browser->setBackend(catalogue.database());
    expectUsable();
}

TEST_F(HostInputs, aBackendThatTheHostClosed) {
    browser->Populate();
    catalogue.database()->Close();
    readAll();
    EXPECT_EQ(takeReports(), (QStringList{u"PopulateLVArt: 3420"_s, u"PopulateLV: 3420"_s, u"X_PopulateTV: 3420"_s}));
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(takeReports(), QStringList{u"Populate: 3420"_s});
    EXPECT_TRUE(tree().isVisibleTo(browser.get()));
}

TEST_F(HostInputs, anotherBackendShowsAtTheNextRead) {
    browser->Populate();
    const CatalogueFixture other(u"9 Anders: 3 Ding"_s);
    browser->setBackend(other.database());
    EXPECT_EQ(pool().ListItems().Count(), 3);
    EXPECT_EQ(browser->Populate(), 1);
    EXPECT_EQ(rowsOf(list()), QStringList{u"A1|1|001|03|Ding|On"_s});
    EXPECT_EQ(panel(u"TV"_s), u"1 Kategorien"_s);
    browser->setBackend({}); // the other file goes before the control
    browser.reset();
}

TEST_F(HostInputs, rowsThatVanishBetweenTwoReads) {
    browser->Populate();
    browser->setSelected(acbPaneCategoryTree, 50);
    events.take();
    catalogue.run(u"DELETE FROM ARTIKEL WHERE \"Artikel-Schlüssel\" = 7;"
                  "DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = 50"_s);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(12, 0)"_s, u"ItemClick(A12, 12, 0)"_s}));
    browser->RefreshPane(acbPaneCategoryTree);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(41, 2)"_s, u"ItemClick(A-41, 41, 2)"_s}));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(HostInputs, aTableThatAnotherProgramIsChanging) {
    browser->Populate();
    const Ref<dao::Workspace> other = dao::DBEngine::CreateWorkspace();
    const Ref<dao::Database> changing = other->OpenDatabase(catalogue.file());
    catalogue.workspace()->setBusyTimeout(0);
    other->BeginTrans();
    changing->Execute(u"UPDATE ARTIKEL SET Artikelname = 'neu'"_s, dao::dbFailOnError);
    readAll();
    EXPECT_EQ(takeReports(), QStringList()) << "reading shows what was committed";
    EXPECT_EQ(pool().ListItems().Item(1)->SubItems(1), u"Ahle"_s);
    EXPECT_FALSE(hub().articleActivation->LVActivate(12, acbPaneArticlePool, false));
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports[0].startsWith(u"LVActivate: 3"_s)) << reports[0].toStdString();
    EXPECT_EQ(poolRow(12)->SmallIcon(), u"On"_s);
    EXPECT_FALSE(browser->Edited());
    other->CommitTrans();
    EXPECT_TRUE(hub().articleActivation->LVActivate(12, acbPaneArticlePool, false));
    expectUsable();
    EXPECT_EQ(pool().ListItems().Item(1)->SubItems(1), u"neu"_s);
}

TEST_F(HostInputs, filtersAreNeverMoreThanOneCriterion) {
    browser->Populate();
    for (const QString& filter : {u"True; DELETE FROM ARTIKEL"_s, u"True) OR (True"_s,
                                  u"True UNION SELECT * FROM ARTIKEL"_s, u"True ORDER BY [Artikelname]"_s})
        for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList}) {
            browser->setFilter(pane, filter);
            browser->RefreshPane(pane);
            const QStringList reports = takeReports();
            ASSERT_EQ(reports.size(), 1) << filter.toStdString();
            EXPECT_TRUE(reports[0].startsWith(u"PopulateLV"_s) && reports[0].contains(u": 3"_s))
                << reports[0].toStdString();
            browser->setFilter(pane, {});
        }
    expectUsable();
}

TEST_F(HostInputs, aHandlerThatPopulatesAgain) {
    for (const auto signal : {0, 1, 2}) {
        browser.reset();
        makeBrowser();
        int depth = 0;
        const auto again = [&] {
            if (depth > 0) return;
            ++depth;
            browser->Populate();
        };
        if (signal == 0) QObject::connect(browser.get(), &ArtCatBrowser::ItemSelected, again);
        if (signal == 1) QObject::connect(browser.get(), &ArtCatBrowser::ItemClick, again);
        if (signal == 2) QObject::connect(browser.get(), &ArtCatBrowser::Resize, again);
        browser->Populate();
        browser->resize(1000, 500);
        EXPECT_EQ(takeReports(), QStringList()) << signal;
        EXPECT_EQ(tree().Nodes().Count(), 2) << signal;
        EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41) << signal;
        EXPECT_EQ(browser->Selected(acbPaneArticlePool), 7) << signal;
        EXPECT_EQ(browser->Selected(acbPaneArticleList), 12) << signal;
        expectUsable();
    }
}

TEST_F(HostInputs, aHandlerThatEmptiesThePane) {
    QObject::connect(browser.get(), &ArtCatBrowser::ItemSelected, [this](Long, acbPanes pane) {
        if (pane == acbPaneArticlePool) pool().ListItems().Clear();
        if (pane == acbPaneCategoryTree) tree().Nodes().Clear();
        if (pane == acbPaneArticleList) list().ListItems().Clear();
    });
    browser->Populate();
    EXPECT_EQ(tree().Nodes().Count(), 0);
    QObject::disconnect(browser.get(), &ArtCatBrowser::ItemSelected, nullptr, nullptr);
    takeReports();
    expectUsable();
}

TEST_F(HostInputs, theControlLetsGoOfTheHostsObjects) {
    struct Helper final : SessionHelper {
        explicit Helper(bool& isGone)
            : gone(isGone) {}
        ~Helper() override { gone = true; }
        Ref<mkl::ReplicaInfo> ReplicaInfo() const override { return {}; }
        bool& gone;
    };
    bool gone = false;
    browser->setHelper(makeRef<Helper>(gone));
    browser->Populate();
    browser->setSelected(acbPaneArticleList, 4711);
    events.take();
    EXPECT_FALSE(gone);
    const Ref<Node> node = tree().SelectedItem();
    const auto kept = hub().shared_from_this();
    browser.reset();
    EXPECT_TRUE(gone);
    EXPECT_FALSE(kept->state.Backend);
    EXPECT_FALSE(kept->state.Workspace);
    EXPECT_FALSE(kept->state.ArtKatTable);
    EXPECT_FALSE(kept->functionLibrary);
    EXPECT_FALSE(kept->m_Finder);
    EXPECT_FALSE(kept->errorFrame.handler());
    EXPECT_EQ(events.take(), QStringList()) << "the end raises nothing";
    EXPECT_EQ(node->Key(), u"A-41"_s) << "what a host holds lives on";
}
