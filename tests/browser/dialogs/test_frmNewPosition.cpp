#include "browser/dialogs/frmNewPosition.h"

#include "browser/dialogs/Accessible.h"
#include "controls/Extender.h"
#include "support/Printing.h"
#include "support/ScriptedForms.h"

#include <functional>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class frmNewPositionTest : public ::testing::Test {
protected:
    frmNewPositionTest() {
        form.UD.setRange(1, 30);
        form.UD.setValue(5);
        form.UD.selectAll();
    }
    /// chkCancel after the user did this.
    Integer after(const ScriptedForms::Answer& answer) {
        const ScriptedForms forms({answer});
        form.Show();
        return form.chkCancel.Value();
    }

    frmNewPosition form{nullptr};
};

ScriptedForms::Answer key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return [=](QDialog& shown) { pressKey(shown, key, modifiers); };
}

} // namespace

TEST_F(frmNewPositionTest, LooksAsAgreed) {
    EXPECT_EQ(form.Caption(), u"Position ändern"_s);
    EXPECT_EQ(form.lblPosition.Caption(), u"Geben Sie die neue Position an:"_s);
    EXPECT_EQ(form.TB.Buttons(u"OK"_s).Caption(), u"&OK"_s);
    EXPECT_EQ(form.TB.Buttons(u"OK"_s).ToolTipText(), u"Aktion fortsetzen"_s);
    EXPECT_EQ(form.TB.Buttons(u"Cancel"_s).Caption(), u"&Abbrechen"_s);
    EXPECT_EQ(form.TB.Buttons(u"Cancel"_s).ToolTipText(), u"Formular schließen"_s);
    EXPECT_EQ(form.chkCancel.Value(), 1);
    EXPECT_FALSE(Visible(form.chkCancel));
    EXPECT_EQ(form.UD.accessibleName(), form.lblPosition.Caption());
}

TEST_F(frmNewPositionTest, ButtonsAnswer) {
    EXPECT_EQ(after([](QDialog& shown) { clickOn(shown, u"OK"_s); }), 0);
    EXPECT_EQ(after([](QDialog& shown) { clickOn(shown, u"Cancel"_s); }), 1);
}

TEST_F(frmNewPositionTest, KeysAnswer) {
    EXPECT_EQ(after(key(Qt::Key_O, Qt::AltModifier)), 0);
    EXPECT_EQ(after(key(Qt::Key_A, Qt::AltModifier)), 1);
    EXPECT_EQ(after(key(Qt::Key_O, Qt::AltModifier)), 0);
    EXPECT_EQ(after(key(Qt::Key_Escape)), 1);
}

TEST_F(frmNewPositionTest, OtherKeysDoNot) {
    const auto answer = [this](QDialog& shown) {
        pressKey(shown, Qt::Key_A);
        pressKey(shown, Qt::Key_O);
        pressKey(shown, Qt::Key_O, Qt::ControlModifier);
        pressKey(shown, Qt::Key_A, Qt::ShiftModifier);
        pressKey(shown, Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        pressKey(shown, Qt::Key_Escape);
    };
    EXPECT_EQ(after(answer), 1);
}

TEST_F(frmNewPositionTest, ClosedByItsFrameItIsCancelled) {
    form.chkCancel.setValue(0);
    EXPECT_EQ(after(closeForm), 1);
}

TEST_F(frmNewPositionTest, TheNumberIsTypedOverWithoutFurtherAdo) {
    const auto answer = [](QDialog& shown) {
        typeText(shown, u"12"_s);
        pressKey(shown, Qt::Key_O, Qt::AltModifier);
    };
    EXPECT_EQ(after(answer), 0);
    EXPECT_EQ(form.UD.Value(), 12);
}

TEST_F(frmNewPositionTest, TheFocusedButtonIsPressedByEnter) {
    const auto answer = [this](QDialog& shown) {
        pressKey(shown, Qt::Key_Tab);
        EXPECT_EQ(shown.focusWidget(), &form.TB.Buttons(u"OK"_s));
        pressKey(shown, Qt::Key_Return);
    };
    EXPECT_EQ(after(answer), 0);
}

TEST_F(frmNewPositionTest, EveryControlHasAName) {
    after([](QDialog& shown) {
        EXPECT_EQ(namelessControls(shown), QStringList());
        shown.reject();
    });
}

TEST_F(frmNewPositionTest, EverythingFits) {
    EXPECT_LE(form.lblPosition.TextHeight(Width(form.lblPosition)), Height(form.lblPosition));
    EXPECT_TRUE(form.lblPosition.toolTip().isEmpty());
    for (const QWidget* control : std::initializer_list<const QWidget*>{&form.lblPosition, &form.UD, &form.TB})
        EXPECT_TRUE(form.rect().contains(control->geometry())) << control->objectName().toStdString();
    EXPECT_GT(form.TB.y(), form.UD.geometry().bottom());
}

} // namespace mkl
