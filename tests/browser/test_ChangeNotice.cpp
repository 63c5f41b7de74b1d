// The line that says that others have changed the catalogue.
#include "browser/BrowserHost.h"
#include "browser/DragHost.h"
#include "controls/NoticeBar.h"
#include "support/ScriptedForms.h"

#include <QAccessible>
#include <QTest>

using namespace mkl;

namespace {

const QString picture = u"41 Schrauben: 1 A, 2 B\n 411 Holz: 2 B\n50 Werkzeug"_s;

class ChangeNoticeTest : public BrowserHost {
protected:
    ChangeNoticeTest()
        : BrowserHost(picture) {
        browser->setChangeNotice(true);
        browser->Populate();
        browser->show();
        browser->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(browser.get()));
        timer().setInterval(600000); // a test does not wait
        tick();
    }

    NoticeBar& bar() const { return constituent<NoticeBar>(u"Notice"_s); }
    LinkButton& link() const { return constituent<LinkButton>(u"NoticeAction"_s); }
    IntervalTimer& timer() const { return *browser->findChild<IntervalTimer*>(u"NoticeTimer"_s); }
    void tick() const { timer().tick(); }
    /// A server tells of what others have stored a moment later.
    void tickUntilShown() const {
        EXPECT_TRUE(QTest::qWaitFor([this] {
            tick();
            return bar().isVisible();
        }));
    }
    void rename(Long category, const QString& name) const {
        other_->Execute(
            u"UPDATE [ARTIKEL/KATEGORIEN] SET Kategoriename='%1' WHERE [Kategorie-Schlüssel]=%2"_s.arg(name).arg(
                category),
            dao::dbFailOnError);
    }
    void othersWrite() const {
        rename(50, u"Geräte"_s);
        tickUntilShown();
    }

    Ref<dao::Workspace> others_ = dao::DBEngine::CreateWorkspace();
    Ref<dao::Database> other_ = others_->OpenDatabase(catalogue.file());
};

} // namespace

TEST_F(ChangeNoticeTest, comesWhenOthersHaveStoredSomething) {
    EXPECT_FALSE(bar().isVisible());
    othersWrite();
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(bar().Text(), u"Daten wurden geändert"_s);
    EXPECT_EQ(bar().Action(), u"Aktualisieren"_s);
    EXPECT_TRUE(node(50)->Text().endsWith(u"Werkzeug"_s)); // nothing jumps
}

TEST_F(ChangeNoticeTest, theLinkReadsAgainAndKeepsTheSelection) {
    browser->setSelected(acbPaneCategoryTree, 411);
    othersWrite();
    events.take();
    link().click();
    EXPECT_FALSE(bar().isVisible());
    EXPECT_TRUE(node(50)->Text().endsWith(u"Geräte"_s));
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 411);
    tick();
    EXPECT_FALSE(bar().isVisible());
    EXPECT_TRUE(takeReports().isEmpty());
}

TEST_F(ChangeNoticeTest, nothingMovesAndNothingIsRaisedBeforeTheClick) {
    tree().setFocus();
    const auto geometries = [this] {
        QList<QRect> all;
        for (const QWidget* widget : browser->Controls())
            if (widget->isVisible() && widget != &bar()) all.append(widget->geometry());
        return all;
    };
    const QList<QRect> before = geometries();
    events.take();
    othersWrite();
    EXPECT_EQ(geometries(), before);
    EXPECT_TRUE(tree().hasFocus());
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(bar().geometry().bottomRight(), browser->rect().bottomRight());
    EXPECT_EQ(bar().height(), constituent<StatusBar>(u"SB"_s).height());
}

TEST_F(ChangeNoticeTest, noTextStandsBelowIt) {
    browser->setSelected(acbPaneCategoryTree, 41);
    othersWrite();
    const StatusPanel& last = constituent<StatusBar>(u"SB"_s).Panels(u"LV"_s);
    const auto edgeOf = [this](const QWidget& widget, int x) { return widget.mapTo(browser.get(), QPoint(x, 0)).x(); };
    EXPECT_LE(edgeOf(last, last.width()), bar().x());
    EXPECT_TRUE(last.Text().contains(u"Schrauben"_s));
    link().click();
    EXPECT_GT(edgeOf(last, last.width()), bar().x());
}

TEST_F(ChangeNoticeTest, followsTheSizeOfTheControl) {
    othersWrite();
    browser->resize(700, 420);
    EXPECT_EQ(bar().geometry().bottomRight(), browser->rect().bottomRight());
    browser->setShowStatusBar(false);
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(bar().geometry().bottomRight(), browser->rect().bottomRight());
}

TEST_F(ChangeNoticeTest, onesOwnWritesAreNoNews) {
    browser->setSelected(acbPaneCategoryTree, 41);
    hub().articleOrder->Cat_RenumberArticles(1, 1, false);
    catalogue.database()->Execute(u"UPDATE ARTIKEL SET Aktiv=0"_s, dao::dbFailOnError);
    tick();
    EXPECT_FALSE(bar().isVisible());
}

