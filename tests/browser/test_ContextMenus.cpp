// Which menus come up, and how their entries stand.
#include "browser/AssignmentHost.h"
#include "support/ScriptedPopups.h"

#include <QTest>

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse, 30 Ösen\n"
                     "50 Werkzeug: 7 Ahle\n"
                     "60 Leer\n"_s;

class ContextMenusTest : public AssignmentHost {
protected:
    ContextMenusTest()
        : AssignmentHost(shop) {
        events.record(browser.get(), &ArtCatBrowser::MenuPropertiesClick, u"MenuPropertiesClick"_s);
        events.record(browser.get(), &ArtCatBrowser::Quit, u"Quit"_s);
        browser->show();
        show(41);
    }

    ItemView& paneOf(acbPanes pane) const {
        if (pane == acbPaneCategoryTree) return tree();
        return pane == acbPaneArticlePool ? static_cast<ItemView&>(pool()) : list();
    }
    /// A click with the right button beside the rows, where they all stay as they are.
    void rightClick(acbPanes pane) const {
        const QRect inside = paneOf(pane).viewport()->rect();
        QTest::mouseClick(paneOf(pane).viewport(), Qt::RightButton, Qt::ControlModifier,
                          inside.bottomRight() - QPoint(3, 3));
    }
    /// The entries of the menu that comes up, sub-entries left out.
    QStringList entries(acbPanes pane, acbMenus flags) {
        browser->setShowMenu(pane, flags);
        popups.lines.clear();
        rightClick(pane);
        QStringList top;
        for (const QString& line : std::as_const(popups.lines))
            if (!line.startsWith(u' ')) top.append(line.section(u'|', 0, 0));
        return top;
    }
    QString line(const QString& name) const {
        for (const QString& each : popups.lines)
            if (each.trimmed().startsWith(name + u'|')) return each.trimmed();
        return {};
    }
    void setActive(Long article, bool active) const {
        catalogue.run(
            u"UPDATE ARTIKEL SET Aktiv = %1 WHERE \"Artikel-Schlüssel\" = %2"_s.arg(active ? -1 : 0).arg(article));
    }
    void emptyTheTree() {
        catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
        browser->RefreshPane(acbPaneCategoryTree);
    }

    ScriptedPopups popups;
};

constexpr acbMenus none = static_cast<acbMenus>(0);

} // namespace

// --- the tree -------------------------------------------------------------------------------------------------------

TEST_F(ContextMenusTest, theMenuOfACategory) {
    rightClick(acbPaneCategoryTree);
    EXPECT_EQ(popups.shown, QStringList{u"KTV"_s});
    EXPECT_EQ(popups.lines, (QStringList{
                                u"kTV_NewPosition|Position &ändern"_s,
                                u"kTV_Bar0|-"_s,
                                u"kTV_Sort|Ebene alphabetisch &sortieren"_s,
                                u"  kTV_SortInc|A&ufsteigend"_s,
                                u"  kTV_SortDesc|A&bsteigend"_s,
                                u"kTV_Bar1|-"_s,
                                u"kTV_New|&Neu"_s,
                                u"kTV_Rename|&Umbenennen"_s,
                                u"kTV_Delete|&Löschen"_s,
                                u"kTV_Bar3|-"_s,
                                u"kTV_Activate|&Deaktivieren"_s,
                                u"kTV_Bar2|-"_s,
                                u"kTV_Properties|&Eigenschaften"_s,
                                u"kTV_Bar4|-"_s,
                                u"kTV_Close|Schließen"_s,
                            }));
    EXPECT_EQ(popups.accessibleName, u"Menü: Artikelkategorien"_s);
}

TEST_F(ContextMenusTest, theCaptionFollowsTheStateOfTheCategory) {
    catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET Aktiv = 0 WHERE \"Kategorie-Schlüssel\" = 41"_s);
    browser->RefreshItem(41, acbPaneCategoryTree);
    rightClick(acbPaneCategoryTree);
    EXPECT_EQ(line(u"kTV_Activate"_s), u"kTV_Activate|&Aktivieren"_s);
    browser->setSelected(acbPaneCategoryTree, 50);
    rightClick(acbPaneCategoryTree);
    EXPECT_EQ(line(u"kTV_Activate"_s), u"kTV_Activate|&Deaktivieren"_s);
}

