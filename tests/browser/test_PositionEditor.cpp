#include "browser/BrowserHost.h"
#include "browser/dialogs/frmNewPosition.h"
#include "support/ScriptedForms.h"

using namespace mkl;

namespace {

class PositionEditorTest : public BrowserHost {
protected:
    PositionEditorTest()
        : BrowserHost(u"41 Schrauben: 1 A, 2 B"_s) {}

    static UpDownCtl& field(QDialog& form) { return dynamic_cast<frmNewPosition&>(form).UD; }
    static void confirm(QDialog& form) { pressKey(form, Qt::Key_O, Qt::AltModifier); }
    /// Types the number and confirms.
    static ScriptedForms::Answer number(const QString& digits) {
        return [digits](QDialog& form) {
            typeText(form, digits);
            confirm(form);
        };
    }

    ScriptedForms forms;
};

} // namespace

TEST_F(PositionEditorTest, givesTheChosenPosition) {
    forms.answers = {number(u"4"_s)};
    EXPECT_EQ(browser->PositionEditor(2, 5), 4);
    EXPECT_EQ(forms.shown, QStringList{u"frmNewPosition"_s});
}

TEST_F(PositionEditorTest, thePresentPositionIsNoChange) {
    forms.answers = {confirm, number(u"2"_s)};
    EXPECT_EQ(browser->PositionEditor(2, 5), 0);
    EXPECT_EQ(browser->PositionEditor(2, 5), 0);
    EXPECT_FALSE(browser->Edited());
}

TEST_F(PositionEditorTest, withoutArgumentsAnyPositionCounts) {
    forms.answers = {[](QDialog& form) {
                         EXPECT_EQ(field(form).Minimum(), 1);
                         EXPECT_EQ(field(form).Maximum(), 1000);
                         EXPECT_EQ(field(form).Value(), 1);
                         confirm(form);
                     },
                     number(u"1000"_s)};
    EXPECT_EQ(browser->PositionEditor(), 1);
    EXPECT_EQ(browser->PositionEditor(0, -3), 1000);
}

TEST_F(PositionEditorTest, aPositionBeyondTheMaximumIsShownAsTheMaximumWhichIsAMove) {
    forms.answers = {[](QDialog& form) {
        EXPECT_EQ(field(form).Value(), 3);
        confirm(form);
    }};
    EXPECT_EQ(browser->PositionEditor(7, 3), 3);
}

TEST_F(PositionEditorTest, whatIsTypedBeyondTheMaximumBecomesTheMaximum) {
    forms.answers = {number(u"99"_s)};
    EXPECT_EQ(browser->PositionEditor(2, 5), 5);
}

TEST_F(PositionEditorTest, cancellingGivesNothing) {
    forms.answers = {[](QDialog& form) {
                         typeText(form, u"4"_s);
                         pressKey(form, Qt::Key_Escape);
                     },
                     [](QDialog& form) { pressKey(form, Qt::Key_A, Qt::AltModifier); }, closeForm};
    for (int way = 0; way < 3; ++way)
        EXPECT_EQ(browser->PositionEditor(2, 5), 0);
}

TEST_F(PositionEditorTest, eachCallHasAFormOfItsOwn) {
    forms.answers = {number(u"4"_s), [](QDialog& form) {
                         EXPECT_EQ(field(form).Value(), 1);
                         EXPECT_EQ(dynamic_cast<frmNewPosition&>(form).chkCancel.Value(), 1);
                         closeForm(form);
                     }};
    browser->PositionEditor(2, 5);
    EXPECT_EQ(browser->PositionEditor(1, 9), 0);
}

TEST_F(PositionEditorTest, aFailureIsReportedAndGivesNothing) {
    class Failing final : public FormRunner {
    public:
        int run(QDialog&) override { throwError(err::ObjectNotSet); }
    } failing;
    FormRunner* const former = setFormRunner(&failing);
    EXPECT_EQ(browser->PositionEditor(2, 5), 0);
    setFormRunner(former);
    EXPECT_EQ(takeReports(), QStringList{u"PositionEditor: 91"_s});
}

TEST_F(PositionEditorTest, theControlMayBeClosedMeanwhile) {
    forms.answers = {[this](QDialog&) { browser.reset(); }};
    EXPECT_EQ(browser->PositionEditor(2, 5), 0);
    EXPECT_FALSE(browser);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(PositionEditorTest, theHostsWindowMayBeClosedMeanwhile) {
    auto window = std::make_unique<QWidget>();
    browser->setParent(window.get());
    window->show();
    ArtCatBrowser* const control = browser.release();
    forms.answers = {[&](QDialog&) { window.reset(); }};
    EXPECT_EQ(control->PositionEditor(2, 5), 0);
}
