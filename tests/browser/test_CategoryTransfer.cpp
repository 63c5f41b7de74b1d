#include "browser/CategoryRows.h"
#include "browser/DatedHost.h"
#include "browser/dialogs/frmArtCatBrowserOrder.h"
#include "support/ScriptedForms.h"

using namespace mkl;

namespace {

const QString forest = u"41 Schrauben: 12 Senkkopf, 30 Ösen\n"
                       "  411 Holz: 7 Ahle\n"
                       "    4111 Spax\n"
                       "      41111 Kurz\n"
                       "  412 Blech\n"
                       "50 Werkzeug\n"
                       "  501 Zangen\n"
                       "60 Ähren\n"_s;

class CategoryTransferTest : public DatedHost {
protected:
    explicit CategoryTransferTest(const QString& picture = forest)
        : DatedHost(picture) {
        show(41);
    }

    /// Answers the next form with an option, 0 = Abbrechen.
    void choose(Long option) {
        forms.answers.append([this, option](QDialog& dialog) {
            auto& form = dynamic_cast<frmArtCatBrowserOrder&>(dialog);
            offers = {form.lbl(1).Caption(), form.lbl(2).Caption(), form.lbl(3).Caption()};
            if (option > 0) form.Opt(option).click();
            form.TB.Buttons(option > 0 ? u"OK"_s : u"Cancel"_s).click();
        });
    }
    void drag(Long category, Long target, Long option) {
        choose(option);
        dragUnasked(category, target);
    }
    void dragUnasked(Long category, Long target) {
        tree().setSelectedItem(node(category));
        hub().selection->SetCategoryOfTree(category);
        hub().categoryTransfer->TVDragCategory(*node(category), *node(target));
    }
    Long choice(Long category, Long target, Long option) {
        choose(option);
        return hub().categoryTransfer->CategoryDropChoice(*node(category), *node(target));
    }
    void forbid(const QString& what) const {
        catalogue.run(u"CREATE TRIGGER verboten BEFORE %1 BEGIN SELECT RAISE(ABORT, 'nein'); END"_s.arg(what));
    }
    void removeFromOutside(Long category) const {
        catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=%1"_s.arg(category));
    }
    QStringList takeShown() {
        QStringList texts;
        for (const MessageBox& box : std::exchange(user.shown, {}))
            texts.append(QString::number(box.flags) + u' ' + box.text);
        return texts;
    }

    ScriptedForms forms;
    QStringList offers;
};

const QString ringText =
    u"16 Eine Kategorie kann nicht in ihre eigene Unterkategorie verschoben oder kopiert werden."_s;

} // namespace

TEST_F(CategoryTransferTest, oneLevelOffersPositions) {
    EXPECT_EQ(choice(41, 60, 1), CategoryTransfer::SwapWithinLevel);
    EXPECT_EQ(offers,
              (QStringList{u"Position 1 und Position 3 vertauschen"_s, u"Von Position 1 an Position 3 verschieben"_s,
                           u"'Schrauben' als Unterkategorie von 'Ähren' einordnen"_s}));
    EXPECT_EQ(choice(41, 60, 2), CategoryTransfer::MoveWithinLevel);
    EXPECT_EQ(choice(41, 60, 3), CategoryTransfer::MakeSubcategory);
    EXPECT_EQ(choice(41, 60, 0), CategoryTransfer::Nothing);
}

TEST_F(CategoryTransferTest, twoLevelsOfferNames) {
    EXPECT_EQ(choice(411, 60, 1), CategoryTransfer::SwapLevels);
    EXPECT_EQ(offers,
              (QStringList{u"Die Kategorien 'Holz' und 'Ähren' vertauschen"_s, u"'Holz' vor 'Ähren' verschieben"_s,
                           u"'Holz' als Unterkategorie von 'Ähren' einordnen"_s}));
    EXPECT_EQ(choice(411, 60, 2), CategoryTransfer::MoveToLevel);
    EXPECT_EQ(choice(411, 60, 3), CategoryTransfer::MakeSubcategory);
    EXPECT_EQ(choice(411, 60, 0), CategoryTransfer::Nothing);
}

