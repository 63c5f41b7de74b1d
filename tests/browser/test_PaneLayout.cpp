// The panes of a control on show: sizes, shares, splitters, switches. 15 twips are a pixel.
#include "browser/BrowserHost.h"
#include "browser/PaneGeometry.h"
#include "controls/Extender.h"
#include "controls/PictureBox.h"

#include <QApplication>
#include <QTest>

#include <limits>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class PaneLayoutTest : public BrowserHost {
protected:
    PaneLayoutTest()
        : BrowserHost(u"41 Schrauben"_s) {
        showAt(9000);
        events.record(browser.get(), &ArtCatBrowser::Resize, u"Resize"_s);
    }
    ~PaneLayoutTest() override { screen().setMousePointer(vbDefault); }

    void showAt(Long twips) {
        browser->resize(twips / 15, 500);
        browser->show();
        QApplication::processEvents();
    }
    void resizeTo(Long twips) { browser->resize(twips / 15, 500); }

    const ListView& pool() const { return *browser->ArticlePoolListView(); }
    const ListView& list() const { return *browser->ArticleListView(); }
    PictureBox& splitterArt() const { return constituent<PictureBox>(u"picSplitterArt"_s); }
    PictureBox& splitter() const { return constituent<PictureBox>(u"picSplitter"_s); }
    StatusBar& statusBar() const { return constituent<StatusBar>(u"SB"_s); }

    /// Widths of pool, tree and list as they stand.
    PaneWidths widths() const {
        return {Long(Visible(pool()) ? Width(pool()) : 0), Long(Width(tree())),
                Long(Visible(list()) ? Width(list()) : 0)};
    }

    /// Draws a splitter with the left button, in steps, by so many twips.
    static void draw(PictureBox& splitter, Long twips, int steps = 4) {
        QTest::mousePress(&splitter, Qt::LeftButton, {}, QPoint(0, 100));
        const QPoint from = splitter.mapToGlobal(QPoint(0, 100));
        for (int step = 1; step <= steps; ++step)
            moveTo(splitter, from + QPoint(twips / 15 * step / steps, 0), Qt::LeftButton);
        QTest::mouseRelease(&splitter, Qt::LeftButton, {}, QPoint(0, 100));
    }
    static void moveTo(PictureBox& splitter, const QPoint& onScreen, Qt::MouseButtons buttons) {
        QMouseEvent move(QEvent::MouseMove, splitter.mapFromGlobal(onScreen), onScreen, Qt::NoButton, buttons, {});
        QApplication::sendEvent(&splitter, &move);
    }
};

} // namespace

TEST_F(PaneLayoutTest, panesStandFromLeftToRight) {
    EXPECT_EQ(widths(), (PaneWidths{3000, 3000, 2940}));
    EXPECT_EQ(Left(pool()), 0);
    EXPECT_EQ(Left(splitterArt()), 3000);
    EXPECT_EQ(Left(tree()), 3030);
    EXPECT_EQ(Left(splitter()), 6030);
    EXPECT_EQ(Left(list()), 6060);
    EXPECT_EQ(browser->LeftCategoryTreeView(), 3000);
    EXPECT_EQ(browser->LeftArticleListView(), 6030);
}

TEST_F(PaneLayoutTest, heightsLeaveRoomForTheStatusBar) {
    const Single above = browser->ScaleHeight() - Height(statusBar());
    for (const QWidget* pane : {static_cast<const QWidget*>(&pool()), static_cast<const QWidget*>(&tree()),
                                static_cast<const QWidget*>(&list())}) {
        EXPECT_EQ(Top(*pane), 0);
        EXPECT_EQ(Height(*pane), above);
    }
    EXPECT_EQ(Top(statusBar()), above);
    for (const PictureBox* each : {&splitter(), &splitterArt()}) {
        EXPECT_EQ(Top(*each), -50);
        EXPECT_EQ(Width(*each), 30);
        EXPECT_EQ(Height(*each), browser->ScaleHeight() + 100);
    }
    browser->setShowStatusBar(false);
    EXPECT_EQ(Height(tree()), browser->ScaleHeight());
    EXPECT_FALSE(Visible(statusBar()));
    browser->setShowStatusBar(true);
    EXPECT_EQ(Height(tree()), above);
}