TEST_F(ChangeNoticeTest, populateOfTheHostTakesItAway) {
    othersWrite();
    browser->Populate();
    EXPECT_FALSE(bar().isVisible());
    rename(50, u"Neu"_s); // nobody has looked yet
    browser->Populate();
    tick();
    EXPECT_FALSE(bar().isVisible());
}

TEST_F(ChangeNoticeTest, staysUntilEveryPaneOnShowWasReadAgain) {
    othersWrite();
    browser->RefreshPane(acbPaneCategoryTree); // and the list with it
    EXPECT_TRUE(bar().isVisible());
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_FALSE(bar().isVisible());
    rename(50, u"Neu"_s);
    tickUntilShown();
    browser->setShowArticlePool(false);
    browser->RefreshPane(acbPaneCategoryTree);
    EXPECT_FALSE(bar().isVisible());
    browser->setShowArticlePool(true);
    ASSERT_EQ(pool().ListItems().Count(), 2);
    tickUntilShown(); // its rows are still those of before
}

TEST_F(ChangeNoticeTest, whatHappensDuringAReadIsNews) {
    pump.whenServed = [this] { pump.whenServed = nullptr, rename(41, u"Muttern"_s); };
    browser->RefreshPane(acbPaneArticlePool);
    tickUntilShown();
}

TEST_F(ChangeNoticeTest, waitsForTheEndOfAForm) {
    rename(50, u"Geräte"_s);
    QDialog form;
    form.setModal(true);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    tick();
    EXPECT_FALSE(bar().isVisible());
    form.close();
    tickUntilShown();
}

TEST_F(ChangeNoticeTest, waitsForTheEndOfATransaction) {
    rename(50, u"Geräte"_s);
    catalogue.workspace()->BeginTrans();
    tick();
    EXPECT_FALSE(bar().isVisible());
    catalogue.workspace()->Rollback();
    tickUntilShown();
}

TEST_F(ChangeNoticeTest, waitsForTheEndOfARead) {
    othersWrite();
    bool wasVisible = true;
    pump.whenServed = [&] {
        tick();
        if (constituent<ProgressBar>(u"PB"_s).isVisible()) wasVisible = bar().isVisible();
    };
    browser->RefreshPane(acbPaneArticlePool);
    pump.whenServed = nullptr;
    EXPECT_FALSE(wasVisible);
    EXPECT_TRUE(bar().isVisible()); // the tree was not read
}

TEST_F(ChangeNoticeTest, canBeReachedByKeysAndGivesTheFocusBack) {
    tree().setFocus();
    othersWrite();
    link().setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(link().hasFocus());
    EXPECT_EQ(browser->ActivePane(), acbPaneCategoryTree);
    QTest::keyClick(&link(), Qt::Key_Return);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_TRUE(tree().hasFocus());
    EXPECT_TRUE(node(50)->Text().endsWith(u"Geräte"_s));
    rename(50, u"Neu"_s);
    tickUntilShown();
    link().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&link(), Qt::Key_Space);
    EXPECT_FALSE(bar().isVisible());
}

TEST_F(ChangeNoticeTest, theTabKeyComesToItAndTheMouseTakesNoFocus) {
    othersWrite();
    list().setFocus();
    QTest::keyClick(browser->windowHandle(), Qt::Key_Tab);
    EXPECT_TRUE(link().hasFocus());
    list().setFocus();
    QTest::mouseClick(&link(), Qt::LeftButton);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_FALSE(link().hasFocus());
}

TEST_F(ChangeNoticeTest, isKnownToAssistiveTools) {
    othersWrite();
    QAccessibleInterface* const shown = QAccessible::queryAccessibleInterface(&link());
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->text(QAccessible::Name), u"Aktualisieren"_s);
    EXPECT_EQ(shown->text(QAccessible::Description), u"Daten wurden geändert"_s);
    EXPECT_EQ(shown->role(), QAccessible::Button);
    EXPECT_EQ(bar().accessibleName(), u"Daten wurden geändert"_s);
}

TEST_F(ChangeNoticeTest, offNothingLooks) {
    EXPECT_FALSE(ArtCatBrowser().changeNotice());
    othersWrite();
    browser->setChangeNotice(false);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_FALSE(timer().Enabled());
    rename(50, u"Neu"_s);
    browser->Populate();
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return catalogue.database()->takeChangedByOthers(); })); // it is still to be told
}

TEST_F(ChangeNoticeTest, ofAClosedCatalogueThereIsNoNews) {
    rename(50, u"Geräte"_s);
    catalogue.database()->Close();
    tick();
    EXPECT_FALSE(bar().isVisible());
    EXPECT_TRUE(takeReports().isEmpty());
}

TEST_F(ChangeNoticeTest, theHostMayCloseTheControlDuringTheRead) {
    othersWrite();
    pump.whenServed = [this] {
        pump.whenServed = nullptr;
        browser.reset();
    };
    link().click();
    EXPECT_FALSE(browser);
}

TEST(ChangeNotice, looksOnceASecond) {
    ArtCatBrowser browser;
    browser.setChangeNotice(true);
    const IntervalTimer& timer = *browser.findChild<IntervalTimer*>(u"NoticeTimer"_s);
    EXPECT_TRUE(timer.Enabled());
    EXPECT_EQ(timer.Interval(), 1000);
}
