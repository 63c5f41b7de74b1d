#include "browser/DatedHost.h"
#include "browser/dialogs/frmNewCat.h"
#include "support/FixedReplica.h"
#include "support/ScriptedForms.h"

using namespace mkl;

namespace {

const QString forest = u"41 Schrauben: 12 Senkkopf, 30 Ösen\n"
                       "  411 Holz: 30 Ösen\n"
                       "    4111 Lang\n"
                       "  412 Blech {inaktiv}\n"
                       "50 Werkzeug\n"
                       "60 Ähren: 7 Ahle\n"_s;

class CategoryEditingTest : public DatedHost {
protected:
    explicit CategoryEditingTest(const QString& picture = forest)
        : DatedHost(picture) {
        browser->setHelper(makeRef<FixedReplica>(3));
        browser->setCurrentSenderID(1);
    }

    CategoryEditing& editing() const { return *hub().categoryEditing; }
    /// The user fills the form and confirms; option 0 leaves what is proposed.
    void fillIn(const QString& name, Long option = 0, const QString& note = {}, bool active = true) {
        forms.answers.append([=](QDialog& dialog) {
            auto& form = dynamic_cast<frmNewCat&>(dialog);
            form.txtCatName.setText(name);
            form.txtNote.setText(note);
            form.chkActive.setValue(active);
            if (option > 0) form.Opt(option).click();
            form.TB.Buttons(u"OK"_s).click();
        });
    }
    void make(Long selected, const QString& name, Long option = 0) {
        show(selected);
        fillIn(name, option);
        editing().kTV_New();
    }
    /// A category's column as text.
    QString value(Long category, const QString& column) const {
        const auto rows = catalogue.database()->OpenRecordset(
            u"SELECT [%1] FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=%2"_s.arg(column).arg(category),
            dao::dbOpenSnapshot);
        if (rows->Eof()) return u"fehlt"_s;
        const Variant found = rows->value(0);
        return found.isNull() ? u"Null"_s : found.toText();
    }
    Long categories() const {
        return catalogue.database()
            ->OpenRecordset(u"SELECT Count(*) FROM [ARTIKEL/KATEGORIEN]"_s, dao::dbOpenSnapshot)
            ->value(0)
            .toLong();
    }
    void deleteSelected(Long category, Long answer = vbYes) {
        show(category);
        user.answers = {answer};
        editing().kTV_Delete();
    }
    void activate(Long category, Long answer = vbYes) {
        show(category);
        captionActivation(hub().ui.menus.Item(u"kTV_Activate"), node(category)->Image().endsWith(u"On"));
        user.answers = {answer};
        editing().kTV_Activate();
    }
    void forbid(const QString& what) const {
        catalogue.run(u"CREATE TRIGGER verboten BEFORE %1 BEGIN SELECT RAISE(ABORT, 'nein'); END"_s.arg(what));
    }

    ScriptedForms forms;
};

} // namespace

// --- new ------------------------------------------------------------------------------------------------------------

TEST_F(CategoryEditingTest, aNewOneBehindTheSelected) {
    browser->setSelected(acbPaneArticleList, 30);
    show(41);
    fillIn(u"Nägel"_s, 2, u" viele   Nägel "_s);
    editing().kTV_New();
    EXPECT_EQ(level(0), u"41@1* 13@2* 50@3* 60@4*"_s);
    EXPECT_EQ(value(13, u"Kategoriename"_s), u"Nägel"_s);
    EXPECT_EQ(value(13, u"Bezeichnung"_s), u"viele Nägel"_s);
    EXPECT_EQ(value(13, u"Absender-Schlüssel"_s), u"1"_s);
    EXPECT_EQ(value(13, u"Aktiv"_s), Variant(true).toText());
    EXPECT_EQ(value(13, u"Parent"_s), u"Null"_s);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 13);
    EXPECT_EQ(tree().SelectedItem(), node(13));
    EXPECT_EQ(node(13)->Text(), u"002 - Nägel"_s);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 0);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(CategoryEditingTest, aNewOneBeforeTheSelected) {
    make(50, u"Nägel"_s, 1);
    EXPECT_EQ(level(0), u"41@1* 13@2* 50@3* 60@4*"_s);
}

