// What comes of a drag where it is dropped.
#include "browser/DragHost.h"

using namespace mkl;

namespace {

class Drops : public DragHost {
protected:
    Drops()
        : DragHost(dragCatalogue) {
        catalogue.addArticle(99, u"Zange"_s);
        begin(41);
    }

    void begin(Long category) {
        show(category);
        node(41)->setExpanded(true);
        node(411)->setExpanded(true);
        events.take();
    }
    void selectPool(std::initializer_list<Long> articles) const {
        pool().deselectOthers({});
        for (const Long article : articles)
            pool().setSelectedItem(poolRow(article));
    }
    Long rowOf(Long article) const { return poolRow(article)->Index(); }
    void dragPool(Long article, Qt::KeyboardModifiers modifiers = {}) {
        press(pool(), rowOf(article), modifiers);
        wait();
    }
    void dragRow(Long row, Qt::KeyboardModifiers modifiers = {}) {
        press(list(), row, modifiers);
        wait();
    }
    void dragNode(Long category, Qt::KeyboardModifiers modifiers = {}) {
        press(category, modifiers);
        wait();
    }
    /// Answers the next question about a copy.
    void answer(Long button) { user.answers = {button}; }
    void removeFromOutside(Long category) const {
        catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=%1"_s.arg(category));
    }
};

const QString ring = u"16 Eine Kategorie kann nicht in ihre eigene Unterkategorie verschoben oder kopiert werden."_s;

} // namespace

// --- pool to tree ---------------------------------------------------------------------------------------------------

TEST_F(Drops, thePoolOnANode) {
    selectPool({99, 30});
    dragPool(30);
    putAt(1);
    dropOn(50);
    EXPECT_EQ(articles(50), u"30@1* 99@2* 7@3* 12@4*"_s);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 50);
    EXPECT_EQ(tree().SelectedItem(), node(50));
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 30);
    EXPECT_EQ(textsOf(list()).size(), 4);
    EXPECT_EQ(selectedRow(list()), u"001 00030"_s);
    EXPECT_EQ(panel(u"LVArt"_s), u"5 Artikel / 2 ausgewählt"_s);
    EXPECT_TRUE(browser->Edited());
    expectEnd();
}

TEST_F(Drops, thePoolOnANodeRaisesNoSelectionOfTheCategory) {
    dragPool(99);
    putAt(0);
    dropOn(60);
    const QStringList raised = events.take();
    EXPECT_FALSE(raised.contains(u"ItemSelected(60, 2)"_s));
    EXPECT_TRUE(raised.contains(u"ItemClick(A-60, 60, 2)"_s));
}

TEST_F(Drops, thePoolOnANodeThatHasAllOfThem) {
    selectPool({7, 12});
    dragPool(7);
    dropOn(50);
    EXPECT_EQ(takeShown(),
              QStringList{u"16 Die markierten Artikel enthält die Kategorie bereits. Vorhandene Artikel werden nicht "
                          "erneut eingefügt."_s});
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 50); // the target is on show all the same
    EXPECT_FALSE(browser->Edited());
    expectEnd();
}

TEST_F(Drops, theCancelledPositionLeavesTheTargetOnShow) {
    dragPool(99);
    forms.answers.append([](QDialog& dialog) { dynamic_cast<frmArticleNewPos&>(dialog).BB.click(8); });
    dropOn(60);
    EXPECT_EQ(articles(60), QString());
    EXPECT_EQ(tree().SelectedItem(), node(60));
    expectEnd();
}

// The screen still shows what another program has deleted.
TEST_F(Drops, aCategoryThatIsGoneTakesNoArticles) {
    removeFromOutside(60);
    dragPool(99);
    putAt(0);
    dropOn(60);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(articles(60), QString());
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
    expectEnd();
}

TEST_F(Drops, articlesOfTheListAreNotLostToACategoryThatIsGone) {
    removeFromOutside(60);
    select(list(), {1, 2});
    dragRow(2);
    putAt(0);
    dropOn(60);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    EXPECT_EQ(depth(), 0);
}

// --- pool to list ---------------------------------------------------------------------------------------------------

