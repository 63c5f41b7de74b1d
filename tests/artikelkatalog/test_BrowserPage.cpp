// What the window shows around the browser, and what it remembers of it.
#include "TestFolder.h"
#include "apps/artikelkatalog/EventPanel.h"
#include "apps/artikelkatalog/FilterPanel.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "browser/ArtCatBrowser.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedPump.h"

#include <QAction>
#include <QCheckBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

class BrowserPage : public ::testing::Test {
protected:
    BrowserPage() { open(); }

    /// A window as a new start of the program shows it.
    void open() {
        if (window_) window_->close();
        window_ = std::make_unique<MainWindow>(settings_);
        window_->show();
        EXPECT_TRUE(window_->showFile(file_));
    }

    template<class Widget>
    Widget& find(const char* name) const {
        return *window_->findChild<Widget*>(QLatin1StringView(name));
    }
    ArtCatBrowser& browser() const { return *window_->browser(); }
    Long articles() const { return browser().ArticlePoolListView()->ListItems().Count(); }
    Long firstArticle() const { return browser().ArticlePoolListView()->ListItems().Item(1)->Tag().toLong(); }
    Long categories() const { return browser().CategoryTreeView()->Nodes().Count(); }
    QStringList events() const { return window_->findChild<EventPanel*>()->lines(); }
    void trigger(const char* entry) const { find<QAction>(entry).trigger(); }
    void filter(const char* edit, const QString& criterion) const {
        find<QLineEdit>(edit).setText(criterion);
        QTest::keyClick(&find<QLineEdit>(edit), Qt::Key_Return);
    }

    TestFolder folder_;
    QString file_ = folder_.demo(u"a.sqlite"_s, 12);
    QSettings settings_{folder_.path(u"settings.ini"_s), QSettings::IniFormat};
    ScriptedAsker asker_;
    std::unique_ptr<MainWindow> window_;
};

TEST_F(BrowserPage, EventsAreLinesAsTheyCome) {
    find<QPushButton>("ClearEvents").click();
    ASSERT_EQ(events(), QStringList());
    const Ref<Node> second = browser().CategoryTreeView()->Nodes().Item(2);
    const Long key = second->Tag().toLong();
    browser().setSelected(acbPaneCategoryTree, key);
    ASSERT_FALSE(events().isEmpty());
    EXPECT_EQ(events().first(), u"ItemSelected(0, acbPaneArticleList)"_s);
    EXPECT_EQ(events().last(), u"ItemClick(\"%1\", %2, acbPaneCategoryTree)"_s.arg(second->Text()).arg(key));
}

TEST_F(BrowserPage, MouseMovesAreLinesOnlyIfTheyAreWanted) {
    const auto move = [this] {
        QWidget* viewport = browser().CategoryTreeView()->viewport();
        QTest::mouseMove(viewport, {30, 60});
        QTest::mouseMove(viewport, {40, 70});
        return events().filter(u"MouseMove("_s).size();
    };
    EXPECT_EQ(move(), 0);
    find<QCheckBox>("MouseMoves").click();
    EXPECT_GT(move(), 0);
}

TEST_F(BrowserPage, TheLogDoesNotGrowWithoutEnd) {
    for (int i = 0; i < 3000; ++i)
        Q_EMIT browser().Click();
    EXPECT_LE(events().size(), 2000);
}

TEST_F(BrowserPage, AFilterNarrowsItsPane) {
    const Long all = articles();
    ASSERT_GT(all, 1);
    filter("PoolFilter", u"[Artikel-Schlüssel] = %1"_s.arg(firstArticle()));
    EXPECT_EQ(articles(), 1);
    EXPECT_EQ(categories(), 12);
    filter("TreeFilter", u"1=2"_s);
    EXPECT_EQ(categories(), 0);
    find<QPushButton>("ClearFilters").click();
    EXPECT_EQ(articles(), all);
    EXPECT_EQ(categories(), 12);
    EXPECT_TRUE(asker_.shown.isEmpty());
}

TEST_F(BrowserPage, ARejectedFilterIsToldAndCanBeMended) {
    const Long article = firstArticle();
    filter("PoolFilter", u"Artikelname Like"_s);
    EXPECT_EQ(asker_.shown.size(), 1);
    EXPECT_EQ(articles(), 0);
    filter("PoolFilter", u"[Artikel-Schlüssel] = %1"_s.arg(article));
    EXPECT_EQ(asker_.shown.size(), 1);
    EXPECT_EQ(articles(), 1);
}

