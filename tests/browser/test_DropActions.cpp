#include "browser/AssignmentHost.h"
#include "browser/dialogs/frmArticleNewPos.h"
#include "support/ScriptedForms.h"

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse, 30 Ösen\n"
                     "50 Werkzeug: 7 Ahle, 12 Senkkopf\n"
                     "60 Leer\n"_s;

class DropActionsTest : public AssignmentHost {
protected:
    DropActionsTest()
        : AssignmentHost(shop) {
        catalogue.addArticle(99, u"Zange"_s);
        show(41);
    }

    DropActions& drop() const { return *hub().dropActions; }
    /// The next dialog puts the articles there: 0 = at the end.
    void choose(Long position) {
        forms.answers.append([position](QDialog& dialog) {
            auto& form = dynamic_cast<frmArticleNewPos&>(dialog);
            form.Opt(position == 0 ? 1 : position == 1 ? 0 : 2).click();
            if (position > 1) form.UD.setValue(position);
            form.BB.click(16);
        });
    }
    void cancel() {
        forms.answers.append([](QDialog& dialog) { dynamic_cast<frmArticleNewPos&>(dialog).BB.click(8); });
    }
    void selectPool(std::initializer_list<Long> articles) const {
        pool().deselectOthers({});
        for (const Long article : articles)
            pool().setSelectedItem(poolRow(article));
    }
    Long check(Long category, acbPanes pane) {
        ArticleAssignment::ItemList items;
        const Long count = drop().DragDrop_CheckCat(category, items, pane);
        EXPECT_TRUE(count == 0 || count == static_cast<Long>(items.size()));
        return count;
    }
    Long addFromPool(Long category, Long position = 0) {
        return drop().DragDrop_AddArticles(category, u"Ziel"_s, acbPaneArticlePool, 0, {}, position);
    }
    /// The texts that were shown since the last call.
    QStringList takeShown() {
        QStringList texts;
        for (const MessageBox& box : std::exchange(user.shown, {}))
            texts.append(QString::number(box.flags) + u' ' + box.text.section(u'.', 0, 0));
        return texts;
    }

    ScriptedForms forms;
};

} // namespace

TEST_F(DropActionsTest, oneArticleOfTheListMayBeAdded) {
    select(list(), {2});
    EXPECT_EQ(check(60, acbPaneArticleList), 1);
    EXPECT_EQ(check(41, acbPaneArticleList), 0);
    EXPECT_EQ(takeShown(), QStringList{u"16 Der Artikel befindet sich bereits in der Kategorie"_s});
    EXPECT_EQ(list().SelectedCount(), 1);
}

TEST_F(DropActionsTest, withoutARowTheCheckFailsAndSaysSo) {
    list().ListItems().Clear();
    EXPECT_EQ(check(60, acbPaneArticleList), 0);
    EXPECT_EQ(takeReports(), QStringList{u"DragDrop_CheckCat: 91"_s});
}

TEST_F(DropActionsTest, nothingSelectedInThePoolIsNothing) {
    pool().deselectOthers({});
    EXPECT_EQ(check(60, acbPaneArticlePool), 0);
    EXPECT_EQ(takeShown(), QStringList());
}

TEST_F(DropActionsTest, ofSeveralThePresentOnesLoseTheirSelection) {
    selectPool({7, 12, 99});
    user.answers = {vbOK};
    EXPECT_EQ(check(41, acbPaneArticlePool), 2);
    EXPECT_EQ(takeShown(), QStringList{u"49 1 Artikel enthält die Kategorie bereits"_s});
    EXPECT_FALSE(poolRow(12)->Selected());
    EXPECT_TRUE(poolRow(7)->Selected());
    EXPECT_EQ(pool().SelectedCount(), 2);
}

TEST_F(DropActionsTest, cancelGivesUpButTheyStayDeselected) {
    selectPool({7, 12, 99});
    user.answers = {vbCancel};
    EXPECT_EQ(check(41, acbPaneArticlePool), 0);
    EXPECT_EQ(pool().SelectedCount(), 2);
}

TEST_F(DropActionsTest, whereAllArePresentTheMarkedOnesAreTold) {
    selectPool({12, 30});
    EXPECT_EQ(check(41, acbPaneArticlePool), 0);
    EXPECT_EQ(takeShown(), QStringList{u"16 Die markierten Artikel enthält die Kategorie bereits"_s});
    EXPECT_EQ(pool().SelectedCount(), 0);
    selectPool({12});
    EXPECT_EQ(check(41, acbPaneArticlePool), 0);
    EXPECT_EQ(takeShown(), QStringList{u"16 Die markierten Artikel enthält die Kategorie bereits"_s});
    select(list(), {1, 3});
    EXPECT_EQ(check(41, acbPaneArticleList), 0);
    EXPECT_EQ(takeShown(), QStringList{u"16 Die markierten Artikel enthält die Kategorie bereits"_s});
}

