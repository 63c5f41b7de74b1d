#include "browser/dialogs/frmArticleNewPos.h"

#include "browser/dialogs/Accessible.h"
#include "controls/Extender.h"
#include "support/Printing.h"
#include "support/ScriptedForms.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

struct Given {
    QString category = u"Schrauben"_s;
    QString oldCategory = {};
    Long maxOrder = 12;
    Long articles = 2;
    Long position = 0;
};

class frmArticleNewPosTest : public ::testing::Test {
protected:
    void init(const Given& given = {}) {
        form.pubInit(given.category, given.oldCategory, given.maxOrder, given.articles, given.position);
    }
    /// chkCancel after the user did this.
    Integer after(const ScriptedForms::Answer& answer) {
        const ScriptedForms forms({answer});
        form.Show();
        return form.chkCancel.Value();
    }
    Integer afterKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return after([=](QDialog& shown) { pressKey(shown, key, modifiers); });
    }
    Long chosen() const { return form.Opt(0).Value() ? 0 : form.Opt(1).Value() ? 1 : 2; }

    frmArticleNewPos form{nullptr};
};

Single bottom(const QWidget& control) {
    return Top(control) + Height(control);
}

} // namespace

TEST_F(frmArticleNewPosTest, LooksAsAgreed) {
    init();
    EXPECT_EQ(form.Caption(), u"Position festlegen"_s);
    EXPECT_EQ(form.Frame1.title(), u"Einfügeposition"_s);
    EXPECT_EQ(form.Opt(0).text(), u"An Position 1"_s);
    EXPECT_EQ(form.Opt(1).text(), u"An letzter Position"_s);
    EXPECT_EQ(form.Opt(2).text(), u"An dieser Position:"_s);
    EXPECT_EQ(form.BB.Button(16).Caption(), u"&OK"_s);
    EXPECT_EQ(form.BB.Button(16).ToolTipText(), u"Aktion ausführen"_s);
    EXPECT_EQ(form.BB.Button(8).Caption(), u"&Abbrechen"_s);
    EXPECT_EQ(form.BB.Button(8).ToolTipText(), QString());
    EXPECT_EQ(form.chkCancel.Value(), 1);
    EXPECT_FALSE(Visible(form.chkCancel));
    EXPECT_EQ(form.lblWarning.ForeColor(), 255);
}

TEST_F(frmArticleNewPosTest, TellsOfArticlesThatComeIn) {
    init();
    EXPECT_EQ(form.lblInfo.Caption(), u"2 Artikel werden in die Kategorie 'Schrauben' eingefügt."_s);
    EXPECT_FALSE(Visible(form.lblWarning));
}

TEST_F(frmArticleNewPosTest, TellsOfArticlesThatAreMoved) {
    init({.category = u"Schrauben"_s, .oldCategory = u"Muttern"_s, .articles = 1});
    EXPECT_EQ(form.lblInfo.Caption(), u"1 Artikel werden in die Kategorie 'Schrauben' verschoben."_s);
    EXPECT_EQ(form.lblWarning.Caption(),
              u"Beachten Sie, dass die Artikel verschoben und daher aus der Kategorie 'Muttern' gelöscht werden."_s);
    EXPECT_TRUE(Visible(form.lblWarning));
}

TEST_F(frmArticleNewPosTest, NamesStandAsTheyAre) {
    const QString name = u"<b>Öl & Fett</b> %1 %3 #AKT#"_s;
    init({.category = name, .oldCategory = name});
    EXPECT_EQ(form.lblInfo.Caption(), u"2 Artikel werden in die Kategorie '"_s + name + u"' verschoben."_s);
    EXPECT_TRUE(form.lblWarning.Caption().contains(u"'"_s + name + u"'"_s));
    EXPECT_EQ(form.lblInfo.textFormat(), Qt::PlainText);
    EXPECT_EQ(form.lblInfo.buddy(), nullptr);
}