TEST_F(CategoryEditingTest, beforeTheFirstItGetsPosition1) {
    make(41, u"Nägel"_s, 1);
    EXPECT_EQ(level(0), u"13@1* 41@2* 50@3* 60@4*"_s);
}

TEST_F(CategoryEditingTest, belowTheSelectedItComesLast) {
    make(41, u"Nägel"_s, 3);
    EXPECT_EQ(level(41), u"411@1* 412@2* 13@3*"_s);
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s);
    EXPECT_EQ(tree().SelectedItem()->Parent(), node(41));
    make(50, u"Ahlen"_s, 3);
    EXPECT_EQ(level(50), u"23@1*"_s);
}

TEST_F(CategoryEditingTest, anInactiveOne) {
    show(50);
    fillIn(u"Alt"_s, 2, {}, false);
    editing().kTV_New();
    EXPECT_EQ(value(13, u"Aktiv"_s), Variant(false).toText());
    EXPECT_EQ(value(13, u"Bezeichnung"_s), QString());
    EXPECT_EQ(node(13)->Image(), u"OrdnerZuOff"_s);
}

TEST_F(CategoryEditingTest, theFormShowsWhereItCanStand) {
    const auto proposed = [this](Long category) {
        Long option = 0;
        show(category);
        forms.answers.append([&](QDialog& dialog) {
            auto& form = dynamic_cast<frmNewCat&>(dialog);
            for (Long each = 1; each <= 3; ++each)
                if (form.Opt(each).Value()) option = each;
            EXPECT_TRUE(form.lbl(option).FontBold());
            EXPECT_EQ(form.lbl(option).ForeColor(), 128);
            EXPECT_EQ(form.chkActive.Value(), 1);
            form.TB.Buttons(u"Cancel"_s).click();
        });
        editing().kTV_New();
        return option;
    };
    EXPECT_EQ(proposed(41), 2);   // the first
    EXPECT_EQ(proposed(50), 2);   // in between
    EXPECT_EQ(proposed(60), 1);   // the last
    EXPECT_EQ(proposed(4111), 2); // the only one
    show(411);
    forms.answers.append([](QDialog& dialog) {
        auto& form = dynamic_cast<frmNewCat&>(dialog);
        EXPECT_EQ(form.lbl(1).Caption(), u"Vor der Kategorie 'Holz'"_s);
        EXPECT_EQ(form.lbl(2).Caption(), u"Nach der Kategorie 'Holz'"_s);
        EXPECT_EQ(form.lbl(3).Caption(), u"Als Unterkategorie von 'Holz' erstellen"_s);
        EXPECT_EQ(form.txtParentID.Text(), u"41"_s);
        EXPECT_EQ(form.txtCurrentID.Text(), u"411"_s);
        form.TB.Buttons(u"Cancel"_s).click();
    });
    editing().kTV_New();
    EXPECT_EQ(categories(), 6);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryEditingTest, theFirstOneOfAnEmptyTree) {
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
    browser->Populate();
    forms.answers.append([](QDialog& dialog) {
        auto& form = dynamic_cast<frmNewCat&>(dialog);
        EXPECT_FALSE(form.Frame1.isVisible());
        form.txtCatName.setText(u"Erste"_s);
        form.TB.Buttons(u"OK"_s).click();
    });
    editing().kTV_New();
    EXPECT_EQ(level(0), u"13@1*"_s);
    EXPECT_EQ(tree().SelectedItem(), node(13));
    EXPECT_TRUE(browser->Edited());
}

TEST_F(CategoryEditingTest, withNodesButNoSelectionNothingHappens) {
    show(41);
    tree().setSelectedItem({});
    editing().kTV_New();
    editing().kTV_Rename();
    editing().kTV_Delete();
    editing().kTV_Activate();
    EXPECT_TRUE(forms.shown.isEmpty());
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryEditingTest, theSenderComesFromTheWorkgroupFilter) {
    catalogue.addSender(7);
    browser->setCurrentSenderID(0);
    browser->setWorkgroupFilter(u"IN(7, 1)"_s);
    make(50, u"Nägel"_s, 2);
    EXPECT_EQ(browser->CurrentSenderID(), 7);
    EXPECT_EQ(value(13, u"Absender-Schlüssel"_s), u"7"_s);
}

