// The panes worked by keyboard alone.
#include "browser/BrowserHost.h"

#include <QTest>

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse, 30 Ösen\n"
                     "50 Werkzeug: 7 Ahle, 12 Senkkopf\n"
                     "60 Leer\n"_s;

class KeyCommandsTest : public BrowserHost {
protected:
    KeyCommandsTest()
        : BrowserHost(shop) {
        events.record(browser.get(), &ArtCatBrowser::MenuPropertiesClick, u"MenuPropertiesClick"_s);
        browser->show();
        browser->activateWindow();
        browser->Populate();
        QCoreApplication::processEvents();
        tree().setFocus();
        events.take();
    }

    /// A key for whatever has the focus.
    static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static QString focus() {
        const QWidget* const widget = QApplication::focusWidget();
        return widget ? widget->objectName() : QString();
    }
    bool isActive(Long article) const {
        const Ref<dao::Recordset> rows = catalogue.database()->OpenRecordset(
            u"SELECT Aktiv FROM ARTIKEL WHERE [Artikel-Schlüssel]=%1"_s.arg(article), dao::dbOpenSnapshot);
        return rows->value(u"Aktiv"_s).toBoolean();
    }
    void select(ListView& view, std::initializer_list<Long> indexes) {
        view.setFocus();
        view.deselectOthers({});
        for (const Long index : indexes)
            view.setSelectedItem(view.ListItems().Item(index));
        events.take();
    }
};

} // namespace

TEST_F(KeyCommandsTest, tabGoesThroughThePanesFromLeftToRight) {
    pool().setFocus();
    key(Qt::Key_Tab);
    EXPECT_EQ(focus(), u"TV"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(focus(), u"LV"_s);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focus(), u"TV"_s);
}