TEST_F(frmArticleNewPosTest, TheNumberGoesFromOneToTheHighestPosition) {
    init();
    EXPECT_EQ(form.UD.Minimum(), 1);
    EXPECT_EQ(form.UD.Maximum(), 12);
    EXPECT_EQ(form.UD.Value(), 1);
    EXPECT_FALSE(form.UD.Enabled());
    EXPECT_EQ(chosen(), 0);
    EXPECT_TRUE(form.Opt(1).isEnabled());
    EXPECT_TRUE(form.Opt(2).isEnabled());
}

TEST_F(frmArticleNewPosTest, AProposedPositionIsPreselectedFromTwoOn) {
    init({.position = 1});
    EXPECT_EQ(chosen(), 0);
    init({.position = 2});
    EXPECT_EQ(chosen(), 2);
    EXPECT_EQ(form.UD.Value(), 2);
    EXPECT_TRUE(form.UD.Enabled());
    init({.position = 99});
    EXPECT_EQ(form.UD.Value(), 12);
}

TEST_F(frmArticleNewPosTest, ACategoryWithoutRowsOffersTheFirstPositionAlone) {
    init({.maxOrder = 0, .position = 5});
    EXPECT_EQ(chosen(), 0);
    EXPECT_FALSE(form.Opt(1).isEnabled());
    EXPECT_FALSE(form.Opt(2).isEnabled());
    EXPECT_FALSE(form.UD.Enabled());
    EXPECT_EQ(form.UD.Maximum(), 1000);
    EXPECT_EQ(form.UD.Value(), 5);
}

TEST_F(frmArticleNewPosTest, TheNumberIsEnabledWhileItsOptionHolds) {
    init();
    const auto answer = [this](QDialog& shown) {
        clickOn(shown, u"Opt2"_s);
        EXPECT_TRUE(form.UD.Enabled());
        clickOn(shown, u"Opt1"_s);
        EXPECT_FALSE(form.UD.Enabled());
        EXPECT_EQ(chosen(), 1);
        form.Opt(2).setValue(true);
        EXPECT_TRUE(form.UD.Enabled());
        clickOn(shown, u"Opt0"_s);
        EXPECT_FALSE(form.UD.Enabled());
        clickOn(shown, u"Button16"_s);
    };
    EXPECT_EQ(after(answer), 0);
    EXPECT_EQ(chosen(), 0);
}

TEST_F(frmArticleNewPosTest, ButtonsAnswer) {
    init();
    EXPECT_EQ(after([](QDialog& shown) { clickOn(shown, u"Button16"_s); }), 0);
    EXPECT_EQ(after([](QDialog& shown) { clickOn(shown, u"Button8"_s); }), 1);
}

TEST_F(frmArticleNewPosTest, KeysAnswer) {
    init({.position = 3});
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        EXPECT_EQ(afterKey(enter), 0);
        EXPECT_EQ(afterKey(Qt::Key_Escape), 1);
    }
    for (const auto modifier : {Qt::AltModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
        EXPECT_EQ(afterKey(Qt::Key_O, modifier), 0);
        EXPECT_EQ(afterKey(Qt::Key_A, modifier), 1);
    }
}

TEST_F(frmArticleNewPosTest, KeysAnswerFromTheNumberField) {
    init({.position = 3});
    const auto inField = [this](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        return after([=, this](QDialog& shown) {
            form.UD.setFocus();
            form.UD.selectAll();
            typeText(shown, u"7"_s);
            pressKey(shown, key, modifiers);
        });
    };
    EXPECT_EQ(inField(Qt::Key_Return, Qt::NoModifier), 0);
    EXPECT_EQ(form.UD.Value(), 7);
    EXPECT_EQ(inField(Qt::Key_A, Qt::ControlModifier), 1);
    EXPECT_EQ(inField(Qt::Key_O, Qt::ShiftModifier), 0);
    EXPECT_EQ(inField(Qt::Key_Escape, Qt::NoModifier), 1);
}

TEST_F(frmArticleNewPosTest, PlainLettersDoNot) {
    init({.position = 3});
    const auto answer = [this](QDialog& shown) {
        form.UD.setFocus();
        pressKey(shown, Qt::Key_A);
        pressKey(shown, Qt::Key_O);
        EXPECT_TRUE(form.isVisible());
        pressKey(shown, Qt::Key_Escape);
    };
    EXPECT_EQ(after(answer), 1);
}

