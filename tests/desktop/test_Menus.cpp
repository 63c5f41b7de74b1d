// The context menus with the real mouse and keyboard, every entry to its end.
#include "browser/dialogs/frmAddArticleFind.h"
#include "controls/StatusBar.h"
#include "desktop/MenuWindow.h"

#include <QHeaderView>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

class Menus : public MenuWindow {
protected:
    /// Whether the article is active, as another program reads it.
    QString active(Long article) const {
        return stored(u"SELECT IIf(Aktiv, 'ja', 'nein') FROM ARTIKEL WHERE [Artikel-Schlüssel]=%1"_s.arg(article));
    }
    QString activeCategory(Long key) const {
        return stored(
            u"SELECT IIf(Aktiv, 'ja', 'nein') FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=%1"_s.arg(key));
    }
    /// Opens the menu there and clicks on an entry that opens a dialog.
    static void clickEntryAndAnswer(const QPoint& onScreen, const QString& menu, const QString& entry,
                                    const std::function<void()>& answer) {
        openAt(onScreen, menu);
        doAndAnswer([&] { clickEntry(entry); }, {answer});
    }
    static void clickEntryAt(const QPoint& onScreen, const QString& menu, const QString& entry) {
        openAt(onScreen, menu);
        clickEntry(entry);
    }
};

} // namespace

// --- coming up ------------------------------------------------------------------------------------------------------

TEST_F(Menus, ARightClickEverywhere) {
    selectCategory(category(17));
    openAt(nodeAt(83), u"KTV"_s); // it is for the node under the mouse
    keepPicture(u"menu-tree"_s);
    EXPECT_EQ(tree_->SelectedItem(), category(83));
    EXPECT_EQ(entries(), (QStringList{u"kTV_NewPosition"_s, u"-"_s, u"kTV_Sort"_s, u"-"_s, u"kTV_New"_s,
                                      u"kTV_Rename"_s, u"kTV_Delete"_s, u"-"_s, u"kTV_Activate"_s, u"-"_s,
                                      u"kTV_Properties"_s, u"-"_s, u"kTV_Close"_s}));
    closeMenu();
    openAt(belowRows(*tree_), u"KTV"_s);
    closeMenu();
    selectCategory(category(17));
    openAt(rowOf(list(), 2), u"KLV"_s);
    keepPicture(u"menu-list"_s);
    EXPECT_EQ(list().SelectedItem(), list().ListItems().Item(2));
    closeMenu();
    openAt(belowRows(list()), u"KLV"_s);
    closeMenu();
    openAt(rowOf(pool(), 3), u"KLVArt"_s);
    keepPicture(u"menu-pool"_s);
    EXPECT_EQ(pool().SelectedItem(), pool().ListItems().Item(3));
    closeMenu();
    const auto* const splitter = browser().findChild<QWidget*>(u"picSplitter"_s);
    const auto* const statusBar = browser().findChild<StatusBar*>(u"SB"_s);
    for (const QPoint& beside :
         {splitter->mapToGlobal(splitter->rect().center()), statusBar->mapToGlobal(statusBar->rect().center()),
          list().header()->mapToGlobal(QPoint(10, 5))}) {
        xdotool({u"mousemove"_s, QString::number(beside.x()), QString::number(beside.y()), u"click"_s, u"3"_s});
        openAt(nodeAt(17), u"KTV"_s); // it is the only one
        closeMenu();
    }
    EXPECT_EQ(told_, QStringList());
    EXPECT_FALSE(browser().Edited());
}

