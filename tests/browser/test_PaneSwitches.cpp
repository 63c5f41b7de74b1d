// Panes and status bar turned off and on, clicks beside the panes, and a screen of another resolution.
#include "browser/BrowserHost.h"
#include "controls/Extender.h"
#include "controls/PictureBox.h"

#include <QApplication>
#include <QTest>

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse\n"
                     "50 Werkzeug: 7 Ahle\n"_s;

class PaneSwitches : public BrowserHost {
protected:
    PaneSwitches()
        : BrowserHost(shop) {
        start();
    }

    void start() {
        makeBrowser();
        browser->show();
        QApplication::processEvents();
        recordAll();
    }
    void recordAll() {
        events.record(browser.get(), &ArtCatBrowser::Resize, u"Resize"_s);
        events.record(browser.get(), &ArtCatBrowser::Click, u"Click"_s);
        events.record(browser.get(), &ArtCatBrowser::DblClick, u"DblClick"_s);
        events.record(browser.get(), &ArtCatBrowser::PaneClick, u"PaneClick"_s);
        QObject::connect(browser.get(), &UserControl::PropertyChanged, browser.get(),
                         [this](const QString& name) { events.note(u"PropertyChanged "_s + name); });
    }
    static QString last(const QStringList& lines) { return lines.isEmpty() ? QString() : lines.last(); }
};

/// 12 twips to a pixel.
class FineScreen final : public Screen {
public:
    FineScreen()
        : former_(*setScreen(this)) {}
    ~FineScreen() override { setScreen(&former_); }
    Q_DISABLE_COPY_MOVE(FineScreen)

    Single Width() const override { return former_.Width(); }
    Single Height() const override { return former_.Height(); }
    Single TwipsPerPixelX() const override { return 12; }
    Single TwipsPerPixelY() const override { return 12; }
    Long MousePointer() const override { return former_.MousePointer(); }
    void setMousePointer(Long pointer) override { former_.setMousePointer(pointer); }

private:
    Screen& former_;
};

} // namespace

TEST_F(PaneSwitches, anEmptyListIsReadWhenItIsTurnedOn) {
    browser->setShowArticleList(false);
    browser->Populate();
    browser->setSelected(acbPaneCategoryTree, 50);
    ASSERT_EQ(list().ListItems().Count(), 0);
    browser->setShowArticleList(true);
    EXPECT_EQ(textsOf(list()), QStringList{u"001"_s});
    EXPECT_TRUE(Visible(list()));
    EXPECT_EQ(panel(u"LV"_s), u"1 Artikel in Kategorie 'Werkzeug' (Kat-Nr. 50)"_s);
}

TEST_F(PaneSwitches, aListWithRowsIsNotReadAgain) {
    browser->Populate();
    browser->setShowArticleList(false);
    catalogue.addArticle(99, u"Zange"_s);
    catalogue.assign(99, 41, 9);
    browser->setShowArticleList(true);
    EXPECT_EQ(list().ListItems().Count(), 2);
    browser->setShowArticleList(true); // it is on: no reason to read even if it were empty
    list().ListItems().Clear();
    browser->setShowArticleList(true);
    EXPECT_EQ(list().ListItems().Count(), 0);
}

TEST_F(PaneSwitches, anEmptyPoolIsReadWhenItIsTurnedOn) {
    browser->setShowArticlePool(false);
    browser->Populate();
    events.take();
    browser->setShowArticlePool(true);
    EXPECT_EQ(pool().ListItems().Count(), 3);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 7);
    const QStringList raised = events.take();
    EXPECT_EQ(raised.first(2), (QStringList{u"ItemSelected(7, 0)"_s, u"ItemClick(A7, 7, 0)"_s}));
    EXPECT_EQ(last(raised), u"PropertyChanged ShowArticlePool"_s);
}