TEST_F(PaneLayoutTest, statusPanelsHaveTheWidthsOfTheirPanes) {
    draw(splitter(), 900);
    EXPECT_EQ(statusBar().Panels(u"LVArt"_s).Width(), 3000);
    EXPECT_EQ(statusBar().Panels(u"TV"_s).Width(), 3900);
}

TEST_F(PaneLayoutTest, theListTakesWhatAResizeGives) {
    resizeTo(12000);
    EXPECT_EQ(widths(), (PaneWidths{3000, 3000, 5940}));
    EXPECT_EQ(events.take(), QStringList{u"Resize(3000, 6030)"_s});
}

TEST_F(PaneLayoutTest, aShrinkingControlPushesTheSplitterIn) {
    resizeTo(6060); // left edge and width of the splitter reach the edge exactly
    EXPECT_EQ(browser->LeftArticleListView(), 6030);
    EXPECT_EQ(widths(), (PaneWidths{3000, 3000, 0}));
    resizeTo(5010);
    EXPECT_EQ(browser->LeftArticleListView(), 4980);
    EXPECT_EQ(widths(), (PaneWidths{3000, 1950, 0}));
    resizeTo(9000); // it stays where it was pushed
    EXPECT_EQ(widths(), (PaneWidths{3000, 1950, 3990}));
}

TEST_F(PaneLayoutTest, aSmallControlGrows) {
    resizeTo(3000);
    EXPECT_EQ(browser->ScaleWidth(), 4000);
    EXPECT_EQ(Width(*browser), 4000);
    EXPECT_EQ(browser->width(), 267);
    EXPECT_EQ(browser->LeftArticleListView(), 3970);
    const QStringList raised = events.take();
    ASSERT_FALSE(raised.isEmpty());
    EXPECT_EQ(raised.last(), u"Resize(3000, 3970)"_s);
}

// The list takes what the growth gives, as with any other resize.
TEST_F(PaneLayoutTest, aControlThatShowsTooSmallGrowsAtOnce) {
    makeBrowser();
    showAt(3000);
    EXPECT_EQ(browser->ScaleWidth(), 4000);
    EXPECT_EQ(widths(), (PaneWidths{1000, 1000, 1940}));
}