TEST_F(Menus, ARightClickInEmptyPanes) {
    reader_->executeNative(u"DELETE FROM ARTKAT"_s);
    reader_->executeNative(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
    tree_->setFocus();
    press(u"F5"_s);
    ASSERT_TRUE(waitUntil([&] { return tree_->Nodes().Count() == 0; }));
    openAt(belowRows(*tree_), u"KTV"_s);
    keepPicture(u"menu-empty-tree"_s);
    EXPECT_EQ(entries(), (QStringList{u"kTV_New"_s, u"-"_s, u"kTV_Close"_s}));
    doAndAnswer([] { pressInMenu({u"n"_s}); }, {[] {
                    type(u"Anfang"_s);
                    press(u"alt+o"_s);
                }});
    EXPECT_EQ(stored(u"SELECT Kategoriename FROM [ARTIKEL/KATEGORIEN]"_s), u"Anfang"_s);
    ASSERT_EQ(list().ListItems().Count(), 0);
    clickEntryAt(belowRows(list()), u"KClose"_s, u"KClose_Close"_s);
    EXPECT_TRUE(waitUntil([&] { return told_ == QStringList{u"quit"_s}; }));
    EXPECT_TRUE(waitUntil([&] { return !window_.isVisible(); }));
}

TEST_F(Menus, MenuKeyAndShiftF10) {
    selectCategory(category(17));
    clickRow(list(), 2);
    clickRow(pool(), 3);
    const QList<std::pair<ItemView*, QString>> panes{{tree_, u"KTV"_s}, {&list(), u"KLV"_s}, {&pool(), u"KLVArt"_s}};
    for (const auto& [pane, name] : panes) {
        pane->setFocus();
        for (const QString& keys : {u"Menu"_s, u"shift+F10"_s}) {
            openBy(keys, name);
            const QRect row = pane->visualRect(pane->currentIndex());
            const int top = pane->viewport()->mapFromGlobal(menu()->pos()).y();
            EXPECT_TRUE(row.top() <= top && top <= row.bottom()) << name.toStdString() << top;
            closeMenu();
            EXPECT_TRUE(pane->hasFocus());
        }
    }
    list().setFocus();
    openBy(u"Menu"_s, u"KLV"_s);
    doAndAnswer(
        [] {
            press(u"Down"_s);
            pressInMenu({u"Return"_s}); // the first entry
        },
        {[] {
            press(u"1"_s);
            press(u"alt+o"_s);
        }});
    expectSoon([&] { return articlesOf(17); }, u"45@1 44@2 100@3 40@4"_s);
    EXPECT_TRUE(list().hasFocus());
}

TEST_F(Menus, AClickBesideAMenuClosesIt) {
    selectCategory(category(17));
    openAt(nodeAt(17), u"KTV"_s);
    click(window_.mapToGlobal(QPoint(window_.width() / 2, window_.height() - 4)));
    EXPECT_TRUE(waitUntil([] { return !menu(); }));
    EXPECT_FALSE(browser().Edited());
    EXPECT_TRUE(tree_->hasFocus());
}

TEST_F(Menus, TheControlMayGoWhileAMenuIsOpen) {
    selectCategory(category(17));
    openAt(nodeAt(17), u"KTV"_s);
    const QString other = folder_.demo(u"Andere.sqlite"_s, 10);
    ASSERT_TRUE(window_.showFile(other)); // takes the browser away
    EXPECT_TRUE(waitUntil([] { return !menu(); }));
    tree_ = browser().CategoryTreeView();
}

// --- the tree -------------------------------------------------------------------------------------------------------

TEST_F(Menus, OfTheTreeByAccessKeys) {
    selectCategory(category(83));
    const auto answering = [&](const QStringList& keys, const std::function<void()>& answer) {
        openAt(textOf(*tree_->SelectedItem()), u"KTV"_s);
        doAndAnswer([&] { pressInMenu(keys); }, {answer});
    };
    answering({u"adiaeresis"_s}, [] {
        press(u"1"_s);
        press(u"alt+o"_s);
    });
    EXPECT_EQ(roots(), u"83 13 17"_s);
    answering({u"s"_s, u"b"_s}, [] {
        keepPicture(u"menu-sort-question"_s);
        press(u"alt+j"_s);
    });
    const QString descending = roots();
    answering({u"s"_s, u"u"_s}, [] { press(u"alt+j"_s); });
    QStringList reversed = descending.split(u' ');
    std::ranges::reverse(reversed);
    EXPECT_EQ(roots().split(u' '), reversed);
    const QString before = roots();
    answering({u"n"_s}, [] {
        type(u"Pflanzen"_s);
        press(u"alt+o"_s);
    });
    const Long made = browser().Selected(acbPaneCategoryTree);
    EXPECT_EQ(ofCategory(made, u"Kategoriename"_s), u"Pflanzen"_s);
    answering({u"u"_s}, [] {
        type(u"Blumen"_s);
        press(u"Return"_s);
    });
    EXPECT_EQ(ofCategory(made, u"Kategoriename"_s), u"Blumen"_s);
    answering({u"l"_s}, [] { press(u"alt+j"_s); });
    EXPECT_EQ(roots(), before);
    openAt(nodeAt(83), u"KTV"_s);
    doAndAnswer([&] { pressInMenu({u"e"_s}); }, {[] { press(u"Return"_s); }});
    EXPECT_TRUE(waitUntil([&] { return told_ == QStringList{u"properties 83 in 2"_s}; }));
}

TEST_F(Menus, OfTheTreeByMouse) {
    clickEntryAndAnswer(nodeAt(83), u"KTV"_s, u"kTV_NewPosition"_s, [] {
        press(u"1"_s);
        press(u"alt+o"_s);
    });
    EXPECT_EQ(roots(), u"83 13 17"_s);
    clickEntryAndAnswer(nodeAt(83), u"KTV"_s, u"kTV_SortDesc"_s, [] { press(u"alt+n"_s); });
    EXPECT_EQ(roots(), u"83 13 17"_s);
    clickEntryAndAnswer(nodeAt(83), u"KTV"_s, u"kTV_New"_s, [] { press(u"Escape"_s); });
    clickEntryAndAnswer(nodeAt(83), u"KTV"_s, u"kTV_Rename"_s, [] { press(u"Escape"_s); });
    clickEntryAndAnswer(nodeAt(83), u"KTV"_s, u"kTV_Delete"_s, [] { press(u"alt+n"_s); });
    EXPECT_EQ(roots(), u"83 13 17"_s);
    ASSERT_EQ(activeCategory(83), u"ja"_s);
    clickEntryAndAnswer(nodeAt(83), u"KTV"_s, u"kTV_Activate"_s, [] { press(u"alt+j"_s); }); // with its children
    expectSoon([&] { return activeCategory(83); }, u"nein"_s);
    clickEntryAt(nodeAt(83), u"KTV"_s, u"kTV_Activate"_s);
    expectSoon([&] { return activeCategory(83); }, u"ja"_s);
    clickEntryAndAnswer(nodeAt(83), u"KTV"_s, u"kTV_Properties"_s, [] { press(u"Return"_s); });
    EXPECT_TRUE(waitUntil([&] { return told_ == QStringList{u"properties 83 in 2"_s}; }));
    clickEntryAt(nodeAt(83), u"KTV"_s, u"kTV_Close"_s);
    EXPECT_TRUE(waitUntil([&] { return told_.last() == u"quit"_s; }));
    EXPECT_TRUE(waitUntil([&] { return !window_.isVisible(); }));
}

// --- the list -------------------------------------------------------------------------------------------------------

TEST_F(Menus, OfTheListByAccessKeys) {
    selectCategory(category(17));
    const auto answering = [&](Long row, const QStringList& keys, const std::function<void()>& answer) {
        openAt(rowOf(list(), row), u"KLV"_s);
        doAndAnswer([&] { pressInMenu(keys); }, {answer});
    };
    answering(1, {u"adiaeresis"_s}, [] {
        press(u"4"_s);
        press(u"alt+o"_s);
    });
    expectSoon([&] { return articlesOf(17); }, u"45@1 100@2 40@3 44@4"_s);
    answering(2, {u"l"_s}, [] { press(u"alt+j"_s); });
    expectSoon([&] { return articlesOf(17); }, u"45@1 40@2 44@3"_s);
    answering(1, {u"s"_s, u"b"_s}, [] { press(u"alt+j"_s); });
    const QString descending =
        stored(u"SELECT [Artikel-Schlüssel] FROM ARTKAT WHERE [Kategorie-Schlüssel]=17 ORDER BY [Order]"_s);
    answering(1, {u"s"_s, u"u"_s}, [] { press(u"alt+j"_s); });
    QStringList ascending = descending.split(u' ');
    std::ranges::reverse(ascending);
    EXPECT_EQ(stored(u"SELECT [Artikel-Schlüssel] FROM ARTKAT WHERE [Kategorie-Schlüssel]=17 ORDER BY [Order]"_s),
              ascending.join(u' '));
    const Long article = list().ListItems().Item(1)->SubItems(1).toInt();
    const QString was = active(article);
    openAt(rowOf(list(), 1), u"KLV"_s);
    pressInMenu({was == u"ja"_s ? u"d"_s : u"a"_s});
    expectSoon([&] { return active(article); }, was == u"ja"_s ? u"nein"_s : u"ja"_s);
    answering(1, {u"e"_s}, [] { press(u"Return"_s); });
    EXPECT_TRUE(waitUntil([&] { return told_ == QStringList{u"properties %1 in 1"_s.arg(article)}; }));
}

TEST_F(Menus, OfTheListByMouse) {
    selectCategory(category(17));
    clickEntryAndAnswer(rowOf(list(), 1), u"KLV"_s, u"kLV_NewPosition"_s, [] { press(u"Escape"_s); });
    clickEntryAndAnswer(rowOf(list(), 1), u"KLV"_s, u"kLV_DeletePosition"_s, [] { press(u"alt+n"_s); });
    clickEntryAndAnswer(rowOf(list(), 1), u"KLV"_s, u"kLV_SortInc"_s, [] { press(u"alt+n"_s); });
    EXPECT_EQ(articlesOf(17), u"44@1 45@2 100@3 40@4"_s);
    const QString was = active(44);
    clickEntryAt(rowOf(list(), 1), u"KLV"_s, u"kLV_Activate"_s);
    expectSoon([&] { return active(44); }, was == u"ja"_s ? u"nein"_s : u"ja"_s);
    clickEntryAndAnswer(rowOf(list(), 1), u"KLV"_s, u"kLV_Properties"_s, [] { press(u"Return"_s); });
    clickEntryAt(rowOf(list(), 1), u"KLV"_s, u"kLV_Close"_s);
    EXPECT_TRUE(waitUntil([&] { return told_ == (QStringList{u"properties 44 in 1"_s, u"quit"_s}); }));
}

TEST_F(Menus, OfSeveralRowsOfTheList) {
    selectCategory(category(17));
    clickRow(list(), 1);
    press(u"shift+Down"_s);
    ASSERT_TRUE(waitUntil([&] { return list().SelectedCount() == 2; }));
    const auto both = [&] { return active(44) + active(45); };
    openAt(rowOf(list(), 1), u"KLV"_s);
    keepPicture(u"menu-list-several"_s);
    clickEntry(states().contains(u"kLV_DeActivateAll"_s) ? u"kLV_DeActivateAll"_s : u"kLV_ActivateAll"_s);
    ASSERT_TRUE(waitUntil([&] { return both() == u"neinnein"_s || both() == u"jaja"_s; }));
    const bool areOn = both() == u"jaja"_s;
    openAt(rowOf(list(), 2), u"KLV"_s);
    EXPECT_TRUE(states().contains(areOn ? u"(kLV_ActivateAll)"_s : u"(kLV_DeActivateAll)"_s));
    pressInMenu({areOn ? u"d"_s : u"a"_s});
    expectSoon(both, areOn ? u"neinnein"_s : u"jaja"_s);
    EXPECT_EQ(list().SelectedCount(), 2);
    openAt(rowOf(list(), 2), u"KLV"_s);
    doAndAnswer([] { pressInMenu({u"l"_s}); }, {[] { press(u"alt+j"_s); }});
    expectSoon([&] { return articlesOf(17); }, u"100@1 40@2"_s);
}

// --- the pool -------------------------------------------------------------------------------------------------------

TEST_F(Menus, FiltersOfThePool) {
    reader_->executeNative(u"UPDATE ARTIKEL SET Aktiv = -1"_s);
    reader_->executeNative(u"UPDATE ARTIKEL SET Aktiv = 0 WHERE \"Artikel-Schlüssel\" IN (44, 45)"_s);
    pool().setFocus();
    press(u"F5"_s);
    const Long all = pool().ListItems().Count();
    const auto count = [&] { return QString::number(pool().ListItems().Count()); };
    clickEntryAt(rowOf(pool(), 1), u"KLVArt"_s, u"KLVArt_InActive"_s);
    expectSoon(count, u"2"_s);
    openAt(rowOf(pool(), 1), u"KLVArt"_s);
    press(u"f"_s);
    ASSERT_TRUE(waitUntil([] { return states().contains(u"+KLVArt_InActive"_s); }));
    EXPECT_EQ(states(), (QStringList{u"KLVArt_Active"_s, u"+KLVArt_InActive"_s, u"(KLVArt_Marked)"_s,
                                     u"KLVArt_UnCategorized"_s}));
    keepPicture(u"menu-pool-filter"_s);
    click(menu()->mapToGlobal(menu()->actionGeometry(menu()->actions().first()).center())); // active ones instead
    expectSoon(count, QString::number(all - 2));
    clickEntryAt(rowOf(pool(), 1), u"KLVArt"_s, u"KLVArt_Active"_s);
    expectSoon(count, QString::number(all));
    clickRow(pool(), 2);
    press(u"shift+Down"_s);
    press(u"shift+Down"_s);
    ASSERT_TRUE(waitUntil([&] { return pool().SelectedCount() == 3; }));
    clickEntryAt(rowOf(pool(), 3), u"KLVArt"_s, u"KLVArt_Marked"_s);
    expectSoon(count, u"3"_s);
    clickEntryAt(rowOf(pool(), 1), u"KLVArt"_s, u"KLVArt_Marked"_s);
    expectSoon(count, QString::number(all));
    const QString unassigned = stored(
        u"SELECT Count(*) FROM ARTIKEL LEFT JOIN ARTKAT ON ARTIKEL.[Artikel-Schlüssel] = "
        "ARTKAT.[Artikel-Schlüssel] WHERE ARTKAT.[Artikel-Schlüssel] Is Null AND [Absender-Schlüssel] Like '*'"_s);
    ASSERT_NE(unassigned, u"0"_s);
    clickEntryAt(rowOf(pool(), 1), u"KLVArt"_s, u"KLVArt_UnCategorized"_s);
    expectSoon(count, unassigned);
}

TEST_F(Menus, AFilterThatLeavesNothing) {
    reader_->executeNative(u"UPDATE ARTIKEL SET Aktiv = -1"_s);
    const Long all = pool().ListItems().Count();
    openAt(rowOf(pool(), 1), u"KLVArt"_s);
    doAndAnswer(
        [] {
            pressInMenu({u"f"_s, u"i"_s});
        },
        {[] {
            keepPicture(u"menu-no-inactive"_s);
            press(u"Return"_s);
        }});
    EXPECT_TRUE(waitUntil([&] { return pool().ListItems().Count() == all; }));
}

TEST_F(Menus, SearchOfThePool) {
    const QString name = pool().ListItems().Item(5)->SubItems(1);
    const auto finds = stored(u"SELECT Count(*) FROM ARTIKEL WHERE Artikelname Like '%1*'"_s.arg(name.left(1)));
    ASSERT_GE(finds.toInt(), 1);
    openAt(rowOf(pool(), 1), u"KLVArt"_s);
    int hits = 0;
    QString result;
    QTimer user; // answers the form of every hit, then the result
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        if (!dialog() || !dialog()->isActiveWindow()) return;
        user.stop();
        if (auto* const form = qobject_cast<frmAddArticleFind*>(dialog())) {
            if (++hits == 1) keepPicture(u"find-hit"_s);
            EXPECT_TRUE(form->txtArtikelname.Text().startsWith(name.left(1), Qt::CaseInsensitive));
            press(hits % 2 ? u"alt+w"_s : u"Return"_s);
        } else if (dialog()->objectName() == u"FindDialog"_s) {
            keepPicture(u"find-term"_s);
            xdotool({u"type"_s, u"--delay"_s, u"20"_s, name.left(1) + u'*'});
            press(u"Return"_s);
        } else {
            keepPicture(u"find-result"_s);
            press(u"Return"_s);
            result = u"shown"_s;
        }
        user.start(20);
    });
    user.start(20);
    pressInMenu({u"s"_s});
    EXPECT_TRUE(waitUntil([&] { return !result.isEmpty() && !dialog(); }));
    EXPECT_EQ(QString::number(hits), finds);
    EXPECT_TRUE(pool().ListItems().Item(5)->Selected());
    EXPECT_TRUE(waitUntil([&] { return window_.isActiveWindow(); }));
}

TEST_F(Menus, RestOfThePool) {
    const Long article = pool().ListItems().Item(2)->Tag().toLong();
    const QString was = active(article);
    openAt(rowOf(pool(), 2), u"KLVArt"_s);
    pressInMenu({was == u"ja"_s ? u"d"_s : u"a"_s});
    expectSoon([&] { return active(article); }, was == u"ja"_s ? u"nein"_s : u"ja"_s);
    clickEntryAt(rowOf(pool(), 2), u"KLVArt"_s, u"KLVArt_Activate"_s);
    expectSoon([&] { return active(article); }, was);
    openAt(rowOf(pool(), 2), u"KLVArt"_s);
    doAndAnswer([&] { pressInMenu({u"e"_s}); }, {[] { press(u"Return"_s); }});
    openAt(rowOf(pool(), 2), u"KLVArt"_s);
    pressInMenu({u"i"_s});
    EXPECT_TRUE(waitUntil([&] { return told_ == (QStringList{u"properties %1 in 0"_s.arg(article), u"quit"_s}); }));
}