TEST_F(ContextMenusTest, eachFlagOfTheTree) {
    constexpr acbPanes pane = acbPaneCategoryTree;
    const auto with = [&](acbMenus flag) { return entries(pane, flag).join(u' '); };
    EXPECT_EQ(with(acbMenuEditPosition), u"kTV_NewPosition kTV_Bar4"_s);
    EXPECT_EQ(with(acbMenuSortAlphabetical), u"kTV_Sort kTV_Bar4"_s);
    EXPECT_EQ(with(abcMenuNew), u"kTV_New kTV_Bar4"_s);
    EXPECT_EQ(with(acbMenuRename), u"kTV_Rename kTV_Bar4"_s);
    EXPECT_EQ(with(acbMenuDelete), u"kTV_Delete kTV_Bar4"_s);
    EXPECT_EQ(with(acbMenuActivate), u"kTV_Activate kTV_Bar4"_s);
    EXPECT_EQ(with(acbMenuProperties), u"kTV_Properties kTV_Bar4"_s);
    EXPECT_EQ(with(acbMenuQuit), u"kTV_Close"_s);
    EXPECT_EQ(with(acbMenuFind | acbMenuFilter), QString()); // no entry of the tree
    EXPECT_EQ(with(acbMenuRename | acbMenuQuit), u"kTV_Rename kTV_Bar4 kTV_Close"_s);
    EXPECT_EQ(with(everyMenu).count(u"kTV_"_s), 13);
}

TEST_F(ContextMenusTest, subEntriesBearTheirFlagInTheTag) {
    const auto tags = [&] {
        return hub().ui.menus.Item(u"kTV_SortInc").Tag() + u' ' + hub().ui.menus.Item(u"kTV_SortDesc").Tag();
    };
    EXPECT_EQ(tags(), u" "_s);
    entries(acbPaneCategoryTree, acbMenuSortAlphabetical);
    EXPECT_EQ(tags(), u"-1 -1"_s);
    EXPECT_EQ(popups.lines.filter(u"kTV_Sort"_s).size(), 3);
    entries(acbPaneCategoryTree, acbMenuRename);
    EXPECT_EQ(tags(), u"0 0"_s);
    EXPECT_TRUE(hub().ui.menus.Item(u"kTV_SortInc").Visible());
    entries(acbPaneArticlePool, acbMenuFilter);
    for (const QStringView name : {u"KLVArt_Active", u"KLVArt_InActive", u"KLVArt_Filter_Bar1", u"KLVArt_Marked"})
        EXPECT_EQ(hub().ui.menus.Item(name).Tag(), u"-1"_s);
    entries(acbPaneArticleList, acbMenuDelete);
    EXPECT_EQ(hub().ui.menus.Item(u"kLV_SortDesc").Tag(), u"0"_s);
}

TEST_F(ContextMenusTest, theNumberOfEntriesThatWillShow) {
    ContextMenus& menus = *hub().contextMenus;
    entries(acbPaneCategoryTree, everyMenu);
    EXPECT_EQ(menus.VisibleMenuCount(acbPaneCategoryTree), 15);
    entries(acbPaneCategoryTree, acbMenuSortAlphabetical | acbMenuQuit); // with both sub-entries
    EXPECT_EQ(menus.VisibleMenuCount(acbPaneCategoryTree), 5);
    entries(acbPaneCategoryTree, acbMenuQuit);
    EXPECT_EQ(menus.VisibleMenuCount(acbPaneCategoryTree), 1);
    entries(acbPaneCategoryTree, none);
    EXPECT_EQ(menus.VisibleMenuCount(acbPaneCategoryTree), 0);
    entries(acbPaneArticleList, everyMenu);
    EXPECT_EQ(menus.VisibleMenuCount(acbPaneArticleList), 12);
    entries(acbPaneArticlePool, everyMenu);
    EXPECT_EQ(menus.VisibleMenuCount(acbPaneArticlePool), 14);
}