TEST_F(BrowserPage, TheWorkgroupConcernsAllPanes) {
    EXPECT_EQ(find<QLineEdit>("WorkgroupFilter").text(), u"Like '*'"_s);
    filter("WorkgroupFilter", u"IN(-1)"_s);
    EXPECT_EQ(categories(), 0);
    EXPECT_EQ(articles(), 0);
    filter("WorkgroupFilter", u""_s);
    EXPECT_EQ(find<QLineEdit>("WorkgroupFilter").text(), u"Like '*'"_s);
    EXPECT_EQ(categories(), 12);
    EXPECT_GT(articles(), 0);
}

TEST_F(BrowserPage, ClosingInTheMiddleOfAFilteredRead) {
    const ScriptedPump pump([this] { window_->close(); });
    filter("PoolFilter", u"[Artikel-Schlüssel] <= 3"_s);
    EXPECT_EQ(window_->browser(), nullptr);
    EXPECT_FALSE(window_->findChild<FilterPanel*>()->isEnabled());
}

TEST_F(BrowserPage, FiltersWaitForARead) {
    {
        const ScriptedPump pump([this] { filter("TreeFilter", u"1=2"_s); });
        trigger("Reload");
    }
    EXPECT_EQ(browser().Filter(acbPaneCategoryTree), QString());
    EXPECT_EQ(categories(), 12);
}

TEST_F(BrowserPage, SwitchesAreRemembered) {
    for (const char* entry : {"ArticlePool", "ArticleList", "StatusBar"})
        trigger(entry);
    trigger("Imageset2");
    for (const bool again : {false, true}) {
        if (again) open();
        EXPECT_FALSE(browser().ShowArticlePool());
        EXPECT_FALSE(browser().ShowArticleList());
        EXPECT_FALSE(browser().ShowStatusBar());
        EXPECT_EQ(browser().Imageset(), acbImageset2);
    }
    EXPECT_EQ(articles(), 0);
    trigger("ArticlePool");
    EXPECT_GT(articles(), 0); // it is read when it comes on show
}

TEST_F(BrowserPage, WidthsAreRemembered) {
    const double before = browser().PaneWidth(acbPaneArticlePool);
    browser().setPaneWidth(acbPaneArticlePool, 45);
    browser().setPaneWidth(acbPaneCategoryTree, 20);
    browser().PaneResize();
    EXPECT_GT(45 - before, 5);
    open();
    EXPECT_NEAR(browser().PaneWidth(acbPaneArticlePool), 45, 0.5);
    EXPECT_NEAR(browser().PaneWidth(acbPaneCategoryTree), 20, 0.5);
    EXPECT_NEAR(browser().PaneWidth(acbPaneArticleList), 35, 0.5);
}

TEST_F(BrowserPage, BrokenSettingsLeaveTheThirds) {
    window_->close();
    for (const QVariant& broken : {QVariant(u"breit"_s), QVariant(-5), QVariant(100), QVariant(qQNaN())}) {
        settings_.setValue(u"View/PaneWidth0"_s, broken);
        settings_.setValue(u"View/PaneWidth2"_s, broken);
        window_ = std::make_unique<MainWindow>(settings_);
        window_->show();
        ASSERT_TRUE(window_->showFile(file_));
        EXPECT_NEAR(browser().PaneWidth(acbPaneCategoryTree), 33.3, 0.5) << broken.toString().toStdString();
    }
}

TEST_F(BrowserPage, PanelsAreRemembered) {
    EXPECT_FALSE(find<QDockWidget>("FiltersDock").isVisible());
    EXPECT_FALSE(find<QDockWidget>("EventLogDock").isVisible());
    trigger("EventLog");
    EXPECT_TRUE(find<QDockWidget>("EventLogDock").isVisible());
    open();
    EXPECT_FALSE(find<QDockWidget>("FiltersDock").isVisible());
    EXPECT_TRUE(find<QDockWidget>("EventLogDock").isVisible());
}

TEST_F(BrowserPage, KeysEditHere) {
    EXPECT_TRUE(browser().editKeys());
    EXPECT_TRUE(browser().keepsView());
}

} // namespace