TEST_F(PaneLayoutTest, noLayoutBelowTheSmallestWidth) {
    resizeTo(45);
    EXPECT_EQ(browser->width(), 3);
    EXPECT_EQ(widths(), (PaneWidths{3000, 3000, 2940}));
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(PaneLayoutTest, theFirstSizeIsSharedOutEvenly) {
    makeBrowser();
    showAt(15000);
    EXPECT_EQ(widths(), (PaneWidths{5000, 5000, 4940}));
}

TEST_F(PaneLayoutTest, sharesThatTheHostSetBeforeTheFirstShowStay) {
    makeBrowser();
    browser->resize(600, 500);
    browser->setPaneWidth(acbPaneArticlePool, 20);
    browser->setPaneWidth(acbPaneCategoryTree, 50);
    browser->PaneResize();
    showAt(9000);
    EXPECT_EQ(widths(), (PaneWidths{1788, 4470, 2682}));
}

TEST_F(PaneLayoutTest, sharesShowAfterPaneResize) {
    browser->setPaneWidth(acbPaneArticlePool, 50);
    EXPECT_EQ(Width(pool()), 3000);
    EXPECT_DOUBLE_EQ(browser->PaneWidth(acbPaneArticlePool), 50);
    browser->setPaneWidth(acbPaneCategoryTree, 25);
    browser->PaneResize();
    EXPECT_EQ(widths(), (PaneWidths{4470, 2235, 2235}));
    EXPECT_DOUBLE_EQ(browser->PaneWidth(acbPaneArticleList), 25);
    EXPECT_EQ(events.take(), QStringList{u"Resize(4470, 6735)"_s});
}

TEST_F(PaneLayoutTest, aShareWithoutPaneResizeIsLostAtTheNextPass) {
    browser->setPaneWidth(acbPaneArticlePool, 50);
    resizeTo(9015);
    EXPECT_DOUBLE_EQ(browser->PaneWidth(acbPaneArticlePool), 100.0 / 8955 * 3000);
    EXPECT_EQ(Width(pool()), 3000);
}

TEST_F(PaneLayoutTest, theListTakesUpWhatSharesLeave) {
    browser->setPaneWidth(acbPaneArticleList, 1);
    browser->PaneResize();
    EXPECT_EQ(widths(), (PaneWidths{3000, 3000, 2940}));
}

TEST_F(PaneLayoutTest, sharesAboveTheWholePushTheListOutOfSight) {
    browser->setPaneWidth(acbPaneArticlePool, 60);
    browser->setPaneWidth(acbPaneCategoryTree, 60);
    browser->PaneResize();
    EXPECT_EQ(Width(list()), 0);
    EXPECT_EQ(browser->LeftArticleListView(), 8970);
    EXPECT_EQ(browser->PaneWidth(acbPaneArticleList), 0);
}

TEST_F(PaneLayoutTest, oddShares) {
    browser->setPaneWidth(acbPaneArticlePool, 0);
    browser->setPaneWidth(acbPaneCategoryTree, -10);
    browser->PaneResize();
    EXPECT_EQ(Width(pool()), 0);
    EXPECT_EQ(Width(tree()), -894); // shows as none
    EXPECT_EQ(tree().width(), 0);
    EXPECT_EQ(errorOf([&] { browser->setPaneWidth(acbPaneArticlePool, std::numeric_limits<double>::quiet_NaN()); }), 6);
    EXPECT_EQ(browser->PaneWidth(acbPaneArticlePool), 0);
    for (const Long number : {-1, 3}) {
        const auto pane = static_cast<acbPanes>(number);
        browser->setPaneWidth(pane, 50);
        EXPECT_EQ(browser->PaneWidth(pane), 0);
    }
}

TEST_F(PaneLayoutTest, theListSplitterFollowsWithinItsLimits) {
    draw(splitter(), 600);
    EXPECT_EQ(widths(), (PaneWidths{3000, 3600, 2340}));
    draw(splitter(), 3000, 200); // on and on: it keeps the last place it was allowed
    EXPECT_EQ(browser->LeftArticleListView(), 6990);
    EXPECT_EQ(Width(list()), 1980);
    draw(splitter(), -6000, 400);
    EXPECT_EQ(browser->LeftArticleListView(), 5010);
    EXPECT_EQ(Width(tree()), 1980); // the limit leaves the splitter out
}

TEST_F(PaneLayoutTest, thePoolSplitterFollowsWithinItsLimits) {
    draw(splitterArt(), 600);
    EXPECT_EQ(widths(), (PaneWidths{3600, 2400, 2940}));
    draw(splitterArt(), 3000, 200);
    EXPECT_EQ(browser->LeftCategoryTreeView(), 4020);
    draw(splitterArt(), -6000, 400);
    EXPECT_EQ(browser->LeftCategoryTreeView(), 2010);
}

TEST_F(PaneLayoutTest, withoutPoolTheListSplitterGoesFurther) {
    browser->setShowArticlePool(false);
    draw(splitter(), -9000, 600);
    EXPECT_EQ(browser->LeftArticleListView(), 2010);
    EXPECT_EQ(widths(), (PaneWidths{0, 2010, 6960}));
}

TEST_F(PaneLayoutTest, aLeapBeyondTheLimitMovesNothing) {
    draw(splitter(), 3000, 1);
    EXPECT_EQ(browser->LeftArticleListView(), 6030);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(PaneLayoutTest, everyMoveOfASplitterTellsTheHost) {
    draw(splitter(), 60, 2);
    EXPECT_EQ(events.take(), (QStringList{u"Resize(3000, 6060)"_s, u"Resize(3000, 6090)"_s}));
}

TEST_F(PaneLayoutTest, onlyTheLeftButtonDraws) {
    QTest::mousePress(&splitter(), Qt::RightButton, {}, QPoint(0, 100));
    EXPECT_EQ(screen().MousePointer(), vbDefault);
    moveTo(splitter(), splitter().mapToGlobal(QPoint(20, 100)), Qt::RightButton);
    moveTo(splitter(), splitter().mapToGlobal(QPoint(20, 100)), Qt::NoButton);
    EXPECT_EQ(browser->LeftArticleListView(), 6030);
    QTest::mousePress(&splitter(), Qt::LeftButton, {}, QPoint(0, 100));
    EXPECT_EQ(screen().MousePointer(), vbSizeWE);
    moveTo(splitter(), splitter().mapToGlobal(QPoint(20, 100)), Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(browser->LeftArticleListView(), 6330);
    QTest::mouseRelease(&splitter(), Qt::RightButton, {}, QPoint(0, 100));
    EXPECT_EQ(screen().MousePointer(), vbSizeWE);
    QTest::mouseRelease(&splitter(), Qt::LeftButton, {}, QPoint(0, 100));
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}

TEST_F(PaneLayoutTest, turningTheListOffAndOnSharesOutAnew) {
    draw(splitter(), 600);
    browser->setShowArticleList(false);
    EXPECT_EQ(widths(), (PaneWidths{4500, 4470, 0}));
    EXPECT_FALSE(Visible(splitter()));
    EXPECT_FALSE(statusBar().Panels(u"LV"_s).Visible());
    EXPECT_EQ(browser->LeftArticleListView(), 8970);
    browser->setShowArticleList(true);
    EXPECT_EQ(widths(), (PaneWidths{3000, 3000, 2940}));
    EXPECT_TRUE(Visible(splitter()));
    EXPECT_TRUE(statusBar().Panels(u"LV"_s).Visible());
}

TEST_F(PaneLayoutTest, turningThePoolOffAndOnKeepsTheSplitters) {
    draw(splitterArt(), -600);
    browser->setShowArticlePool(false);
    EXPECT_EQ(Left(tree()), 0);
    EXPECT_EQ(widths(), (PaneWidths{0, 6030, 2940}));
    EXPECT_FALSE(Visible(splitterArt()));
    EXPECT_FALSE(statusBar().Panels(u"LVArt"_s).Visible());
    browser->setShowArticlePool(true);
    EXPECT_EQ(widths(), (PaneWidths{2400, 3600, 2940}));
}

TEST_F(PaneLayoutTest, theTreeAloneEndsAtTheHiddenSplitter) {
    browser->setShowArticlePool(false);
    browser->setShowArticleList(false);
    EXPECT_EQ(widths(), (PaneWidths{0, 8970, 0}));
    EXPECT_EQ(Left(tree()), 0);
    EXPECT_EQ(browser->LeftArticleListView(), 8970);
    resizeTo(12000);
    EXPECT_EQ(widths(), (PaneWidths{0, 11970, 0}));
}

TEST_F(PaneLayoutTest, aHandlerMayCloseTheControl) {
    QObject::connect(browser.get(), &ArtCatBrowser::Resize, qApp, [this] { browser.reset(); });
    QPointer<PictureBox> moved(&splitter());
    QTest::mousePress(moved, Qt::LeftButton, {}, QPoint(0, 100));
    QMouseEvent move(QEvent::MouseMove, QPointF(20, 100), moved->mapToGlobal(QPointF(20, 100)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(moved, &move);
    EXPECT_EQ(browser, nullptr);
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}

TEST_F(PaneLayoutTest, aSplitterThatHidesWhileItIsDrawnLetsThePointerGo) {
    QTest::mousePress(&splitter(), Qt::LeftButton, {}, QPoint(0, 100));
    EXPECT_EQ(screen().MousePointer(), vbSizeWE);
    browser->setShowArticleList(false);
    EXPECT_EQ(screen().MousePointer(), vbDefault);
    QTest::mouseRelease(&splitter(), Qt::LeftButton, {}, QPoint(0, 100));
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}
