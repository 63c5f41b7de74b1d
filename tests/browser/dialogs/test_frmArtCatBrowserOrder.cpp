#include "browser/dialogs/frmArtCatBrowserOrder.h"

#include "browser/dialogs/Accessible.h"
#include "controls/Extender.h"
#include "support/Printing.h"
#include "support/ScriptedForms.h"

#include <memory>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class OrderDialogTest : public ::testing::Test {
protected:
    Long ask(const ScriptedForms::Answer& answer, const QString& third = u"drei"_s) {
        const ScriptedForms forms({answer});
        return OrderDialog(nullptr, u"eins"_s, u"zwei"_s, third);
    }
    static frmArtCatBrowserOrder& formOf(QDialog& shown) { return dynamic_cast<frmArtCatBrowserOrder&>(shown); }
    /// Looks at the form and cancels it.
    void look(const std::function<void(frmArtCatBrowserOrder&)>& at, const QString& third = u"drei"_s) {
        ask(
            [&](QDialog& shown) {
                at(formOf(shown));
                shown.reject();
            },
            third);
    }
};

Single bottom(const QWidget& control) {
    return Top(control) + Height(control);
}

/// Lower edge of a label in the form's measure.
Single bottomOnForm(const frmArtCatBrowserOrder& form, Long label) {
    return Top(form.Frame1) + Top(form.pic) + bottom(form.lbl(label));
}

ScriptedForms::Answer key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return [=](QDialog& shown) { pressKey(shown, key, modifiers); };
}

} // namespace

TEST_F(OrderDialogTest, LooksAsAgreed) {
    look([](frmArtCatBrowserOrder& form) {
        EXPECT_EQ(form.objectName(), u"frmArtCatBrowserOrder"_s);
        EXPECT_EQ(form.Caption(), u"Position ändern"_s);
        EXPECT_EQ(form.Frame1.title(), u"Was möchten Sie tun?"_s);
        EXPECT_EQ(form.lbl(1).Caption(), u"eins"_s);
        EXPECT_EQ(form.lbl(2).Caption(), u"zwei"_s);
        EXPECT_EQ(form.lbl(3).Caption(), u"drei"_s);
        EXPECT_EQ(form.Opt(3).accessibleName(), u"drei"_s);
        EXPECT_EQ(form.TB.Buttons(u"OK"_s).Caption(), u"&OK"_s);
        EXPECT_EQ(form.TB.Buttons(u"OK"_s).ToolTipText(), u"Änderung ausführen"_s);
        EXPECT_EQ(form.TB.Buttons(u"Cancel"_s).Caption(), u"&Abbrechen"_s);
        EXPECT_EQ(form.TB.Buttons(u"Cancel"_s).ToolTipText(), u"Formular schließen"_s);
        EXPECT_FALSE(Visible(form.txtResult));
        EXPECT_EQ(errorOf([&] { form.Opt(0); }), 9);
        EXPECT_EQ(errorOf([&] { form.lbl(4); }), 9);
    });
}

TEST_F(OrderDialogTest, TheSecondOptionIsPreselectedAndMarked) {
    look([](frmArtCatBrowserOrder& form) {
        EXPECT_TRUE(form.Opt(2).Value());
        EXPECT_EQ(form.focusWidget(), &form.Opt(2));
        EXPECT_EQ(form.lbl(2).ForeColor(), 128);
        EXPECT_TRUE(form.lbl(2).FontBold());
    });
}

TEST_F(OrderDialogTest, TheClickedOptionIsTheOneThatIsMarked) {
    look([](frmArtCatBrowserOrder& form) {
        clickOn(form, u"Opt1"_s);
        for (Long index = 1; index <= 3; ++index) {
            EXPECT_EQ(form.lbl(index).ForeColor(), index == 1 ? 128 : 0);
            EXPECT_EQ(form.lbl(index).FontBold(), index == 1);
        }
        clickOn(form, u"lbl3"_s);
        EXPECT_TRUE(form.Opt(3).Value());
        EXPECT_TRUE(form.lbl(3).FontBold());
        EXPECT_FALSE(form.lbl(1).FontBold());
    });
}

