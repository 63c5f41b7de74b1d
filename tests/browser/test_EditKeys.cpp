// The keys that change the catalogue, pressed in the panes.
#include "browser/AssignmentHost.h"
#include "browser/dialogs/frmArticleNewPos.h"
#include "browser/dialogs/frmNewCat.h"
#include "browser/dialogs/frmNewPosition.h"
#include "support/FixedReplica.h"
#include "support/ScriptedForms.h"

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse, 30 Ösen\n"
                     "50 Werkzeug: 7 Ahle\n"_s;

class EditKeysTest : public AssignmentHost {
protected:
    EditKeysTest()
        : AssignmentHost(shop) {
        browser->setEditKeys(true);
        browser->show();
        browser->activateWindow();
        show(41);
        QCoreApplication::processEvents();
    }

    void press(ItemView& view, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(browser.get())); // again, behind a dialog
        view.setFocus();
        QTest::keyClick(&view, key, modifiers);
    }
    /// All keys that change something, each where it would.
    void pressAll() {
        select(pool(), {1});
        press(pool(), Qt::Key_Insert);
        select(list(), {2});
        press(list(), Qt::Key_Delete);
        press(list(), Qt::Key_F2);
        press(list(), Qt::Key_Up, Qt::AltModifier);
        press(list(), Qt::Key_Down, Qt::AltModifier);
    }

    ScriptedForms forms;
};

} // namespace

TEST_F(EditKeysTest, deleteTakesThePositionOut) {
    user.answers = {vbYes, vbYes};
    select(list(), {2});
    press(list(), Qt::Key_Delete);
    EXPECT_EQ(articles(41), u"12@1* 30@2*"_s);
    EXPECT_EQ(QApplication::focusWidget(), &list());
    select(list(), {1, 2});
    press(list(), Qt::Key_Delete);
    EXPECT_EQ(articles(41), QString());
    EXPECT_EQ(user.shown.size(), 2);
}