TEST_F(frmArticleNewPosTest, AButtonThatIsOffIsNotPressedByAKey) {
    init();
    form.BB.Button(16).setEnabled(false);
    const auto answer = [this](QDialog& shown) {
        pressKey(shown, Qt::Key_Return);
        pressKey(shown, Qt::Key_O, Qt::AltModifier);
        EXPECT_TRUE(form.isVisible());
        pressKey(shown, Qt::Key_Escape);
    };
    EXPECT_EQ(after(answer), 1);
}

TEST_F(frmArticleNewPosTest, ClosedByItsFrameItIsCancelled) {
    init();
    form.chkCancel.setValue(0);
    EXPECT_EQ(after(closeForm), 1);
}

TEST_F(frmArticleNewPosTest, StandsAsMeasured) {
    init({.oldCategory = u"Muttern"_s});
    EXPECT_EQ(Top(form.Frame1), bottom(form.lblInfo) + 100);
    EXPECT_EQ(Top(form.lblWarning), bottom(form.Frame1) + 50);
    EXPECT_EQ(form.BB.Top(), bottom(form.lblWarning) + 50);
    EXPECT_EQ(form.ScaleHeight(), form.BB.Top() + form.BB.Height() + 50);
    EXPECT_EQ(form.BB.Left(), (form.ScaleWidth() - form.BB.Width()) / 2);
}

TEST_F(frmArticleNewPosTest, WithoutAWarningItIsShorter) {
    init();
    EXPECT_EQ(form.BB.Top(), bottom(form.Frame1) + 50 + 50);
    EXPECT_EQ(form.ScaleHeight(), form.BB.Top() + form.BB.Height() + 50);
}

TEST_F(frmArticleNewPosTest, CentresItsBarWhateverItsWidth) {
    init();
    const auto answer = [this](QDialog& shown) {
        form.setWidth(9000);
        EXPECT_EQ(form.BB.Left(), (9000 - form.BB.Width()) / 2);
        shown.reject();
    };
    after(answer);
}

TEST_F(frmArticleNewPosTest, LongNamesNeitherCutNorSpreadIt) {
    init();
    const Single width = form.Width();
    const Single height = form.Height();
    init({.category = u"Sechskantschrauben mit Flansch und Vollgewinde aus Stahl verzinkt"_s});
    EXPECT_EQ(form.Width(), width);
    EXPECT_GT(form.Height(), height);
    EXPECT_TRUE(form.lblInfo.toolTip().isEmpty());
    const QString endless = u"Schraube"_s.repeated(500);
    init({.category = endless, .oldCategory = endless});
    EXPECT_EQ(form.Width(), width);
    EXPECT_LT(form.Height(), 3 * height);
    EXPECT_TRUE(form.lblInfo.toolTip().contains(endless));
    EXPECT_TRUE(form.lblWarning.toolTip().contains(endless));
}

TEST_F(frmArticleNewPosTest, EveryControlHasAName) {
    init({.position = 3});
    after([](QDialog& shown) {
        EXPECT_EQ(namelessControls(shown), QStringList());
        shown.reject();
    });
}

TEST_F(frmArticleNewPosTest, EverythingFits) {
    init({.category = u"Sechskantschrauben"_s, .oldCategory = u"Muttern"_s});
    const QList<const QWidget*> onForm{&form.lblInfo, &form.Frame1, &form.lblWarning, &form.BB};
    for (const QWidget* control : onForm)
        EXPECT_TRUE(form.rect().contains(control->geometry())) << control->objectName().toStdString();
    const QList<const QWidget*> inFrame{&form.Opt(0), &form.Opt(1), &form.Opt(2), &form.UD};
    for (const QWidget* control : inFrame) {
        EXPECT_TRUE(form.Frame1.rect().contains(control->geometry())) << control->objectName().toStdString();
        EXPECT_GE(control->width(), control->sizeHint().width());
    }
    EXPECT_EQ(errorOf([&] { form.Opt(3); }), 9);
    EXPECT_EQ(errorOf([&] { form.Opt(-1); }), 9);
}

} // namespace mkl