TEST_F(Drops, thePoolOnARowOfTheList) {
    selectPool({99, 7});
    dragPool(99);
    forms.answers.append([](QDialog& dialog) {
        auto& form = dynamic_cast<frmArticleNewPos&>(dialog);
        EXPECT_EQ(form.UD.Value(), 2); // the place is proposed
        form.Opt(2).click();
        form.BB.click(16);
    });
    dropOn(list(), 2);
    EXPECT_EQ(articles(41), u"12@1 7@2* 99@3* 4711@4* 30@5*"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 99);
    EXPECT_EQ(selectedRow(list()), u"003 00099"_s);
    EXPECT_EQ(panel(u"LV"_s), u"5 Artikel in Kategorie 'Schrauben' (Kat-Nr. 41)"_s);
    expectEnd();
}

TEST_F(Drops, besideTheRowsCountsAsTheFirstRow) {
    list().setSelectedItem(list().ListItems().Item(3));
    dragPool(99);
    forms.answers.append([](QDialog& dialog) {
        auto& form = dynamic_cast<frmArticleNewPos&>(dialog);
        EXPECT_EQ(form.UD.Value(), 1);
        form.Opt(2).click();
        form.BB.click(16);
    });
    overFreeArea(list());
    dropOnFreeArea(list());
    EXPECT_EQ(articles(41), u"99@1* 12@2* 4711@3* 30@4*"_s);
    expectEnd();
}

TEST_F(Drops, anEmptyListTakesThePoolToo) {
    begin(60);
    dragPool(99);
    putAt(1);
    overFreeArea(list());
    dropOnFreeArea(list());
    EXPECT_EQ(articles(60), u"99@1*"_s);
    EXPECT_EQ(textsOf(list()), QStringList{u"001"_s});
}

// The keys of the rows of both lists are made of numbers of their own.
TEST_F(Drops, anArticleMayBearTheNumberOfTheAssignmentBelowIt) {
    const Long assignment = list().ListItems().Item(2)->Tag().toLong();
    catalogue.addArticle(assignment, u"Gleich"_s);
    browser->Populate();
    ASSERT_EQ(list().ListItems().Item(2)->Key(), poolRow(assignment)->Key());
    dragPool(assignment);
    putAt(2);
    dropOn(list(), 2);
    EXPECT_EQ(articles(41), u"12@1 %1@2* 4711@3* 30@4*"_s.arg(assignment));
}

TEST_F(Drops, theFilterForUnassignedOnesSwitchesItselfOff) {
    tick(u"KLVArt_UnCategorized"_s);
    browser->RefreshPane(acbPaneArticlePool);
    ASSERT_EQ(textsOf(pool()), QStringList{u"00099"_s});
    dragPool(99);
    putAt(0);
    dropOn(list(), 1);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 99@4*"_s);
    EXPECT_FALSE(hub().ui.menus.Item(u"KLVArt_UnCategorized").Checked());
    EXPECT_EQ(textsOf(pool()).size(), 5);
    EXPECT_EQ(takeShown(), QStringList());
}

TEST_F(Drops, theFilterStaysWhileSomeAreLeft) {
    catalogue.addArticle(98, u"Zirkel"_s);
    tick(u"KLVArt_UnCategorized"_s);
    browser->RefreshPane(acbPaneArticlePool);
    dragPool(99);
    putAt(0);
    dropOn(60);
    EXPECT_TRUE(hub().ui.menus.Item(u"KLVArt_UnCategorized").Checked());
    EXPECT_EQ(textsOf(pool()), QStringList{u"00098"_s});
    dragPool(98);
    putAt(0);
    overFreeArea(tree()); // the selected node counts as the one under the mouse before
    dropOn(60);
    EXPECT_FALSE(hub().ui.menus.Item(u"KLVArt_UnCategorized").Checked());
    EXPECT_EQ(textsOf(pool()).size(), 6);
}

TEST_F(Drops, withoutASelectedCategoryTheUserIsTold) {
    dragPool(99);
    tree().setSelectedItem({});
    dropOn(list(), 1);
    EXPECT_EQ(takeShown(), QStringList{u"48 Bitte markieren Sie zuerst die Ziel-Kategorie."_s});
    expectEnd();
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
    browser->Populate();
    dragPool(99);
    dropOnFreeArea(list());
    EXPECT_EQ(takeShown(),
              QStringList{u"48 Erstellen Sie zuerst mindestens eine Kategorie.\r\nKlicken Sie dazu mit der rechten "
                          "Maustaste auf den Bereich 'Verfügbare Kategorien' und im erscheinenden Kontextmenü auf "
                          "<Neu>."_s});
    expectEnd();
}