TEST_F(KeyCommandsTest, f6GoesRoundThePanes) {
    QStringList visited;
    for (int times = 0; times < 4; ++times) {
        key(Qt::Key_F6);
        visited << focus();
    }
    EXPECT_EQ(visited, (QStringList{u"LV"_s, u"LVArt"_s, u"TV"_s, u"LV"_s}));
    key(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focus(), u"TV"_s);
    key(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focus(), u"LVArt"_s);
    EXPECT_EQ(browser->ActivePane(), acbPaneArticlePool);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(KeyCommandsTest, f6LeavesHiddenPanesOut) {
    browser->setShowArticleList(false);
    key(Qt::Key_F6);
    EXPECT_EQ(focus(), u"LVArt"_s);
    key(Qt::Key_F6);
    EXPECT_EQ(focus(), u"TV"_s);
    browser->setShowArticlePool(false);
    key(Qt::Key_F6);
    EXPECT_EQ(focus(), u"TV"_s);
}

TEST_F(KeyCommandsTest, f5ReadsThePaneAgainAndKeepsTheFocus) {
    catalogue.addArticle(99, u"Zange"_s);
    catalogue.assign(99, 41, 9);
    catalogue.addCategory({.key = 70, .name = u"Neu"_s, .order = 9});
    list().setFocus();
    key(Qt::Key_F5);
    EXPECT_EQ(list().ListItems().Count(), 4);
    EXPECT_EQ(focus(), u"LV"_s);
    EXPECT_EQ(pool().ListItems().Count(), 4);
    EXPECT_EQ(tree().Nodes().Count(), 3);
    pool().setFocus();
    key(Qt::Key_F5);
    EXPECT_EQ(pool().ListItems().Count(), 5);
    EXPECT_EQ(focus(), u"LVArt"_s);
    tree().setFocus();
    key(Qt::Key_F5);
    EXPECT_EQ(tree().Nodes().Count(), 4);
    EXPECT_EQ(focus(), u"TV"_s);
    EXPECT_EQ(events.take(), QStringList()); // what RefreshPane raises for an unchanged selection
}

TEST_F(KeyCommandsTest, aReadThatAnybodyBeginsKeepsTheFocus) {
    for (QWidget* pane :
         {static_cast<QWidget*>(&pool()), static_cast<QWidget*>(&tree()), static_cast<QWidget*>(&list())}) {
        pane->setFocus();
        browser->Populate();
        EXPECT_EQ(focus(), pane->objectName());
        browser->RefreshPane(acbPaneArticleList);
        EXPECT_EQ(focus(), pane->objectName());
    }
}

TEST_F(KeyCommandsTest, whoeverGoesElsewhereDuringAReadStaysThere) {
    tree().setFocus();
    pump.whenServed = [&] { browser->setFocus(); };
    browser->Populate();
    EXPECT_EQ(QApplication::focusWidget(), browser.get());
}

TEST_F(KeyCommandsTest, f5RaisesWhatRefreshPaneRaises) {
    browser->setSelected(acbPaneArticlePool, 30);
    events.take();
    browser->RefreshPane(acbPaneArticlePool);
    const QStringList byMember = events.take();
    EXPECT_FALSE(byMember.isEmpty());
    browser->setSelected(acbPaneArticlePool, 30);
    events.take();
    pool().setFocus();
    key(Qt::Key_F5);
    EXPECT_EQ(events.take(), byMember);
}

TEST_F(KeyCommandsTest, beforePopulateNothingIsRead) {
    makeBrowser();
    browser->show();
    browser->activateWindow();
    QCoreApplication::processEvents();
    tree().setFocus();
    key(Qt::Key_F5);
    EXPECT_EQ(tree().Nodes().Count(), 0);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(KeyCommandsTest, atDesignTimeKeysDoNothing) {
    browser->setUserMode(false);
    browser->setEditKeys(true);
    catalogue.addCategory({.key = 70, .name = u"Neu"_s, .order = 9});
    key(Qt::Key_F5);
    EXPECT_EQ(tree().Nodes().Count(), 3);
    key(Qt::Key_F6);
    EXPECT_EQ(focus(), u"TV"_s);
    key(Qt::Key_Return, Qt::AltModifier);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(KeyCommandsTest, altReturnShowsProperties) {
    key(Qt::Key_Return, Qt::AltModifier);
    select(list(), {2});
    key(Qt::Key_Return, Qt::AltModifier);
    EXPECT_EQ(events.take(), QStringList{u"MenuPropertiesClick(4711, 1)"_s});
    select(pool(), {1});
    key(Qt::Key_Enter, Qt::AltModifier);
    EXPECT_EQ(events.take(), QStringList{u"MenuPropertiesClick(7, 0)"_s});
    tree().setFocus();
    key(Qt::Key_Return, Qt::AltModifier);
    EXPECT_EQ(events.take(), QStringList{u"MenuPropertiesClick(41, 2)"_s});
}

TEST_F(KeyCommandsTest, propertiesAreOfOneRowAndWhereTheMenuOffersThem) {
    select(list(), {1, 2});
    key(Qt::Key_Return, Qt::AltModifier);
    select(pool(), {1, 2});
    key(Qt::Key_Return, Qt::AltModifier);
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree})
        browser->setShowMenu(pane, acbMenuQuit);
    for (ItemView* view :
         {static_cast<ItemView*>(&pool()), static_cast<ItemView*>(&tree()), static_cast<ItemView*>(&list())}) {
        view->setFocus();
        key(Qt::Key_Return, Qt::AltModifier);
    }
    browser->setShowMenu(acbPaneCategoryTree, acbMenuNone | acbMenuProperties);
    tree().setFocus();
    key(Qt::Key_Return, Qt::AltModifier);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(KeyCommandsTest, editKeysAreOffUnlessSet) {
    EXPECT_FALSE(ArtCatBrowser().editKeys());
    browser->setEditKeys(false);
    select(pool(), {1});
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(isActive(7));
    EXPECT_FALSE(browser->Edited());
}

TEST_F(KeyCommandsTest, ctrlETurnsTheArticleOfThePoolOffAndOn) {
    browser->setEditKeys(true);
    select(pool(), {1});
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_FALSE(isActive(7));
    EXPECT_EQ(poolRow(7)->SmallIcon(), u"Off"_s);
    EXPECT_TRUE(browser->Edited());
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(isActive(7));
    select(pool(), {1, 2}); // the menu's entry is for one
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(isActive(7));
    EXPECT_TRUE(isActive(12));
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(KeyCommandsTest, ctrlETurnsAllSelectedArticlesOfTheListOnOrElseOff) {
    browser->setEditKeys(true);
    select(list(), {1});
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_FALSE(isActive(12));
    select(list(), {1, 3});
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(isActive(12));
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_FALSE(isActive(12));
    EXPECT_FALSE(isActive(30));
    EXPECT_TRUE(isActive(4711));
}

TEST_F(KeyCommandsTest, ctrlEOnlyWhereTheMenuOffersIt) {
    browser->setEditKeys(true);
    browser->setShowMenu(acbPaneArticlePool, acbMenuProperties);
    browser->setShowMenu(acbPaneArticleList, acbMenuNone | acbMenuActivate);
    browser->setShowMenu(acbPaneCategoryTree, acbMenuProperties);
    select(pool(), {1});
    key(Qt::Key_E, Qt::ControlModifier);
    select(list(), {1});
    key(Qt::Key_E, Qt::ControlModifier);
    tree().setFocus();
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(KeyCommandsTest, aHandlerMayCloseTheControl) {
    QObject::connect(browser.get(), &ArtCatBrowser::MenuPropertiesClick, qApp, [this] { browser.reset(); });
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::AltModifier);
    QApplication::sendEvent(&tree(), &press);
    EXPECT_EQ(browser, nullptr);
}

TEST_F(KeyCommandsTest, typedLettersLookAtNames) {
    const auto type = [](QWidget& widget, const QString& letter) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, {}, letter);
        QApplication::sendEvent(&widget, &press);
    };
    type(tree(), u"w"_s);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(50, 2)"_s, u"ItemClick(A-50, 50, 2)"_s}));
    pool().setFocus();
    type(pool(), u"ö"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 30);
    browser->setSelected(acbPaneCategoryTree, 41);
    list().setFocus();
    type(list(), u"L"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 4711);
}

TEST_F(KeyCommandsTest, theStatusBarCountsWhateverWayRowsAreSelected) {
    pool().setFocus();
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(panel(u"LVArt"_s), u"4 Artikel / 4 ausgewählt"_s);
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(panel(u"LVArt"_s), u"4 Artikel / 3 ausgewählt"_s);
    QTest::mouseClick(pool().viewport(), Qt::LeftButton, {}, QPoint(20, pool().viewport()->height() - 3));
    EXPECT_EQ(panel(u"LVArt"_s), u"4 Artikel / 0 ausgewählt"_s);
    EXPECT_EQ(events.take(), QStringList());
}