TEST_F(CategoryEditingTest, withoutASenderThereIsNoForm) {
    browser->setCurrentSenderID(0);
    show(50);
    editing().kTV_New();
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.first().text, u"Es konnte kein Absender für die neue Kategorie ermittelt werden."_s);
    EXPECT_EQ(user.shown.first().flags, 16);
    EXPECT_EQ(categories(), 6);
}

TEST_F(CategoryEditingTest, aTakenNameIsAskedAboutOnItsLevelAlone) {
    show(50);
    user.answers = {vbYes};
    fillIn(u"schrauben"_s, 2);
    editing().kTV_New();
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.first().flags, 36);
    EXPECT_EQ(value(13, u"Kategoriename"_s), u"schrauben"_s);
    make(4111, u"Schrauben"_s, 2);
    EXPECT_EQ(user.shown.size(), 1);
}

TEST_F(CategoryEditingTest, aNameWithAnApostropheCountsAsFree) {
    make(50, u"Tim's"_s, 2);
    make(50, u"Tim's"_s, 2);
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_EQ(categories(), 8);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(CategoryEditingTest, withoutAKeyNothingIsWritten) {
    browser->setHelper({});
    make(50, u"Nägel"_s, 2);
    EXPECT_EQ(takeReports(), QStringList{u"NewID: 91"_s});
    EXPECT_EQ(categories(), 6);
    EXPECT_FALSE(browser->Edited());
    screen().setMousePointer(vbDefault);
}

TEST_F(CategoryEditingTest, aFailedInsertIsRolledBackAndTheTreeReadAnew) {
    forbid(u"INSERT ON \"ARTIKEL/KATEGORIEN\""_s);
    make(50, u"Nägel"_s, 2);
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"NewCategory: "_s));
    EXPECT_EQ(categories(), 6);
    EXPECT_EQ(tree().Nodes().Count(), 6);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryEditingTest, aFailedNumberingIsCommittedAllTheSame) {
    forbid(u"UPDATE ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=60"_s);
    make(50, u"Nägel"_s, 2);
    EXPECT_EQ(takeReports().size(), 1);
    EXPECT_EQ(level(0), u"41@1* 50@2* 13@3* 60@3"_s);
    EXPECT_TRUE(browser->Edited());
}

TEST_F(CategoryEditingTest, oneThatTheFilterHidesIsMadeAllTheSame) {
    browser->setFilter(acbPaneCategoryTree, u"[Kategoriename] Not Like 'N*'"_s);
    make(50, u"Nägel"_s, 2);
    EXPECT_EQ(value(13, u"Kategoriename"_s), u"Nägel"_s);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(tree().SelectedItem(), node(50));
}

TEST_F(CategoryEditingTest, aParentThatVanishesWhileTheFormIsOpenIsTold) {
    const auto makeWhileItGoes = [this](Long option) {
        show(50);
        forms.answers.append([this, option](QDialog& dialog) {
            catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=50"_s);
            auto& form = dynamic_cast<frmNewCat&>(dialog);
            form.txtCatName.setText(u"Nägel"_s);
            form.Opt(option).click();
            form.TB.Buttons(u"OK"_s).click();
        });
        editing().kTV_New();
    };
    makeWhileItGoes(3);
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.takeFirst().text, u"Der Datensatz der Kategorie wurde nicht gefunden."_s);
    EXPECT_EQ(level(50), u"13@1*"_s); // stored, as an orphan
    catalogue.addCategory({.key = 50, .name = u"Werkzeug"_s, .order = 2});
    makeWhileItGoes(2); // beside it there is nothing to miss
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_EQ(tree().SelectedItem(), node(23));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(CategoryEditingTest, theFormMayCloseTheControl) {
    show(50);
    forms.answers.append([this](QDialog&) { browser.reset(); });
    const auto kept = hub().shared_from_this();
    kept->categoryEditing->kTV_New();
    EXPECT_EQ(categories(), 6);
    EXPECT_EQ(takeReports(), QStringList());
}