TEST_F(ContextMenusTest, withoutASelectedNodeNoMenu) {
    tree().setSelectedItem({});
    rightClick(acbPaneCategoryTree);
    EXPECT_EQ(popups.shown, QStringList());
}

TEST_F(ContextMenusTest, anEmptyTreeOffersTheFirstCategory) {
    emptyTheTree();
    browser->setShowMenu(acbPaneCategoryTree, acbMenuProperties); // it asks for no flag
    rightClick(acbPaneCategoryTree);
    EXPECT_EQ(popups.shown, QStringList{u"KTV"_s});
    EXPECT_EQ(popups.lines, (QStringList{u"kTV_New|&Neu"_s, u"kTV_Bar4|-"_s, u"kTV_Close|Schließen"_s}));
    catalogue.addCategory({.key = 70, .name = u"Neu"_s});
    browser->RefreshPane(acbPaneCategoryTree);
    EXPECT_EQ(entries(acbPaneCategoryTree, everyMenu).size(), 13) << "all show again";
}

TEST_F(ContextMenusTest, anEmptyTreeBeforePopulateHasNoMenu) {
    makeBrowser();
    browser->show();
    rightClick(acbPaneCategoryTree);
    EXPECT_EQ(popups.shown, QStringList());
}

// --- switched off ---------------------------------------------------------------------------------------------------

TEST_F(ContextMenusTest, noneKeepsEveryMenuAway) {
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree})
        EXPECT_EQ(entries(pane, everyMenu | acbMenuNone), QStringList());
    emptyTheTree();
    list().ListItems().Clear();
    pool().ListItems().Clear();
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree})
        rightClick(pane);
    EXPECT_EQ(popups.shown, QStringList());
}

TEST_F(ContextMenusTest, eachPaneHasItsOwnFlags) {
    browser->setShowMenu(acbPaneArticleList, acbMenuNone);
    rightClick(acbPaneArticleList);
    rightClick(acbPaneArticlePool);
    rightClick(acbPaneCategoryTree);
    EXPECT_EQ(popups.shown, (QStringList{u"KLVArt"_s, u"KTV"_s}));
}

TEST_F(ContextMenusTest, atDesignTimeNoMenu) {
    browser->setUserMode(false);
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree}) {
        rightClick(pane);
        QTest::keyClick(&paneOf(pane), Qt::Key_Menu);
    }
    EXPECT_EQ(popups.shown, QStringList());
}

TEST_F(ContextMenusTest, otherButtonsBringNoMenu) {
    QTest::mouseClick(tree().viewport(), Qt::MiddleButton, {}, QPoint(20, 5));
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    QTest::mousePress(tree().viewport(), Qt::RightButton, {}, QPoint(20, 5));
    EXPECT_EQ(popups.shown, QStringList());
    QTest::mouseRelease(tree().viewport(), Qt::RightButton, {}, QPoint(20, 5));
    EXPECT_EQ(popups.shown, QStringList{u"KTV"_s});
}

// --- the list -------------------------------------------------------------------------------------------------------

TEST_F(ContextMenusTest, theMenuOfAnAssignedArticle) {
    select(list(), {2});
    rightClick(acbPaneArticleList);
    EXPECT_EQ(popups.shown, QStringList{u"KLV"_s});
    EXPECT_EQ(popups.lines, (QStringList{
                                u"kLV_NewPosition|Position &ändern"_s,
                                u"kLV_DeletePosition|Position &löschen"_s,
                                u"kLV_Bar1|-"_s,
                                u"kLV_Sort|Kategorie alphabetisch &sortieren"_s,
                                u"  kLV_SortInc|A&ufsteigend"_s,
                                u"  kLV_SortDesc|A&bsteigend"_s,
                                u"kLV_Bar3|-"_s,
                                u"kLV_Activate|&Deaktivieren"_s,
                                u"kLV_Bar2|-"_s,
                                u"kLV_Properties|&Eigenschaften"_s,
                                u"kLV_Bar4|-"_s,
                                u"kLV_Close|&Schließen"_s,
                            }));
    EXPECT_EQ(popups.accessibleName, u"Menü: Artikel der Kategorie"_s);
}

