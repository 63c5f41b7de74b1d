#include "browser/dialogs/frmNewCat.h"

#include "browser/dialogs/Accessible.h"
#include "controls/Extender.h"
#include "support/CatalogueFixture.h"
#include "support/Printing.h"
#include "support/RecordingErrorHandler.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedForms.h"

#include <memory>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Category 42 is selected: its parent is 41, its siblings are 43 and 44.
class frmNewCatTest : public ::testing::Test {
protected:
    frmNewCatTest() { make(u"Like '*'"_s); }

    void make(const QString& workgroup) {
        form = std::make_unique<frmNewCat>(nullptr);
        form->A_Init(errors, library, catalogue.database(), workgroup);
        form->txtCurrentID.setText(u"42"_s);
        form->txtParentID.setText(u"41"_s);
    }
    bool isFree(const QString& name) const {
        form->txtCatName.setText(name);
        return form->NameIsFree();
    }
    bool check(const QString& name) const {
        form->txtCatName.setText(name);
        return form->CheckRecord();
    }
    /// The name and the place with which the form ends after the user did this.
    QString after(const ScriptedForms::Answer& answer) const {
        const ScriptedForms forms({answer});
        form->Show();
        return u"%1|%2"_s.arg(form->txtCatName.Text(), form->txtResult.Text());
    }
    QString afterKey(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
        return after([=](QDialog& shown) {
            typeText(shown, u"Haken"_s);
            pressKey(shown, key, modifiers);
        });
    }

    CatalogueFixture catalogue{u"41 Werkzeug\n    42 Zangen\n        45 Rohrzangen\n    43 Beile\n    44 Öfen\n"
                               "50 Metall {Absender 7}\n    51 Nieten {Absender 7}"_s};
    ScriptedAsker user;
    Ref<RecordingErrorHandler> errors = makeRef<RecordingErrorHandler>();
    Ref<FunctionLibrary> library = makeRef<FunctionLibrary>();
    std::unique_ptr<frmNewCat> form;
};

} // namespace

TEST_F(frmNewCatTest, LooksAsAgreed) {
    EXPECT_EQ(form->objectName(), u"frmNewCat"_s);
    EXPECT_EQ(form->Caption(), u"Neue Kategorie"_s);
    EXPECT_EQ(form->Frame1.title(), u"An welcher Position soll die neue Kategorie erstellt werden?"_s);
    EXPECT_EQ(form->Frame2.title(), u"Allgemeine Angaben"_s);
    EXPECT_EQ(form->lbl(1).Caption(), u"Vor der aktuellen Position"_s);
    EXPECT_EQ(form->lbl(2).Caption(), u"Nach der aktuellen Position"_s);
    EXPECT_EQ(form->lbl(3).Caption(), u"Als Unterkategorie von ## erstellen"_s);
    EXPECT_TRUE(form->Opt(2).Value());
    EXPECT_TRUE(form->lbl(2).FontBold());
    EXPECT_EQ(form->lblCatName.Caption(), u"Kategoriename"_s);
    EXPECT_EQ(form->lblNote.Caption(), u"Beschreibung"_s);
    EXPECT_EQ(form->txtNote.accessibleName(), u"Beschreibung"_s);
    EXPECT_EQ(form->chkActive.text(), u"Aktiv"_s);
    EXPECT_EQ(form->chkActive.Value(), 1);
    EXPECT_EQ(form->TB.Buttons(u"OK"_s).ToolTipText(), u"Kategorie erstellen"_s);
    EXPECT_EQ(form->TB.Buttons(u"Cancel"_s).ToolTipText(), u"Formular schließen"_s);
    for (const TextBox* hidden : {&form->txtCurrentID, &form->txtParentID, &form->txtResult})
        EXPECT_FALSE(Visible(*hidden)) << hidden->objectName().toStdString();
}