// --- rename ---------------------------------------------------------------------------------------------------------

TEST_F(CategoryEditingTest, renames) {
    show(411);
    user.texts = {u"Holz & Spax"_s};
    editing().kTV_Rename();
    EXPECT_EQ(value(411, u"Kategoriename"_s), u"Holz & Spax"_s);
    EXPECT_EQ(node(411)->Text(), u"001 - Holz & Spax"_s);
    EXPECT_EQ(level(41), u"411@1 412@2"_s); // without the date
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryEditingTest, thePresentNameIsWrittenToo) {
    show(411);
    user.texts = {u"Holz"_s};
    editing().kTV_Rename();
    EXPECT_TRUE(browser->Edited());
}

TEST_F(CategoryEditingTest, cancelOrNoNameRenamesNothing) {
    show(411);
    editing().kTV_Rename();
    user.texts = {QString()};
    editing().kTV_Rename();
    EXPECT_EQ(value(411, u"Kategoriename"_s), u"Holz"_s);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryEditingTest, aVanishedCategoryCannotBeRenamed) {
    show(411);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=411"_s);
    user.texts = {u"neu"_s};
    editing().kTV_Rename();
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.first().text, u"Der Datensatz der Kategorie wurde nicht gefunden."_s);
    EXPECT_EQ(user.shown.first().flags, 16);
    EXPECT_EQ(node(411)->Text(), u"001 - Holz"_s);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryEditingTest, aFailedRenamingIsReported) {
    show(411);
    forbid(u"UPDATE ON \"ARTIKEL/KATEGORIEN\""_s);
    user.texts = {u"neu"_s};
    editing().kTV_Rename();
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"RenameCategory: "_s));
    EXPECT_EQ(node(411)->Text(), u"001 - Holz"_s);
}

// --- delete ---------------------------------------------------------------------------------------------------------

TEST_F(CategoryEditingTest, deletesWithAllBelow) {
    deleteSelected(41);
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.first().text,
              u"Möchten Sie die Kategorie 'Schrauben' mit allen Unterkategorien (Anzahl: 3) wirklich löschen?"_s);
    EXPECT_EQ(user.shown.first().flags, 36);
    EXPECT_EQ(categories(), 2);
    EXPECT_EQ(level(0), u"50@1* 60@2*"_s);
    EXPECT_EQ(articles(41), QString()); // the assignments went along
    EXPECT_EQ(tree().SelectedItem(), node(50));
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 50);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryEditingTest, theNeighbourIsTheOneBeforeIt) {
    events.record(browser.get(), &ArtCatBrowser::ItemClick, u"again"_s);
    show(60);
    events.take();
    user.answers = {vbYes};
    editing().kTV_Delete();
    EXPECT_EQ(tree().SelectedItem(), node(50));
    const QStringList raised = events.take();
    // The read selects the first node, then the neighbour is selected.
    const qsizetype first = raised.indexOf(u"ItemSelected(41, 2)"_s);
    const qsizetype second = raised.indexOf(u"ItemSelected(50, 2)"_s);
    EXPECT_GE(first, 0) << raised.join(u' ').toStdString();
    EXPECT_GT(second, first);
}

TEST_F(CategoryEditingTest, theQuestionTellsTheArticles) {
    deleteSelected(60, vbNo);
    EXPECT_EQ(
        user.shown.takeFirst().text,
        u"Möchten Sie die Kategorie 'Ähren' wirklich löschen? Zugeordnete Artikel: 1. Die Artikel selbst bleiben erhalten."_s);
    deleteSelected(50, vbNo);
    EXPECT_EQ(user.shown.takeFirst().text, u"Möchten Sie die Kategorie 'Werkzeug' wirklich löschen?"_s);
    browser->setShowArticleList(false);
    deleteSelected(60, vbNo);
    EXPECT_TRUE(user.shown.takeFirst().text.contains(u"Zugeordnete Artikel: 1."_s));
    EXPECT_EQ(categories(), 6);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryEditingTest, theOnlyOneOfALevelHasNoNeighbour) {
    deleteSelected(4111);
    EXPECT_EQ(categories(), 5);
    EXPECT_EQ(tree().SelectedItem(), node(41)); // what the read selects
    EXPECT_EQ(level(41), u"411@1 412@2"_s);
}

