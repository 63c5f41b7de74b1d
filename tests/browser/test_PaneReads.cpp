// What the Show properties read when they turn a pane on.
#include "browser/BrowserHost.h"
#include "controls/Extender.h"

using namespace mkl;

namespace {

class PaneReads : public BrowserHost {
protected:
    PaneReads()
        : BrowserHost(u"41 Schrauben: 12 Senkkopf, 4711 Linse\n50 Werkzeug: 7 Ahle"_s) {}

    void populateWithout(bool pool, bool list) {
        browser->setShowArticlePool(!pool);
        browser->setShowArticleList(!list);
        browser->Populate();
        events.take();
    }
};

} // namespace

TEST_F(PaneReads, turningTheListOnReadsItsCategory) {
    populateWithout(false, true);
    browser->setSelected(acbPaneCategoryTree, 50);
    EXPECT_EQ(list().ListItems().Count(), 0);
    browser->setShowArticleList(true);
    EXPECT_EQ(rowsOf(list()), QStringList{u"A3|3|001|00007|Ahle|On"_s});
    EXPECT_EQ(panel(u"LV"_s), u"1 Artikel in Kategorie 'Werkzeug' (Kat-Nr. 50)"_s);
    EXPECT_TRUE(Visible(list()));
    EXPECT_EQ(events.take(), QStringList{u"ItemClick(A-50, 50, 2)"_s}) << "of the node alone";
}

TEST_F(PaneReads, turningThePoolOnReadsAndSelects) {
    populateWithout(true, false);
    browser->setShowArticlePool(true);
    EXPECT_EQ(pool().ListItems().Count(), 3);
    EXPECT_TRUE(Visible(pool()));
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(7, 0)"_s, u"ItemClick(A7, 7, 0)"_s}));
    EXPECT_EQ(panel(u"LVArt"_s), u"3 Artikel / 1 ausgewählt"_s);
}

TEST_F(PaneReads, onlyTurningOnReads) {
    browser->Populate();
    list().ListItems().Clear();
    pool().ListItems().Clear();
    browser->setShowArticleList(true);
    browser->setShowArticlePool(true);
    browser->setShowArticleList(false);
    browser->setShowArticlePool(false);
    EXPECT_EQ(list().ListItems().Count() + pool().ListItems().Count(), 0);
}

TEST_F(PaneReads, beforeTheFirstReadNothingIsRead) {
    browser->setBackend({});
    for (const bool show : {false, true}) {
        browser->setShowArticleList(show);
        browser->setShowArticlePool(show);
        browser->setShowStatusBar(show);
    }
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(PaneReads, theListIsOnEvenIfItsReadFailed) {
    populateWithout(false, true);
    browser->setFilter(acbPaneArticleList, u"[Unbekannt]=1"_s);
    browser->setShowArticleList(true);
    EXPECT_EQ(takeReports(), QStringList{u"PopulateLV: 3061"_s});
    EXPECT_TRUE(browser->ShowArticleList());
    EXPECT_TRUE(Visible(list()));
}

TEST_F(PaneReads, whatIsTurnedOnIsReadWhileStillOff) {
    populateWithout(true, false);
    QList<bool> visible;
    QObject::connect(browser.get(), &ArtCatBrowser::ItemSelected, [&] { visible.append(browser->ShowArticlePool()); });
    browser->setShowArticlePool(true);
    EXPECT_EQ(visible, QList<bool>{false});
}