TEST_F(OrderDialogTest, GivesTheChosenOption) {
    EXPECT_EQ(ask(key(Qt::Key_O, Qt::AltModifier)), 2);
    EXPECT_EQ(ask([](QDialog& shown) {
                  clickOn(shown, u"Opt3"_s);
                  clickOn(shown, u"OK"_s);
              }),
              3);
    EXPECT_EQ(ask([](QDialog& shown) {
                  pressKey(shown, Qt::Key_Up);
                  pressKey(shown, Qt::Key_O, Qt::AltModifier);
              }),
              1);
}

TEST_F(OrderDialogTest, GivesZeroWhenCancelled) {
    EXPECT_EQ(ask(key(Qt::Key_Escape)), 0);
    EXPECT_EQ(ask(key(Qt::Key_A, Qt::AltModifier)), 0);
    EXPECT_EQ(ask([](QDialog& shown) { clickOn(shown, u"Cancel"_s); }), 0);
    EXPECT_EQ(ask(closeForm), 0);
}

TEST_F(OrderDialogTest, OtherKeysDoNotAnswer) {
    look([](frmArtCatBrowserOrder& form) {
        pressKey(form, Qt::Key_Return);
        pressKey(form, Qt::Key_A);
        pressKey(form, Qt::Key_O, Qt::ControlModifier);
        EXPECT_TRUE(form.isVisible());
    });
}

TEST_F(OrderDialogTest, WithoutAThirdTextItIsShorter) {
    Single with = 0;
    look([&](frmArtCatBrowserOrder& form) {
        with = form.Height();
        EXPECT_TRUE(form.Opt(3).isVisible());
        EXPECT_EQ(bottom(form.Frame1), bottomOnForm(form, 3));
    });
    look(
        [&](frmArtCatBrowserOrder& form) {
            EXPECT_LT(form.Height(), with);
            EXPECT_FALSE(form.Opt(3).isVisible());
            EXPECT_EQ(bottom(form.Frame1), bottomOnForm(form, 2));
        },
        {});
}

TEST_F(OrderDialogTest, StandsAsMeasured) {
    for (const QString& third : {u"drei"_s, QString()})
        look(
            [](frmArtCatBrowserOrder& form) {
                EXPECT_EQ(Height(form.pic), Height(form.Frame1) - 2 * Top(form.pic));
                EXPECT_EQ(Top(form.TB), bottom(form.Frame1) + 100);
                EXPECT_EQ(form.ScaleHeight(), bottom(form.TB) + 100);
                EXPECT_EQ(Left(form.TB), (form.ScaleWidth() - Width(form.TB)) / 2);
                form.setWidth(12000);
                EXPECT_EQ(Left(form.TB), (12000 - Width(form.TB)) / 2);
            },
            third);
}

TEST_F(OrderDialogTest, NoTextIsCut) {
    const QString name = u"Sechskantschrauben mit Flansch & Vollgewinde aus Stahl, verzinkt"_s;
    const ScriptedForms forms({[&](QDialog& shown) {
        frmArtCatBrowserOrder& form = formOf(shown);
        for (Long index = 1; index <= 3; ++index) {
            const Label& label = form.lbl(index);
            EXPECT_TRUE(label.toolTip().isEmpty());
            const Single text = label.TextHeight(Width(label), true);
            EXPECT_LE(Top(label) + text, Height(form.pic)); // in bold too
            EXPECT_LE(Left(label) + Width(label), Width(form.pic));
            const Single next = index < 3 ? Top(form.lbl(index + 1)) : Height(form.pic);
            EXPECT_LE(Top(label) + text, next);
        }
        EXPECT_TRUE(form.rect().contains(form.TB.geometry()));
        shown.reject();
    }});
    OrderDialog(nullptr, u"Die Kategorien '%1' und '%1' vertauschen"_s.arg(name),
                u"'%1' vor '%1' verschieben"_s.arg(name), u"'%1' als Unterkategorie von '%1' einordnen"_s.arg(name));
}

TEST_F(OrderDialogTest, EveryControlHasAName) {
    look([](frmArtCatBrowserOrder& form) { EXPECT_EQ(namelessControls(form), QStringList()); });
}

TEST_F(OrderDialogTest, ItsOwnerMayGoMeanwhile) {
    auto owner = std::make_unique<QWidget>();
    const ScriptedForms forms({[&](QDialog& shown) {
        clickOn(shown, u"Opt1"_s);
        owner.reset();
    }});
    EXPECT_EQ(OrderDialog(owner.get(), u"eins"_s, u"zwei"_s, {}), 0);
}

} // namespace mkl