TEST_F(CategoryTransferTest, levelsWhoseFirstNodesBearOneTextAreTwo) {
    catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Kategoriename\"='Holz' WHERE \"Kategorie-Schlüssel\"=501"_s);
    show(41);
    ASSERT_EQ(node(501)->Text(), node(411)->Text());
    EXPECT_EQ(choice(412, 501, 2), CategoryTransfer::MoveToLevel);
}

TEST_F(CategoryTransferTest, cancelChangesNothing) {
    const QStringList before = treeLines();
    drag(41, 60, 0);
    EXPECT_EQ(treeLines(), before);
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryTransferTest, swapsTwoOfALevel) {
    drag(41, 60, 1);
    EXPECT_EQ(level(0), u"60@1* 50@2 41@3*"_s);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41);
    EXPECT_EQ(node(41)->Text(), u"003 - Schrauben"_s);
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryTransferTest, movesWithinALevelDownAndUp) {
    drag(41, 50, 2);
    EXPECT_EQ(level(0), u"50@1* 41@2* 60@3*"_s);
    drag(41, 60, 2);
    EXPECT_EQ(level(0), u"50@1* 60@2* 41@3*"_s);
    drag(41, 50, 2);
    EXPECT_EQ(level(0), u"41@1* 50@2* 60@3*"_s);
    EXPECT_EQ(level(41), u"411@1 412@2"_s); // what hangs below it comes along
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(tree().SelectedItem(), node(41));
}

TEST_F(CategoryTransferTest, movesBeforeOneOfAnotherLevel) {
    drag(411, 50, 2);
    EXPECT_EQ(level(0), u"41@1* 411@2* 50@3* 60@4*"_s);
    EXPECT_EQ(level(41), u"412@1*"_s);
    EXPECT_EQ(level(411), u"4111@1"_s);
    drag(50, 412, 2);
    EXPECT_EQ(level(41), u"50@1* 412@2*"_s);
    EXPECT_EQ(level(0), u"41@1* 411@2* 60@3*"_s);
    EXPECT_EQ(level(50), u"501@1"_s);
    EXPECT_TRUE(browser->Edited());
}

TEST_F(CategoryTransferTest, aLevelThatIsLeftEmptyHasNothingToNumber) {
    drag(501, 41, 2);
    EXPECT_EQ(level(50), QString());
    EXPECT_EQ(level(0), u"501@1* 41@2* 50@3* 60@4*"_s);
}

TEST_F(CategoryTransferTest, becomesTheLastSubcategory) {
    drag(60, 41, 3);
    EXPECT_EQ(level(41), u"411@1* 412@2* 60@3*"_s);
    EXPECT_EQ(level(0), u"41@1* 50@2*"_s);
    drag(501, 60, 3);
    EXPECT_EQ(level(60), u"501@1*"_s);
    EXPECT_EQ(treeLines().size(), 8);
}

TEST_F(CategoryTransferTest, swapsTwoLevels) {
    drag(411, 60, 1);
    EXPECT_EQ(level(0), u"41@1 50@2 411@3*"_s);
    EXPECT_EQ(level(41), u"60@1* 412@2"_s);
    EXPECT_EQ(level(411), u"4111@1"_s);
    EXPECT_TRUE(browser->Edited());
    EXPECT_TRUE(node(411)->Selected());
}

TEST_F(CategoryTransferTest, theArticleOfTheListStaysSelected) {
    browser->setSelected(acbPaneArticleList, 30);
    drag(41, 60, 1);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 30);
    EXPECT_EQ(list().SelectedItem()->Text(), u"002"_s);
}

TEST_F(CategoryTransferTest, aSwapWithAnAncestorAboveTheParentWouldMakeARing) {
    drag(41111, 411, 1);
    EXPECT_EQ(takeShown(), QStringList{ringText});
    EXPECT_EQ(level(41), u"411@1 412@2"_s);
    EXPECT_EQ(level(4111), u"41111@1"_s);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
    drag(41111, 411, 2); // before it is allowed
    EXPECT_EQ(level(41), u"41111@1* 411@2* 412@3*"_s);
}