TEST_F(ContextMenusTest, theMenuOfSeveralAssignedArticles) {
    setActive(30, false);
    browser->RefreshPane(acbPaneArticleList);
    select(list(), {1, 3});
    rightClick(acbPaneArticleList);
    EXPECT_EQ(popups.lines, (QStringList{
                                u"kLV_DeletePosition|Auswahl &löschen"_s,
                                u"kLV_Bar1|-"_s,
                                u"kLV_Sort|Kategorie alphabetisch &sortieren"_s,
                                u"  kLV_SortInc|A&ufsteigend"_s,
                                u"  kLV_SortDesc|A&bsteigend"_s,
                                u"kLV_Bar3|-"_s,
                                u"kLV_ActivateAll|Auswahl &aktivieren"_s,
                                u"kLV_DeActivateAll|Auswahl &deaktivieren"_s,
                                u"kLV_Bar4|-"_s,
                                u"kLV_Close|&Schließen"_s,
                            }));
    select(list(), {1});
    rightClick(acbPaneArticleList);
    EXPECT_EQ(line(u"kLV_DeletePosition"_s), u"kLV_DeletePosition|Position &löschen"_s);
    EXPECT_EQ(line(u"kLV_ActivateAll"_s), QString());
    EXPECT_FALSE(line(u"kLV_NewPosition"_s).isEmpty());
}

TEST_F(ContextMenusTest, onlyWhatWouldChangeSomethingIsEnabled) {
    select(list(), {1, 2});
    rightClick(acbPaneArticleList);
    EXPECT_EQ(line(u"kLV_ActivateAll"_s), u"kLV_ActivateAll|Auswahl &aktivieren|grey"_s);
    EXPECT_EQ(line(u"kLV_DeActivateAll"_s), u"kLV_DeActivateAll|Auswahl &deaktivieren"_s);
    for (const Long article : {12, 4711, 30})
        setActive(article, false);
    browser->RefreshPane(acbPaneArticleList);
    select(list(), {1, 2, 3});
    rightClick(acbPaneArticleList);
    EXPECT_EQ(line(u"kLV_ActivateAll"_s), u"kLV_ActivateAll|Auswahl &aktivieren"_s);
    EXPECT_EQ(line(u"kLV_DeActivateAll"_s), u"kLV_DeActivateAll|Auswahl &deaktivieren|grey"_s);
}

TEST_F(ContextMenusTest, anySelectedInState) {
    ContextMenus& menus = *hub().contextMenus;
    select(list(), {});
    EXPECT_FALSE(menus.LV_AnySelectedInState(true));
    EXPECT_FALSE(menus.LV_AnySelectedInState(false));
    select(list(), {1});
    EXPECT_FALSE(menus.LV_AnySelectedInState(true));
    EXPECT_TRUE(menus.LV_AnySelectedInState(false));
    list().ListItems().Item(2)->setSmallIcon(u"Off"_s);
    select(list(), {1, 2});
    EXPECT_TRUE(menus.LV_AnySelectedInState(true));
    EXPECT_TRUE(menus.LV_AnySelectedInState(false));
}

TEST_F(ContextMenusTest, eachFlagOfTheList) {
    select(list(), {1});
    const auto with = [&](acbMenus flag) { return entries(acbPaneArticleList, flag).join(u' '); };
    EXPECT_EQ(with(acbMenuEditPosition), u"kLV_NewPosition kLV_Bar3 kLV_Bar4"_s);
    EXPECT_EQ(with(acbMenuDelete), u"kLV_DeletePosition kLV_Bar3 kLV_Bar4"_s);
    EXPECT_EQ(with(acbMenuSortAlphabetical), u"kLV_Sort kLV_Bar3 kLV_Bar4"_s);
    EXPECT_EQ(with(acbMenuActivate), u"kLV_Activate kLV_Bar4"_s);
    EXPECT_EQ(with(acbMenuProperties), u"kLV_Properties kLV_Bar4"_s);
    EXPECT_EQ(with(acbMenuQuit), u"kLV_Close"_s);
    EXPECT_EQ(with(abcMenuNew | acbMenuRename | acbMenuFind | acbMenuFilter), QString());
    select(list(), {1, 2}); // both follow the selection, not a flag
    EXPECT_EQ(with(acbMenuQuit), u"kLV_ActivateAll kLV_DeActivateAll kLV_Bar4 kLV_Close"_s);
    EXPECT_EQ(with(acbMenuEditPosition | acbMenuActivate | acbMenuProperties),
              u"kLV_ActivateAll kLV_DeActivateAll kLV_Bar4"_s);
}