TEST_F(EditKeysTest, altWithUpAndDownMoves) {
    select(list(), {1});
    press(list(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(articles(41), u"4711@1* 12@2* 30@3"_s);
    press(list(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(articles(41), u"4711@1* 30@2* 12@3*"_s);
    press(list(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(articles(41), u"4711@1* 12@2* 30@3*"_s);
    EXPECT_EQ(selectedRow(list()), u"002 00012"_s);
    EXPECT_EQ(QApplication::focusWidget(), &list());
}

TEST_F(EditKeysTest, f2AsksForThePosition) {
    select(list(), {1});
    forms.answers.append([](QDialog& form) {
        typeText(form, u"3"_s);
        pressKey(form, Qt::Key_O, Qt::AltModifier);
    });
    press(list(), Qt::Key_F2);
    EXPECT_EQ(articles(41), u"4711@1* 30@2* 12@3*"_s);
    forms.answers.append([](QDialog& form) { pressKey(form, Qt::Key_Escape); });
    press(list(), Qt::Key_F2);
    EXPECT_EQ(articles(41), u"4711@1* 30@2* 12@3*"_s);
}

TEST_F(EditKeysTest, insertPutsThePoolsSelectionIntoTheCategory) {
    select(pool(), {1});
    forms.answers.append([](QDialog& form) { pressKey(form, Qt::Key_Return); });
    press(pool(), Qt::Key_Insert);
    EXPECT_EQ(articles(41), u"7@1* 12@2* 4711@3* 30@4*"_s);
    EXPECT_EQ(selectedRow(list()), u"001 00007"_s);
    EXPECT_TRUE(QTest::qWaitForWindowActive(browser.get()));
    EXPECT_EQ(QApplication::focusWidget(), &pool());
}

TEST_F(EditKeysTest, severalRowsHaveNoSinglePosition) {
    select(list(), {1, 2});
    press(list(), Qt::Key_F2);
    press(list(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
}

TEST_F(EditKeysTest, theyWorkInTheirPaneOnly) {
    press(pool(), Qt::Key_Delete);
    press(pool(), Qt::Key_F2);
    press(list(), Qt::Key_Insert);
    tree().setFocus();
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(EditKeysTest, offTheyDoNothing) {
    browser->setEditKeys(false);
    pressAll();
    EXPECT_FALSE(browser->Edited());
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(EditKeysTest, atDesignTimeTheyDoNothing) {
    browser->setUserMode(false);
    pressAll();
    EXPECT_FALSE(browser->Edited());
}

TEST_F(EditKeysTest, onlyWhereTheMenuOffersTheEntry) {
    browser->setShowMenu(acbPaneArticleList, acbMenuProperties);
    browser->setAllowDragDrop(false);
    pressAll();
    browser->setShowMenu(acbPaneArticleList, acbMenuNone | acbMenuDelete | acbMenuEditPosition);
    pressAll();
    EXPECT_FALSE(browser->Edited());
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(EditKeysTest, inAnEmptyListTheyDoNothing) {
    list().ListItems().Clear();
    press(list(), Qt::Key_Delete);
    press(list(), Qt::Key_F2);
    press(list(), Qt::Key_Up, Qt::AltModifier);
    pool().deselectOthers({});
    press(pool(), Qt::Key_Insert);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_FALSE(browser->Edited());
}

// --- in the tree ----------------------------------------------------------------------------------------------------

namespace {

class EditKeysOfTheTreeTest : public EditKeysTest {
protected:
    EditKeysOfTheTreeTest() {
        browser->setHelper(makeRef<FixedReplica>(3));
        browser->setCurrentSenderID(1);
    }
};

} // namespace

TEST_F(EditKeysOfTheTreeTest, insertMakesACategory) {
    forms.answers.append([](QDialog& form) {
        typeText(form, u"Naegel"_s);
        pressKey(form, Qt::Key_O, Qt::AltModifier);
    });
    press(tree(), Qt::Key_Insert);
    EXPECT_EQ(level(0), u"41@1* 13@2* 50@3*"_s);
    EXPECT_EQ(node(13)->Text(), u"002 - Naegel"_s);
    EXPECT_TRUE(QTest::qWaitForWindowActive(browser.get()));
    EXPECT_EQ(QApplication::focusWidget(), &tree());
}

TEST_F(EditKeysOfTheTreeTest, insertMakesTheFirstCategoryToo) {
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
    browser->RefreshPane(acbPaneCategoryTree);
    browser->setShowMenu(acbPaneCategoryTree, acbMenuQuit); // the menu of an empty tree does not ask for the flag
    forms.answers.append([](QDialog& form) {
        typeText(form, u"Erste"_s);
        pressKey(form, Qt::Key_O, Qt::AltModifier);
    });
    press(tree(), Qt::Key_Insert);
    EXPECT_EQ(level(0), u"13@1*"_s);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
    browser->RefreshPane(acbPaneCategoryTree);
    browser->setShowMenu(acbPaneCategoryTree, acbMenuNone);
    press(tree(), Qt::Key_Insert);
    EXPECT_EQ(level(0), QString());
}

TEST_F(EditKeysOfTheTreeTest, f2Renames) {
    user.texts = {u"Bolzen"_s};
    press(tree(), Qt::Key_F2);
    EXPECT_EQ(node(41)->Text(), u"001 - Bolzen"_s);
}

TEST_F(EditKeysOfTheTreeTest, deleteDeletes) {
    user.answers = {vbYes};
    press(tree(), Qt::Key_Delete);
    EXPECT_EQ(level(0), u"50@1*"_s);
    EXPECT_EQ(QApplication::focusWidget(), &tree());
}

TEST_F(EditKeysOfTheTreeTest, altWithUpAndDownMoves) {
    press(tree(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(level(0), u"50@1* 41@2*"_s);
    EXPECT_EQ(tree().SelectedItem(), node(41));
    press(tree(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(level(0), u"41@1* 50@2*"_s);
    EXPECT_EQ(QApplication::focusWidget(), &tree());
}

TEST_F(EditKeysOfTheTreeTest, ctrlETurnsItOffAndOn) {
    press(tree(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(node(41)->Image(), u"OrdnerZuOff"_s);
    press(tree(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(node(41)->Image(), u"OrdnerZuOn"_s);
    EXPECT_TRUE(browser->Edited());
}

TEST_F(EditKeysOfTheTreeTest, onlyWhereTheMenuOffersTheEntry) {
    const auto pressThem = [this] {
        for (const Qt::Key key : {Qt::Key_Insert, Qt::Key_F2, Qt::Key_Delete})
            press(tree(), key);
        press(tree(), Qt::Key_E, Qt::ControlModifier);
        press(tree(), Qt::Key_Down, Qt::AltModifier); // last, since the view itself then selects a node
    };
    browser->setShowMenu(acbPaneCategoryTree, acbMenuProperties);
    pressThem();
    browser->setShowMenu(acbPaneCategoryTree, everyMenu | acbMenuNone);
    pressThem();
    browser->setShowMenu(acbPaneCategoryTree, everyMenu);
    tree().setSelectedItem({});
    pressThem();
    EXPECT_FALSE(browser->Edited());
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_EQ(takeReports(), QStringList());
}