// --- list to tree ---------------------------------------------------------------------------------------------------

TEST_F(Drops, theListOnANodeMoves) {
    dragRow(2);
    putAt(0);
    dropOn(50);
    EXPECT_EQ(articles(50), u"7@1 12@2 4711@3*"_s);
    EXPECT_EQ(articles(41), u"12@1* 30@2*"_s); // from 1 again
    EXPECT_EQ(tree().SelectedItem(), node(50));
    EXPECT_EQ(selectedRow(list()), u"003 04711"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 4711);
    EXPECT_TRUE(events.take().contains(u"ItemSelected(50, 2)"_s));
    EXPECT_TRUE(browser->Edited());
    expectEnd();
}

TEST_F(Drops, severalRowsOfTheListMove) {
    select(list(), {1, 2, 3});
    dragRow(3);
    user.answers = {vbOK}; // one is there already
    putAt(1);
    dropOn(50);
    EXPECT_EQ(articles(50), u"4711@1* 30@2* 7@3* 12@4*"_s);
    EXPECT_EQ(articles(41), u"12@1*"_s);
    EXPECT_EQ(list().SelectedCount(), 1);
}

TEST_F(Drops, withCtrlTheListCopies) {
    dragRow(2, Qt::ControlModifier);
    putAt(0);
    dropOn(50);
    EXPECT_EQ(articles(50), u"7@1 12@2 4711@3*"_s);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    expectEnd();
}

TEST_F(Drops, theListOnItsOwnCategoryIsNothing) {
    dragRow(2);
    over(50);
    dropOn(41); // the same key
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    EXPECT_TRUE(forms.shown.isEmpty());
    expectEnd();
}

TEST_F(Drops, oneRowThatTheTargetHasIsTold) {
    dragRow(1);
    dropOn(50);
    EXPECT_EQ(takeShown(), QStringList{u"16 Der Artikel befindet sich bereits in der Kategorie."_s});
    EXPECT_EQ(tree().SelectedItem(), node(41));
    expectEnd();
}

// --- list to list ---------------------------------------------------------------------------------------------------

TEST_F(Drops, twoRowsSwap) {
    dragRow(1);
    forms.answers.append([](QDialog& dialog) {
        auto& form = dynamic_cast<frmArtCatBrowserOrder&>(dialog);
        EXPECT_EQ(form.lbl(1).Caption(), u"Position 1 und Position 3 vertauschen"_s);
        EXPECT_EQ(form.lbl(2).Caption(), u"Von Position 1 an Position 3 verschieben"_s);
        EXPECT_FALSE(form.Opt(3).isVisible());
        form.Opt(1).click();
        form.TB.Buttons(u"OK"_s).click();
    });
    dropOn(list(), 3);
    EXPECT_EQ(articles(41), u"30@1* 4711@2 12@3*"_s);
    EXPECT_EQ(selectedRow(list()), u"003 00012"_s);
    EXPECT_TRUE(browser->Edited());
    expectEnd();
}

TEST_F(Drops, aRowMovesToAnothersPlace) {
    dragRow(1);
    choose(2);
    dropOn(list(), 3);
    EXPECT_EQ(articles(41), u"4711@1* 30@2* 12@3*"_s);
    dragRow(3);
    choose(2);
    dropOn(list(), 1);
    EXPECT_EQ(articles(41), u"12@1* 4711@2* 30@3*"_s);
    EXPECT_EQ(selectedRow(list()), u"001 00012"_s);
}

TEST_F(Drops, theCancelledChoiceChangesNothing) {
    dragRow(1);
    choose(0);
    dropOn(list(), 3);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    EXPECT_FALSE(browser->Edited());
    expectEnd();
}

TEST_F(Drops, ofSeveralSelectedRowsTheDraggedOneMoves) {
    select(list(), {1, 2});
    dragRow(2);
    choose(1);
    dropOn(list(), 3);
    EXPECT_EQ(articles(41), u"12@1 30@2* 4711@3*"_s);
    EXPECT_EQ(list().SelectedCount(), 1);
}

TEST_F(Drops, aRowOnItselfOrBesideTheRowsIsNothing) {
    dragRow(1);
    over(list(), 2);
    dropOn(list(), 1);
    dragRow(1);
    overFreeArea(list());
    dropOnFreeArea(list());
    dragRow(1, Qt::ControlModifier); // and with Ctrl no row takes another one
    dropOn(list(), 3);
    EXPECT_TRUE(forms.shown.isEmpty());
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    expectEnd();
}