TEST_F(ContextMenusTest, anEmptyListCanOnlyBeClosed) {
    browser->setSelected(acbPaneCategoryTree, 60);
    events.take();
    popups.choices = {u"KClose_Close"_s};
    rightClick(acbPaneArticleList);
    EXPECT_EQ(popups.shown, QStringList{u"KClose"_s});
    EXPECT_EQ(popups.lines, QStringList{u"KClose_Close|&Schließen"_s});
    EXPECT_EQ(events.take(), QStringList{u"Quit()"_s});
}

TEST_F(ContextMenusTest, anEmptyPoolCanOnlyBeClosed) {
    pool().ListItems().Clear();
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(popups.shown, QStringList{u"KClose"_s});
}

TEST_F(ContextMenusTest, withoutASelectedRowOnlyClose) {
    list().setSelectedItem({});
    rightClick(acbPaneArticleList);
    EXPECT_EQ(popups.shown, QStringList{u"KClose"_s});
}

// --- the pool -------------------------------------------------------------------------------------------------------

TEST_F(ContextMenusTest, theMenuOfAnArticle) {
    select(pool(), {1});
    tick(u"KLVArt_InActive"_s);
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(popups.shown, QStringList{u"KLVArt"_s});
    EXPECT_EQ(popups.lines, (QStringList{
                                u"KLVArt_Find|&Suchen"_s,
                                u"KLVArt_Bar2|-"_s,
                                u"KLVArt_Filter|&Filter"_s,
                                u"  KLVArt_Active|Nur &aktive Artikel anzeigen"_s,
                                u"  KLVArt_InActive|Nur &inaktive Artikel anzeigen|checked"_s,
                                u"  KLVArt_Filter_Bar1|-"_s,
                                u"  KLVArt_Marked|Nur &ausgewählte Artikel anzeigen|grey"_s,
                                u"  KLVArt_UnCategorized|Nur &unzugeordnete Artikel anzeigen"_s,
                                u"KLVArt_Bar3|-"_s,
                                u"KLVArt_Activate|&Deaktivieren"_s,
                                u"KLVArt_Bar1|-"_s,
                                u"KLVArt_Properties|&Eigenschaften"_s,
                                u"KLVArt_Bar4|-"_s,
                                u"KLVArt_Close|Schl&ießen"_s,
                            }));
    EXPECT_EQ(popups.accessibleName, u"Menü: Gesamtartikelliste"_s);
}

TEST_F(ContextMenusTest, theMenuOfSeveralArticles) {
    catalogue.addArticle(31, u"Rest"_s);
    browser->RefreshPane(acbPaneArticlePool);
    select(pool(), {1, 2, 3, 4, 5});
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(line(u"KLVArt_Properties"_s), u"KLVArt_Properties|&Eigenschaften|grey"_s);
    EXPECT_EQ(line(u"KLVArt_Activate"_s), u"KLVArt_Activate|&Deaktivieren|grey"_s);
    EXPECT_EQ(line(u"KLVArt_Marked"_s), u"KLVArt_Marked|Nur &ausgewählte Artikel anzeigen"_s);
    select(pool(), {1});
    tick(u"KLVArt_Marked"_s); // it can be taken back
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(line(u"KLVArt_Marked"_s), u"KLVArt_Marked|Nur &ausgewählte Artikel anzeigen|checked"_s);
    EXPECT_EQ(line(u"KLVArt_Properties"_s), u"KLVArt_Properties|&Eigenschaften"_s);
}

TEST_F(ContextMenusTest, theCaptionFollowsTheStateOfTheArticle) {
    setActive(7, false);
    browser->RefreshPane(acbPaneArticlePool);
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(line(u"KLVArt_Activate"_s), u"KLVArt_Activate|&Aktivieren"_s);
    browser->setSelected(acbPaneCategoryTree, 50);
    rightClick(acbPaneArticleList);
    EXPECT_EQ(line(u"kLV_Activate"_s), u"kLV_Activate|&Aktivieren"_s);
}