// Two programs with old screens: what either of them does is harmless by itself.
TEST_F(CategoryTransferTest, aRingThatTheScreenDoesNotShowIsRefusedToo) {
    catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Parent\"=41 WHERE \"Kategorie-Schlüssel\"=50"_s);
    for (const auto& [target, option] : {std::pair{50, 3}, std::pair{501, 2}}) {
        tree().setSelectedItem(node(41));
        drag(41, target, option);
        EXPECT_EQ(takeShown(), QStringList{ringText});
        EXPECT_EQ(level(0), u"41@1 60@3"_s);
        EXPECT_EQ(level(50), u"501@1"_s);
        EXPECT_EQ(node(50)->Parent(), node(41)); // the screen is up to date again
        catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Parent\"=NULL WHERE \"Kategorie-Schlüssel\"=50"_s);
        show(41);
        catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Parent\"=41 WHERE \"Kategorie-Schlüssel\"=50"_s);
    }
    drag(41, 501, 1);
    EXPECT_EQ(takeShown(), QStringList{ringText});
    EXPECT_EQ(level(50), u"501@1"_s);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryTransferTest, aVanishedTargetTakesNothingIn) {
    removeFromOutside(60);
    drag(50, 60, 3);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(level(0), u"41@1 50@2"_s);
    EXPECT_EQ(treeLines().size(), 7);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryTransferTest, storedRingsDoNotHoldTheQuestionUp) {
    catalogue.addCategory({.key = 801, .name = u"A"_s, .parent = 802});
    catalogue.addCategory({.key = 802, .name = u"B"_s, .parent = 801});
    EXPECT_FALSE(categoryHangsBelow(catalogue.database(), 801, 41));
    EXPECT_TRUE(categoryHangsBelow(catalogue.database(), 801, 802));
    EXPECT_TRUE(categoryHangsBelow(catalogue.database(), 41111, 41));
    EXPECT_FALSE(categoryHangsBelow(catalogue.database(), 41, 41));
    EXPECT_FALSE(categoryHangsBelow(catalogue.database(), 999, 41));
    EXPECT_TRUE(categoryExists(catalogue.database(), 802));
    EXPECT_FALSE(categoryExists(catalogue.database(), 999));
}

TEST_F(CategoryTransferTest, aFailedSwapIsRolledBack) {
    forbid(u"UPDATE ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=60"_s);
    drag(41, 60, 1);
    EXPECT_TRUE(takeReports().value(0).startsWith(u"SwapCategories: "_s));
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

// Whoever numbers a level reports a failure, and the rest is stored all the same.
TEST_F(CategoryTransferTest, aLevelThatCannotBeNumberedDoesNotStopTheMove) {
    forbid(u"UPDATE OF \"Order\" ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=412"_s);
    drag(411, 50, 2);
    EXPECT_TRUE(takeReports().value(0).startsWith(u"OrderCategory: "_s));
    EXPECT_EQ(level(0), u"41@1* 411@2* 50@3* 60@4*"_s);
    EXPECT_EQ(level(41), u"412@2"_s);
    EXPECT_TRUE(browser->Edited());
}

TEST_F(CategoryTransferTest, withoutAWorkspaceTheTreeIsReadAgain) {
    browser->setWorkspace({});
    drag(41, 60, 2);
    EXPECT_EQ(takeReports(), QStringList{u"TVDragCategory: 91"_s});
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    EXPECT_EQ(treeLines().size(), 8);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryTransferTest, theFormMayCloseTheControl) {
    forms.answers.append([this](QDialog& dialog) {
        browser.reset();
        EXPECT_FALSE(dialog.isVisible());
    });
    const auto kept = hub().shared_from_this();
    const Ref<Node> source = node(41), target = node(60);
    kept->categoryTransfer->TVDragCategory(*source, *target);
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    EXPECT_EQ(depth(), 0);
}