TEST_F(Drops, aFailedSwapIsReportedAndTheDragEnds) {
    catalogue.run(u"CREATE TRIGGER verboten BEFORE UPDATE ON ARTKAT BEGIN SELECT RAISE(ABORT, 'nein'); END"_s);
    dragRow(1);
    choose(1);
    dropOn(list(), 3);
    EXPECT_EQ(takeReports().size(), 1);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    expectEnd();
}

// --- tree to tree ---------------------------------------------------------------------------------------------------

TEST_F(Drops, aNodeOnANode) {
    dragNode(60);
    choose(3);
    dropOn(50);
    EXPECT_EQ(level(50), u"60@1*"_s);
    EXPECT_EQ(tree().SelectedItem(), node(60));
    expectEnd();
}

TEST_F(Drops, aNodeOnItsParentIsNothing) {
    dragNode(411);
    dropOn(41);
    dragNode(411, Qt::ControlModifier);
    dropOn(41);
    EXPECT_TRUE(forms.shown.isEmpty());
    EXPECT_EQ(takeShown(), QStringList());
    expectEnd();
}

TEST_F(Drops, aNodeOnItsDescendantIsToldOff) {
    dragNode(41);
    dropOn(4111);
    EXPECT_EQ(takeShown(), QStringList{ring});
    dragNode(41, Qt::ControlModifier);
    dropOn(411);
    EXPECT_EQ(takeShown(), QStringList{ring});
    dragNode(411); // below the top level nothing warns before the drop
    dropOn(4111);
    EXPECT_EQ(takeShown(), QStringList{ring});
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    expectEnd();
}

TEST_F(Drops, withCtrlANodeIsCopied) {
    answer(vbYes);
    dragNode(411, Qt::ControlModifier);
    dropOn(50);
    EXPECT_EQ(level(50), u"13@1*"_s);
    EXPECT_EQ(level(13), u"23@1*"_s);
    EXPECT_EQ(articles(13), u"7@1*"_s);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 13);
    EXPECT_EQ(tree().SelectedItem(), node(13));
    EXPECT_TRUE(node(41)->Expanded()); // what the source hangs below
    EXPECT_FALSE(browser->Edited());
    expectEnd();
}

TEST_F(Drops, aCopiedTopCategoryIsExpandedItself) {
    answer(vbYes);
    dragNode(41, Qt::ControlModifier);
    dropOn(60);
    EXPECT_EQ(level(60), u"13@1*"_s);
    EXPECT_TRUE(node(41)->Expanded());
    EXPECT_EQ(node(411)->Expanded(), browser->keepsView()); // as it was before the read
    EXPECT_EQ(tree().SelectedItem(), node(13));
}

TEST_F(Drops, aDeclinedCopyChangesNothing) {
    answer(vbNo);
    dragNode(411, Qt::ControlModifier);
    dropOn(50);
    EXPECT_EQ(level(50), QString());
    EXPECT_EQ(tree().SelectedItem(), node(411));
    expectEnd();
}

TEST_F(Drops, aTargetThatIsGoneIsToldAndTheTreeReadAgain) {
    removeFromOutside(50);
    dragNode(60);
    choose(3);
    dropOn(50);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(level(0), u"41@1 60@3"_s);
    EXPECT_EQ(tree().Nodes().Count(), 4);
    expectEnd();
}

// --- no way through -------------------------------------------------------------------------------------------------

TEST_F(Drops, aNodeOnTheListsOrThePoolIsNothing) {
    dragNode(60);
    over(list(), 1);
    EXPECT_EQ(icon(tree()), u"ImageNoDrop"_s);
    dropOn(list(), 1);
    dragNode(60);
    dropOn(pool(), 1);
    dragRow(1);
    dropOn(pool(), 1);
    EXPECT_TRUE(forms.shown.isEmpty());
    EXPECT_FALSE(browser->Edited());
    expectEnd();
}

TEST_F(Drops, theQuestionMayCloseTheControl) {
    const auto kept = hub().shared_from_this();
    dragRow(1);
    forms.answers.append([this](QDialog&) { browser.reset(); });
    dropOn(list(), 3);
    EXPECT_TRUE(kept->state.closed);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    EXPECT_EQ(depth(), 0);
}