TEST_F(CategoryEditingTest, aVanishedCategoryLeavesTheTransactionOpen) {
    show(50);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=50"_s);
    user.answers = {vbYes};
    editing().kTV_Delete();
    ASSERT_EQ(user.shown.size(), 2);
    EXPECT_EQ(user.shown.last().text, u"Der Datensatz der Kategorie wurde nicht gefunden."_s);
    EXPECT_EQ(depth(), 1);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(takeReports(), QStringList());
    catalogue.workspace()->Rollback();
}

TEST_F(CategoryEditingTest, aVanishedDescendantLeavesTheRestPending) {
    show(41);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=4111"_s);
    user.answers = {vbYes};
    editing().kTV_Delete();
    EXPECT_EQ(depth(), 1);
    EXPECT_EQ(categories(), 3); // 41 and 411 are gone within the transaction
    EXPECT_EQ(tree().Nodes().Count(), 6);
    catalogue.workspace()->Rollback();
    EXPECT_EQ(categories(), 5);
}

TEST_F(CategoryEditingTest, aFailedDeletionIsRolledBackAndTheTreeReadAnew) {
    forbid(u"DELETE ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=412"_s);
    deleteSelected(41);
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"DeleteCategory: "_s));
    EXPECT_EQ(categories(), 6);
    EXPECT_EQ(tree().Nodes().Count(), 6);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryEditingTest, theQuestionMayCloseTheControl) {
    show(41);
    const auto kept = hub().shared_from_this();
    user.answers = {vbYes};
    user.whileShown = [this] { browser.reset(); };
    kept->categoryEditing->kTV_Delete();
    EXPECT_EQ(categories(), 6);
    EXPECT_EQ(depth(), 0);
}

// --- activate -------------------------------------------------------------------------------------------------------

TEST_F(CategoryEditingTest, inactiveItBecomesWithAllBelow) {
    activate(41);
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.first().text,
              u"Alle Unterkategorien (Anzahl: 3) werden ebenfalls deaktiviert. Möchten Sie fortfahren?"_s);
    for (const Long category : {41, 411, 4111, 412})
        EXPECT_EQ(value(category, u"Aktiv"_s), Variant(false).toText()) << category;
    EXPECT_EQ(value(50, u"Aktiv"_s), Variant(true).toText());
    EXPECT_TRUE(node(4111)->Image().endsWith(u"Off"_s));
    EXPECT_EQ(level(0), u"41@1 50@2 60@3"_s); // without the date
    EXPECT_TRUE(browser->Edited());
    activate(41); // alone
    EXPECT_EQ(user.shown.size(), 1);
    EXPECT_EQ(value(41, u"Aktiv"_s), Variant(true).toText());
    EXPECT_EQ(value(411, u"Aktiv"_s), Variant(false).toText());
}

TEST_F(CategoryEditingTest, theDescendantsComeFirst) {
    forbid(u"UPDATE ON \"ARTIKEL/KATEGORIEN\" WHEN OLD.\"Kategorie-Schlüssel\"=41"_s);
    activate(41);
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"TVActivate: "_s));
    EXPECT_EQ(value(4111, u"Aktiv"_s), Variant(false).toText()); // written before, and stays
    EXPECT_EQ(value(41, u"Aktiv"_s), Variant(true).toText());
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryEditingTest, noDeactivatesNothing) {
    activate(41, vbNo);
    EXPECT_EQ(value(411, u"Aktiv"_s), Variant(true).toText());
    EXPECT_FALSE(browser->Edited());
}

TEST_F(CategoryEditingTest, aVanishedOneIsReportedAndTheOthersAreWritten) {
    show(41);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=4111"_s);
    captionActivation(hub().ui.menus.Item(u"kTV_Activate"), true);
    user.answers = {vbYes};
    editing().kTV_Activate();
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(value(41, u"Aktiv"_s), Variant(false).toText());
    EXPECT_TRUE(browser->Edited());
}