TEST_F(DropActionsTest, addsAtTheFirstPosition) {
    selectPool({7, 99});
    choose(1);
    EXPECT_EQ(addFromPool(41), 2);
    EXPECT_EQ(articles(41), u"7@1* 99@2* 12@3* 4711@4* 30@5*"_s);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(DropActionsTest, addsBehindTheLastWithoutShiftingAnything) {
    selectPool({7, 99});
    choose(0);
    EXPECT_EQ(addFromPool(41), 2);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3 7@4* 99@5*"_s);
}

TEST_F(DropActionsTest, addsInBetween) {
    selectPool({7, 99});
    choose(2);
    EXPECT_EQ(addFromPool(41, 3), 2);
    EXPECT_EQ(articles(41), u"12@1 7@2* 99@3* 4711@4* 30@5*"_s);
}

TEST_F(DropActionsTest, anEmptyCategoryTakesThemAtPosition1) {
    selectPool({7, 99});
    forms.answers.append([](QDialog& dialog) {
        auto& form = dynamic_cast<frmArticleNewPos&>(dialog);
        EXPECT_FALSE(form.Opt(1).isEnabled());
        EXPECT_FALSE(form.Opt(2).isEnabled());
        form.BB.click(16);
    });
    EXPECT_EQ(addFromPool(60, 7), 2);
    EXPECT_EQ(articles(60), u"7@1* 99@2*"_s);
}

TEST_F(DropActionsTest, theCancelledDialogChangesNothing) {
    selectPool({7});
    cancel();
    EXPECT_EQ(addFromPool(41), 0);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(DropActionsTest, aMoveLeavesTheOldCategoryDense) {
    select(list(), {1, 2});
    user.answers = {vbOK}; // the screw is in both
    forms.answers.append([](QDialog& dialog) {
        auto& form = dynamic_cast<frmArticleNewPos&>(dialog);
        EXPECT_TRUE(form.lblWarning.isVisible());
        form.BB.click(16);
    });
    EXPECT_EQ(drop().DragDrop_AddArticles(50, u"Werkzeug"_s, acbPaneArticleList, 41, u"Schrauben"_s, 0), 1);
    EXPECT_EQ(articles(50), u"4711@1* 7@2* 12@3*"_s);
    EXPECT_EQ(articles(41), u"12@1* 30@2*"_s);
}

TEST_F(DropActionsTest, aCopyLeavesTheOldCategoryAlone) {
    select(list(), {2});
    choose(0);
    EXPECT_EQ(drop().DragDrop_AddArticles(50, u"Werkzeug"_s, acbPaneArticleList, 0, {}, 0), 1);
    EXPECT_EQ(articles(50), u"7@1 12@2 4711@3*"_s);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
}

TEST_F(DropActionsTest, fromThePoolNothingIsTakenOutOfAnOldCategory) {
    selectPool({99});
    choose(1);
    EXPECT_EQ(drop().DragDrop_AddArticles(60, u"Leer"_s, acbPaneArticlePool, 41, u"Schrauben"_s, 0), 1);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
}

TEST_F(DropActionsTest, aMissingPositionIsReportedAndTheRowsComeAllTheSame) {
    catalogue.run(u"UPDATE ARTKAT SET [Order]=9 WHERE [Kategorie-Schlüssel]=41 AND [Order]=3"_s);
    selectPool({99});
    choose(3);
    EXPECT_EQ(addFromPool(41), 1);
    EXPECT_EQ(takeReports(), (QStringList{u"-1072"_s, u"Cat_RenumberArticles: 3021"_s}));
    EXPECT_EQ(articles(41), u"12@1 4711@2 99@3* 30@9"_s);
    EXPECT_TRUE(browser->Edited());
}

TEST_F(DropActionsTest, aFailedInsertKeepsWhatWasWrittenBefore) {
    catalogue.run(u"CREATE TRIGGER verboten BEFORE INSERT ON ARTKAT WHEN NEW.[Artikel-Schlüssel] = 99 "
                  "BEGIN SELECT RAISE(ABORT, 'nein'); END"_s);
    selectPool({7, 99});
    choose(1);
    EXPECT_EQ(addFromPool(41), 2); // the caller is not told
    EXPECT_EQ(takeReports().size(), 1);
    EXPECT_EQ(articles(41), u"7@1* 12@3* 4711@4* 30@5*"_s);
    EXPECT_EQ(depth(), 0);
}

TEST_F(DropActionsTest, withoutAWorkspaceTheFailureIsReported) {
    browser->setWorkspace({});
    selectPool({99});
    choose(1);
    EXPECT_EQ(addFromPool(41), 0);
    EXPECT_EQ(takeReports(), QStringList{u"DragDrop_AddArticles: 91"_s});
    EXPECT_FALSE(browser->Edited());
}

TEST_F(DropActionsTest, theDialogMayCloseTheControl) {
    selectPool({99});
    forms.answers.append([this](QDialog& dialog) {
        browser.reset();
        EXPECT_FALSE(dialog.isVisible());
    });
    const auto kept = hub().shared_from_this();
    EXPECT_EQ(kept->dropActions->DragDrop_AddArticles(41, u"Ziel"_s, acbPaneArticlePool, 0, {}, 0), 0);
    EXPECT_EQ(articles(41), u"12@1 4711@2 30@3"_s);
    EXPECT_EQ(depth(), 0);
}

TEST_F(DropActionsTest, theSelectionOfThePoolGoesIntoTheSelectedCategory) {
    selectPool({7, 99});
    forms.answers.append([](QDialog& dialog) {
        auto& form = dynamic_cast<frmArticleNewPos&>(dialog);
        EXPECT_EQ(form.lblInfo.Caption(), u"2 Artikel werden in die Kategorie 'Schrauben' eingefügt."_s);
        form.BB.click(16);
    });
    events.take();
    drop().addPoolSelection();
    EXPECT_EQ(articles(41), u"7@1* 99@2* 12@3* 4711@4* 30@5*"_s);
    EXPECT_EQ(textsOf(list()).size(), 5);
    EXPECT_EQ(selectedRow(list()), u"002 00099"_s); // the row that has the focus
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 99);
    EXPECT_EQ(panel(u"LV"_s), u"5 Artikel in Kategorie 'Schrauben' (Kat-Nr. 41)"_s);
    EXPECT_EQ(panel(u"LVArt"_s), u"5 Artikel / 2 ausgewählt"_s);
}

TEST_F(DropActionsTest, withoutACategoryNothingIsAdded) {
    tree().setSelectedItem({});
    selectPool({99});
    drop().addPoolSelection();
    EXPECT_FALSE(browser->Edited());
}
