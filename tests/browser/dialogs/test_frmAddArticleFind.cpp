#include "browser/dialogs/frmAddArticleFind.h"

#include "browser/dialogs/Accessible.h"
#include "controls/Extender.h"
#include "support/Printing.h"
#include "support/ScriptedForms.h"

#include <QScopeGuard>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class frmAddArticleFindTest : public ::testing::Test {
protected:
    /// Whether the search is stopped after the user did this.
    bool isStoppedAfter(const ScriptedForms::Answer& answer) {
        const ScriptedForms forms({answer});
        form.Show();
        return form.optCancel.Value();
    }

    frmAddArticleFind form{nullptr};
};

ScriptedForms::Answer key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return [=](QDialog& shown) { pressKey(shown, key, modifiers); };
}

} // namespace

TEST_F(frmAddArticleFindTest, LooksAsAgreed) {
    EXPECT_EQ(form.Caption(), u"Artikelsuche"_s);
    EXPECT_EQ(form.Frame2.title(), u"Gefundener Artikel"_s);
    EXPECT_EQ(form.lblArtNr.Caption(), u"Nummer:"_s);
    EXPECT_EQ(form.lblArtikelname.Caption(), u"Name:"_s);
    EXPECT_EQ(form.Frame1.title(), u"Artikel auswählen?"_s);
    EXPECT_EQ(form.optMark(0).text(), u"Ja"_s);
    EXPECT_EQ(form.optMark(1).text(), u"Nein"_s);
    EXPECT_TRUE(form.optMark(0).Value());
    EXPECT_EQ(errorOf([&] { form.optMark(2); }), 9);
    EXPECT_FALSE(Visible(form.optCancel));
    EXPECT_FALSE(form.optCancel.Value());
    const DialogButton& find = form.TB.Buttons(u"Find"_s);
    EXPECT_EQ(find.Caption(), u"&Weitersuchen"_s);
    EXPECT_EQ(find.ToolTipText(), u"Nächsten passenden Artikel suchen"_s);
    const DialogButton& cancel = form.TB.Buttons(u"Cancel"_s);
    EXPECT_EQ(cancel.Caption(), u"&Abbrechen"_s);
    EXPECT_EQ(cancel.ToolTipText(), u"Formular schließen"_s);
    EXPECT_EQ(form.txtArtNr.accessibleName(), u"Nummer"_s);
    EXPECT_EQ(form.txtArtikelname.accessibleName(), u"Name"_s);
}

TEST_F(frmAddArticleFindTest, ButtonsAnswer) {
    EXPECT_TRUE(isStoppedAfter([](QDialog& shown) { clickOn(shown, u"Cancel"_s); }));
    EXPECT_FALSE(isStoppedAfter([](QDialog& shown) { clickOn(shown, u"Find"_s); }));
}

TEST_F(frmAddArticleFindTest, KeysAnswer) {
    EXPECT_TRUE(isStoppedAfter(key(Qt::Key_Escape)));
    EXPECT_FALSE(isStoppedAfter(key(Qt::Key_W, Qt::AltModifier)));
    EXPECT_TRUE(isStoppedAfter(key(Qt::Key_A, Qt::AltModifier)));
    EXPECT_FALSE(isStoppedAfter(key(Qt::Key_Return))); // the button has the focus
    EXPECT_TRUE(isStoppedAfter(closeForm));
}

TEST_F(frmAddArticleFindTest, KeysWithoutAltDoNothing) {
    EXPECT_TRUE(isStoppedAfter([](QDialog& shown) {
        for (const Qt::Key letter : {Qt::Key_A, Qt::Key_W, Qt::Key_O})
            pressKey(shown, letter);
        pressKey(shown, Qt::Key_O, Qt::AltModifier);
        EXPECT_TRUE(shown.isVisible());
        pressKey(shown, Qt::Key_Escape);
    }));
}