TEST_F(ContextMenusTest, eachFlagOfThePool) {
    const auto with = [&](acbMenus flag) { return entries(acbPaneArticlePool, flag).join(u' '); };
    EXPECT_EQ(with(acbMenuFind), u"KLVArt_Find KLVArt_Bar4"_s);
    EXPECT_EQ(with(acbMenuFilter), u"KLVArt_Filter KLVArt_Bar4"_s);
    EXPECT_EQ(popups.lines.size(), 7); // with what stands under it
    EXPECT_EQ(with(acbMenuActivate), u"KLVArt_Activate KLVArt_Bar4"_s);
    EXPECT_EQ(with(acbMenuProperties), u"KLVArt_Properties KLVArt_Bar4"_s);
    EXPECT_EQ(with(acbMenuQuit), u"KLVArt_Close"_s);
    EXPECT_EQ(with(acbMenuEditPosition | acbMenuSortAlphabetical | abcMenuNew | acbMenuRename | acbMenuDelete),
              QString());
}

// --- how it comes up ------------------------------------------------------------------------------------------------

TEST_F(ContextMenusTest, behindThePanesOwnEvent) {
    QStringList order;
    QObject::connect(browser.get(), &ArtCatBrowser::MouseUp, qApp, [&] { order << u"MouseUp"_s; });
    popups.whileShown = [&] { order << u"menu"_s; };
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(order, (QStringList{u"MouseUp"_s, u"menu"_s}));
}

TEST_F(ContextMenusTest, theHostMayKeepItAway) {
    QObject::connect(browser.get(), &ArtCatBrowser::MouseUp, qApp, [](Integer& Button) { Button = 0; });
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(popups.shown, QStringList());
}

TEST_F(ContextMenusTest, itIsForTheRowUnderTheMouse) {
    const QPoint second = list().visualRect(list().model()->index(1, 1)).center();
    QTest::mouseClick(list().viewport(), Qt::RightButton, {}, second);
    EXPECT_EQ(selectedRow(list()), u"002 04711"_s);
    EXPECT_EQ(popups.points.last(), list().viewport()->mapToGlobal(second));
}

TEST_F(ContextMenusTest, theMenuKeyOpensItAtTheSelectedRow) {
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree}) {
        ItemView& view = paneOf(pane);
        QTest::keyClick(&view, Qt::Key_Menu);
        QTest::keyClick(&view, Qt::Key_F10, Qt::ShiftModifier);
        const QRect row = view.visualRect(view.currentIndex());
        ASSERT_GE(popups.points.size(), 2);
        for (const QPoint& point : popups.points.mid(popups.points.size() - 2)) {
            const int y = view.viewport()->mapFromGlobal(point).y();
            EXPECT_TRUE(row.top() <= y && y <= row.bottom()) << y;
        }
    }
    EXPECT_EQ(popups.shown, (QStringList{u"KLVArt"_s, u"KLVArt"_s, u"KLV"_s, u"KLV"_s, u"KTV"_s, u"KTV"_s}));
}

TEST_F(ContextMenusTest, theMenuKeyOnAnEmptyPane) {
    emptyTheTree();
    pool().ListItems().Clear();
    QTest::keyClick(&tree(), Qt::Key_Menu);
    QTest::keyClick(&pool(), Qt::Key_Menu);
    EXPECT_EQ(popups.shown, (QStringList{u"KTV"_s, u"KClose"_s}));
}

TEST_F(ContextMenusTest, theHostMayCloseTheControlInItsEvent) {
    QObject::connect(browser.get(), &ArtCatBrowser::MouseUp, qApp, [this] { browser.reset(); });
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(browser, nullptr);
    EXPECT_EQ(popups.shown, QStringList());
}

TEST_F(ContextMenusTest, aChoiceBehindTheEndOfTheControlIsNone) {
    popups.choices = {u"KLVArt_Close"_s};
    popups.whileShown = [this] { browser.reset(); };
    rightClick(acbPaneArticlePool);
    EXPECT_EQ(events.take(), QStringList());
}