TEST_F(frmNewCatTest, ConfirmedItHoldsNameAndPlace) {
    EXPECT_EQ(after([](QDialog& shown) {
                  typeText(shown, u"Haken"_s);
                  clickOn(shown, u"OK"_s);
              }),
              u"Haken|2"_s);
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(frmNewCatTest, OptionsAreMarkedAndChosen) {
    EXPECT_EQ(after([this](QDialog& shown) {
                  typeText(shown, u"Haken"_s);
                  clickOn(shown, u"lbl3"_s);
                  EXPECT_EQ(form->lbl(3).ForeColor(), 128);
                  EXPECT_TRUE(form->lbl(3).FontBold());
                  EXPECT_EQ(form->lbl(2).ForeColor(), 0);
                  EXPECT_FALSE(form->lbl(2).FontBold());
                  clickOn(shown, u"OK"_s);
              }),
              u"Haken|3"_s);
    form->Opt(1).setValue(true);
    form->Opt_Click(1);
    EXPECT_TRUE(form->lbl(1).FontBold());
    EXPECT_FALSE(form->lbl(3).FontBold());
}

TEST_F(frmNewCatTest, CancelledItHoldsNoName) {
    EXPECT_EQ(after([](QDialog& shown) {
                  typeText(shown, u"Haken"_s);
                  clickOn(shown, u"Cancel"_s);
              }),
              u"|0"_s);
    EXPECT_EQ(after([](QDialog& shown) {
                  typeText(shown, u"Haken"_s);
                  closeForm(shown);
              }),
              u"|0"_s);
}

TEST_F(frmNewCatTest, KeysAnswer) {
    EXPECT_EQ(afterKey(Qt::Key_O, Qt::AltModifier), u"Haken|2"_s);
    EXPECT_EQ(afterKey(Qt::Key_A, Qt::AltModifier), u"|0"_s);
    EXPECT_EQ(afterKey(Qt::Key_Escape, Qt::NoModifier), u"|0"_s);
}

TEST_F(frmNewCatTest, OtherKeysAreForTheTextFields) {
    EXPECT_EQ(after([this](QDialog& shown) {
                  typeText(shown, u"AO"_s);
                  pressKey(shown, Qt::Key_Return);
                  pressKey(shown, Qt::Key_A, Qt::ControlModifier); // selects the text
                  EXPECT_TRUE(form->isVisible());
                  EXPECT_EQ(form->txtCatName.selectedText(), u"AO"_s);
                  pressKey(shown, Qt::Key_O, Qt::AltModifier);
              }),
              u"AO|2"_s);
}

TEST_F(frmNewCatTest, ANameIsRequired) {
    const ScriptedForms forms({[this](QDialog& shown) {
        form->chkActive.setFocus();
        clickOn(shown, u"OK"_s);
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(shown.focusWidget(), &form->txtCatName);
        typeText(shown, u"   "_s);
        clickOn(shown, u"OK"_s);
        EXPECT_TRUE(form->isVisible());
        shown.reject();
    }});
    form->Show();
    ASSERT_EQ(user.shown.size(), 2);
    for (const MessageBox& box : user.shown) {
        EXPECT_EQ(box.text, u"Bitte geben Sie einen Kategorienamen ein."_s);
        EXPECT_EQ(box.flags, vbCritical);
    }
}

TEST_F(frmNewCatTest, TheNameComesBackStorable) {
    EXPECT_TRUE(check(u"  Große \u0007Haken\t "_s));
    EXPECT_EQ(form->txtCatName.Text(), u"Große Haken"_s);
    EXPECT_FALSE(check(u" beile "_s)); // what is compared is the stored form; vbOK is no Yes
    EXPECT_EQ(user.shown.size(), 1);
}

TEST_F(frmNewCatTest, ANameIsTakenWhereASiblingBearsIt) {
    EXPECT_FALSE(isFree(u"Beile"_s));
    EXPECT_FALSE(isFree(u"öFEN"_s));
    EXPECT_TRUE(isFree(u"Haken"_s));
    EXPECT_TRUE(isFree(u"Werkzeug"_s));   // at the level above
    EXPECT_TRUE(isFree(u"Rohrzangen"_s)); // at the one below
    form->Opt(1).setValue(true);
    EXPECT_FALSE(isFree(u"Beile"_s));
    form->Opt(3).setValue(true);
    EXPECT_FALSE(isFree(u"Rohrzangen"_s));
    EXPECT_TRUE(isFree(u"Beile"_s));
}

TEST_F(frmNewCatTest, AtTheTopTheRootsAreTheSiblings) {
    form->txtParentID.clear();
    EXPECT_FALSE(isFree(u"Werkzeug"_s));
    EXPECT_FALSE(isFree(u"Metall"_s));
    EXPECT_TRUE(isFree(u"Beile"_s));
}

TEST_F(frmNewCatTest, OnlySiblingsOfTheWorkgroupCount) {
    make(u"=1"_s);
    form->txtParentID.clear();
    EXPECT_FALSE(isFree(u"Werkzeug"_s));
    EXPECT_TRUE(isFree(u"Metall"_s));
}

TEST_F(frmNewCatTest, WhatCannotBeFoundOutCountsAsFree) {
    catalogue.addCategory({.key = 46, .name = u"O'Neill"_s, .parent = 41});
    EXPECT_TRUE(isFree(u"O'Neill"_s));
    EXPECT_TRUE(check(u"O'Neill"_s));
    make(u"= ("_s);
    EXPECT_TRUE(isFree(u"Beile"_s));
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_TRUE(errors->reports.isEmpty());
}

TEST_F(frmNewCatTest, ATakenNameIsAsked) {
    user.answers = {vbNo, vbYes};
    EXPECT_EQ(after([this](QDialog& shown) {
                  typeText(shown, u"Beile"_s);
                  form->chkActive.setFocus();
                  clickOn(shown, u"OK"_s);
                  EXPECT_TRUE(form->isVisible());
                  EXPECT_EQ(shown.focusWidget(), &form->txtCatName);
                  EXPECT_EQ(form->txtCatName.Text(), u"Beile"_s);
                  clickOn(shown, u"OK"_s);
              }),
              u"Beile|2"_s);
    ASSERT_EQ(user.shown.size(), 2);
    EXPECT_EQ(user.shown.first().text, u"Auf dieser Ebene gibt es bereits eine Kategorie mit diesem Namen. Möchten Sie "
                                       "den Namen trotzdem verwenden?"_s);
    EXPECT_EQ(user.shown.first().flags, vbYesNo | vbQuestion);
}

TEST_F(frmNewCatTest, ItsOwnerMayGoWhileTheQuestionIsShown) {
    auto owner = std::make_unique<QWidget>();
    frmNewCat owned(owner.get());
    owned.A_Init(errors, library, catalogue.database(), u"Like '*'"_s);
    user.answers = {vbYes};
    user.whileShown = [&] { owner.reset(); };
    const ScriptedForms forms({[&](QDialog& shown) {
        typeText(shown, u"Werkzeug"_s);
        clickOn(shown, u"OK"_s);
    }});
    owned.Show();
    EXPECT_EQ(user.shown.size(), 1);
    EXPECT_EQ(owned.txtCatName.Text(), QString());
    EXPECT_EQ(owned.txtResult.Text(), u"0"_s);
}

TEST_F(frmNewCatTest, AFailingMessageIsNotThrownThroughTheEventLoop) {
    class Failing final : public Asker {
    public:
        Long ask(const MessageBox&) override { throwError(err::ObjectNotSet); }
        std::optional<QString> askText(const QString&, const QString&, const QString&) override { return {}; }
    } failing;
    const ScriptedForms forms({[&](QDialog& shown) {
        Asker* const former = setAsker(&failing);
        clickOn(shown, u"OK"_s);
        setAsker(former);
        EXPECT_TRUE(form->isVisible());
        shown.reject();
    }});
    form->Show();
    ASSERT_EQ(errors->reports.size(), 1);
    EXPECT_EQ(errors->reports.first().procName, u"CheckRecord"_s);
}

TEST_F(frmNewCatTest, WithoutAnyCategoryThePlaceIsNotAsked) {
    Single with = 0;
    after([&](QDialog& shown) {
        with = form->Height();
        shown.reject();
    });
    form->Frame1.setVisible(false);
    form->txtParentID.clear();
    form->txtCurrentID.clear();
    EXPECT_EQ(after([&](QDialog& shown) {
                  EXPECT_LT(form->Height(), with);
                  EXPECT_FALSE(form->Opt(2).isVisible());
                  typeText(shown, u"Haken"_s);
                  pressKey(shown, Qt::Key_O, Qt::AltModifier);
              }),
              u"Haken|2"_s);
}

TEST_F(frmNewCatTest, LetsGoOfWhatItWasGiven) {
    class Watched final : public ErrorHandler {
    public:
        explicit Watched(bool& gone)
            : gone_(gone) {}
        ~Watched() override { gone_ = true; }

    private:
        bool& gone_;
    };
    bool gone = false;
    {
        frmNewCat given(nullptr);
        given.A_Init(makeRef<Watched>(gone), library, catalogue.database(), {});
        EXPECT_FALSE(gone);
    }
    EXPECT_TRUE(gone);
}

TEST_F(frmNewCatTest, TabGoesFromTheNameToTheButtons) {
    after([this](QDialog& shown) {
        QStringList visited;
        for (int step = 0; step < 5; ++step) {
            visited += shown.focusWidget()->objectName();
            pressKey(shown, Qt::Key_Tab);
        }
        EXPECT_EQ(visited, (QStringList{u"txtCatName"_s, u"txtNote"_s, u"chkActive"_s, u"OK"_s, u"Cancel"_s}));
        EXPECT_EQ(shown.focusWidget(), &form->Opt(2)); // the one of the options that is set
        shown.reject();
    });
}

TEST_F(frmNewCatTest, EveryControlHasAName) {
    after([](QDialog& shown) {
        EXPECT_EQ(namelessControls(shown), QStringList());
        shown.reject();
    });
}

TEST_F(frmNewCatTest, EverythingFits) {
    const QString name = u"Sechskantschrauben mit Flansch & Vollgewinde aus Stahl, verzinkt"_s;
    for (Long index = 1; index <= 3; ++index)
        form->lbl(index).setCaption(u"Als Unterkategorie von '%1' erstellen"_s.arg(name));
    after([this](QDialog& shown) {
        for (const QWidget* control : std::initializer_list<const QWidget*>{&form->Frame1, &form->Frame2, &form->TB})
            EXPECT_TRUE(form->rect().contains(control->geometry())) << control->objectName().toStdString();
        for (Long index = 1; index <= 3; ++index) {
            const Label& label = form->lbl(index);
            EXPECT_TRUE(label.toolTip().isEmpty());
            EXPECT_LE(Top(label) + label.TextHeight(Width(label), true), Height(form->pic));
        }
        for (const QWidget* control : form->Frame2.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            EXPECT_TRUE(form->Frame2.rect().contains(control->geometry())) << control->objectName().toStdString();
        shown.reject();
    });
}

} // namespace mkl