TEST_F(frmAddArticleFindTest, TheOptionIsChosenByKeys) {
    EXPECT_FALSE(isStoppedAfter([this](QDialog& shown) {
        pressKey(shown, Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(shown.focusWidget(), &form.optMark(0));
        pressKey(shown, Qt::Key_Right);
        pressKey(shown, Qt::Key_W, Qt::AltModifier);
    }));
    EXPECT_TRUE(form.optMark(1).Value());
    EXPECT_FALSE(form.optMark(0).Value());
}

TEST_F(frmAddArticleFindTest, TextsAreToReadOnly) {
    form.txtArtNr.setText(u"4711"_s);
    EXPECT_FALSE(isStoppedAfter([this](QDialog& shown) {
        form.txtArtNr.setFocus();
        typeText(shown, u"5"_s);
        pressKey(shown, Qt::Key_W, Qt::AltModifier);
    }));
    EXPECT_EQ(form.txtArtNr.Text(), u"4711"_s);
}

TEST_F(frmAddArticleFindTest, ItsTextsAreFieldsOfTheHelper) {
    form.A_Lib(makeRef<FunctionLibrary>());
    for (TextBox* box : {&form.txtArtNr, &form.txtArtikelname}) {
        box->setText(u"Linse"_s);
        QFocusEvent focus(QEvent::FocusIn);
        QApplication::sendEvent(box, &focus);
        QCoreApplication::processEvents();
        EXPECT_EQ(box->selectedText(), u"Linse"_s); // what a field does
    }
}

TEST_F(frmAddArticleFindTest, ALongNameShowsFromItsBeginningAndInFullAsAToolTip) {
    form.txtArtikelname.setText(QString(300, u'x') + u"<b>"_s);
    EXPECT_TRUE(isStoppedAfter(key(Qt::Key_Escape)));
    EXPECT_EQ(form.txtArtikelname.cursorPosition(), 0);
    EXPECT_TRUE(form.txtArtikelname.toolTip().contains(QString(300, u'x')));
    EXPECT_FALSE(form.txtArtikelname.toolTip().contains(u"<b>"_s));
}

TEST_F(frmAddArticleFindTest, EveryControlHasAName) {
    isStoppedAfter([](QDialog& shown) {
        EXPECT_EQ(namelessControls(shown), QStringList());
        shown.reject();
    });
}

TEST_F(frmAddArticleFindTest, StandsOverTheWindowOfItsOwnerAndEndsWithIt) {
    auto owner = std::make_unique<QWidget>();
    owner->show();
    form.A_OwnerHwnd(nullptr);
    form.A_OwnerHwnd(owner.get());
    form.optCancel.setValue(false);
    EXPECT_TRUE(isStoppedAfter([&](QDialog&) { owner.reset(); }));
    form.optCancel.setValue(false);
    form.Show(); // without one it does not come up
    EXPECT_TRUE(form.optCancel.Value());
}

TEST_F(frmAddArticleFindTest, NothingIsCutAtAnySizeOfLetters) {
    for (const int points : {8, 10, 14, 20, 28}) {
        QFont letters = form.font();
        letters.setPointSize(points);
        const auto restore = qScopeGuard([font = QApplication::font()] { QApplication::setFont(font); });
        QApplication::setFont(letters);
        frmAddArticleFind other(nullptr);
        other.txtArtNr.setText(u"4711"_s);
        const ScriptedForms forms({[&](QDialog& shown) {
            for (const QWidget* control : shown.findChildren<QWidget*>()) {
                if (!control->isVisible() || control->parentWidget() == &other.TB) continue;
                EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()))
                    << points << control->objectName().toStdString();
                const bool hasText = qobject_cast<const QRadioButton*>(control) || qobject_cast<const QLabel*>(control);
                EXPECT_TRUE(!hasText || control->width() >= control->sizeHint().width()) << points;
            }
            EXPECT_LE(other.Frame2.geometry().bottom(), other.Frame1.geometry().top());
            EXPECT_LE(other.Frame1.geometry().bottom(), other.TB.geometry().top());
            pressKey(shown, Qt::Key_Escape);
        }});
        other.Show();
    }
}

} // namespace mkl