TEST_F(PaneSwitches, nothingIsReadAtDesignTimeOrBeforePopulate) {
    browser->setShowArticlePool(false);
    browser->setShowArticleList(false);
    browser->setShowArticlePool(true);
    browser->setShowArticleList(true);
    EXPECT_EQ(pool().ListItems().Count(), 0);
    EXPECT_EQ(takeReports(), QStringList());
    browser->Populate();
    browser->setUserMode(false);
    for (ListView* view : {&pool(), &list()})
        view->ListItems().Clear();
    browser->setShowArticlePool(false);
    browser->setShowArticleList(false);
    browser->setShowArticlePool(true);
    browser->setShowArticleList(true);
    EXPECT_EQ(pool().ListItems().Count(), 0);
    EXPECT_EQ(list().ListItems().Count(), 0);
}

TEST_F(PaneSwitches, theHostIsToldOfThePropertyBehindThePanesAndBeforeThePassOfTheStatusBar) {
    browser->setShowArticleList(false);
    EXPECT_EQ(last(events.take()), u"PropertyChanged ShowArticleList"_s);
    browser->setShowArticlePool(false);
    EXPECT_EQ(last(events.take()), u"PropertyChanged ShowArticlePool"_s);
    browser->setShowStatusBar(false);
    const QStringList raised = events.take();
    EXPECT_EQ(raised.value(0), u"PropertyChanged ShowStatusBar"_s);
    EXPECT_EQ(raised.size(), 2);
    EXPECT_TRUE(last(raised).startsWith(u"Resize"_s));
}

TEST_F(PaneSwitches, theStatusBarIsWrittenAnewWhenItIsSwitched) {
    browser->Populate();
    StatusPanel& text = constituent<StatusBar>(u"SB"_s).Panels(u"LV"_s);
    for (const bool on : {false, true}) {
        text.setText(u"?"_s);
        browser->setShowStatusBar(on);
        EXPECT_EQ(text.Text(), u"2 Artikel in Kategorie 'Schrauben' (Kat-Nr. 41)"_s);
    }
    text.setText(u"?"_s);
    browser->setUserMode(false);
    browser->setShowStatusBar(false);
    EXPECT_EQ(text.Text(), u"?"_s);
}

TEST_F(PaneSwitches, theHandlerOfASwitchMayCloseTheControl) {
    for (int which = 0; which < 3; ++which) {
        start();
        browser->Populate();
        QObject::connect(browser.get(), &ArtCatBrowser::Resize, qApp, [this] { browser.reset(); });
        ArtCatBrowser& closing = *browser;
        if (which == 0) closing.setShowArticleList(false);
        if (which == 1) closing.setShowArticlePool(false);
        if (which == 2) closing.setShowStatusBar(false);
        EXPECT_EQ(browser, nullptr) << which;
    }
}

TEST_F(PaneSwitches, clicksOnSplittersAndStatusBarAreTheControls) {
    for (const QString& name : {u"picSplitter"_s, u"picSplitterArt"_s}) {
        auto& splitter = constituent<PictureBox>(name);
        QTest::mouseClick(&splitter, Qt::LeftButton, {}, QPoint(0, 100));
        EXPECT_EQ(events.take(), QStringList{u"Click()"_s});
        QTest::mouseDClick(&splitter, Qt::LeftButton, {}, QPoint(0, 100));
        EXPECT_EQ(last(events.take()), u"DblClick()"_s);
    }
    QTest::mouseClick(&constituent<StatusBar>(u"SB"_s).Panels(u"TV"_s), Qt::LeftButton);
    EXPECT_EQ(events.take(), QStringList{u"Click()"_s});
    QTest::mouseDClick(&constituent<StatusBar>(u"SB"_s).Panels(u"TV"_s), Qt::LeftButton);
    EXPECT_EQ(last(events.take()), u"DblClick()"_s);
}

TEST_F(PaneSwitches, twipsArePixelsAsTheScreenSays) {
    const FineScreen screen;
    start();
    browser->resize(900, 500);
    EXPECT_EQ(browser->ScaleWidth(), 10800);
    EXPECT_EQ(browser->LeftCategoryTreeView(), 3600);
    EXPECT_EQ(pool().width(), 300);
    EXPECT_EQ(constituent<PictureBox>(u"picSplitter"_s).width(), 3); // 30 twips, to the nearest pixel
    browser->resize(200, 500);
    EXPECT_EQ(browser->ScaleWidth(), 4000);
    EXPECT_EQ(browser->width(), 333);
}
