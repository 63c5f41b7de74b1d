#include "controls/Form.h"

#include "controls/UserControl.h"
#include "support/Printing.h"
#include "support/ScriptedForms.h"

#include <QLineEdit>
#include <QWindow>
#include <memory>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// Tells what happens to it.
class SampleForm : public Form {
public:
    explicit SampleForm(QWidget* owner = nullptr)
        : Form(owner) {
        setObjectName(u"SampleForm"_s);
        field.setObjectName(u"field"_s);
        setWidth(3000);
        setHeight(1500);
    }

    QLineEdit field{this};
    QStringList log;
    Integer swallowed = 0;

protected:
    void KeyDown(Integer& KeyCode, Integer& Shift) override {
        log += u"key %1 %2"_s.arg(KeyCode).arg(Shift);
        if (KeyCode == swallowed) KeyCode = 0;
    }
    void Cancelled() override { log += u"cancelled"_s; }
    void ResizeForm() override { sizes += size(); }

public:
    QList<QSize> sizes;
};

} // namespace

TEST(Form, ShowLastsUntilItIsHidden) {
    SampleForm form;
    bool modal = false;
    ScriptedForms forms({[&](QDialog& shown) {
        modal = QApplication::activeModalWidget() == &shown && shown.windowModality() == Qt::ApplicationModal;
        form.Hide();
    }});
    form.Show();
    EXPECT_TRUE(modal);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.log, QStringList());
    EXPECT_EQ(forms.shown, QStringList{u"SampleForm"_s});
}

TEST(Form, ClosingItByOtherMeansCancels) {
    const QList<ScriptedForms::Answer> ways{[](QDialog& shown) { closeForm(shown); },
                                            [](QDialog& shown) { pressKey(shown, Qt::Key_Escape); },
                                            [](QDialog& shown) { shown.reject(); }};
    for (const auto& way : ways) {
        SampleForm form;
        ScriptedForms forms({way});
        form.Show();
        EXPECT_FALSE(form.isVisible());
        EXPECT_EQ(form.log.count(u"cancelled"_s), 1);
    }
}

TEST(Form, IsNoChildOfItsOwner) {
    QWidget owner;
    const SampleForm form(&owner);
    EXPECT_EQ(form.parent(), nullptr);
}

TEST(Form, OutlivesItsOwnerAsCancelled) {
    auto host = std::make_unique<QWidget>();
    auto* const owner = new QWidget(host.get());
    host->show();
    SampleForm form(owner);
    ScriptedForms forms({[&](QDialog&) { host.reset(); }});
    form.Show();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.log, QStringList{u"cancelled"_s});
    form.field.setText(u"lebt"_s);
    EXPECT_EQ(form.field.text(), u"lebt"_s);
}

TEST(Form, WithoutItsOwnerItIsNotShown) {
    auto owner = std::make_unique<QWidget>();
    SampleForm form(owner.get());
    owner.reset();
    form.log.clear();
    const ScriptedForms forms;
    form.Show();
    EXPECT_EQ(form.log, QStringList{u"cancelled"_s});
    EXPECT_EQ(forms.shown, QStringList());
}

TEST(Form, AnOwnerMayOutliveIt) {
    QWidget owner;
    { const SampleForm form(&owner); }
    owner.setObjectName(u"lebt"_s);
}

TEST(Form, StandsOverItsOwnersWindow) {
    QWidget host;
    host.setGeometry(150, 120, 400, 300);
    QWidget owner(&host);
    owner.setGeometry(300, 200, 50, 50);
    host.show();
    SampleForm form(&owner);
    ScriptedForms forms({[&](QDialog& shown) {
        EXPECT_EQ(shown.windowHandle()->transientParent(), host.windowHandle());
        const QPoint distance = shown.geometry().center() - host.geometry().center();
        EXPECT_LE(std::abs(distance.x()), 20); // the toolkit reckons with a frame
        EXPECT_LE(std::abs(distance.y()), 40);
        shown.reject();
    }});
    form.Show();
}

TEST(Form, MeasuresInTwips) {
    SampleForm form;
    form.setWidth(3007.5);
    form.setHeight(1500);
    EXPECT_EQ(form.Width(), 3007.5);
    EXPECT_EQ(form.ScaleWidth(), 3007.5);
    EXPECT_EQ(form.ScaleHeight(), 1500);
    EXPECT_EQ(form.height(), 100);
}

TEST(Form, TellsOfItsSize) {
    SampleForm form;
    ScriptedForms forms({[&](QDialog& shown) {
        EXPECT_EQ(form.sizes, QList<QSize>{QSize(200, 100)});
        form.setWidth(4500);
        EXPECT_EQ(form.sizes.last(), QSize(300, 100));
        shown.reject();
    }});
    form.Show();
}

TEST(Form, AFixedSizeIsStillTheProgramsToChange) {
    SampleForm form;
    form.setSizable(false);
    form.resize(500, 500);
    EXPECT_EQ(form.size(), QSize(200, 100));
    form.setWidth(4500);
    EXPECT_EQ(form.size(), QSize(300, 100));
    form.resize(500, 500);
    EXPECT_EQ(form.size(), QSize(300, 100));
}

TEST(Form, HearsKeysFirst) {
    SampleForm form;
    form.swallowed = 65;
    ScriptedForms forms({[&](QDialog& shown) {
        pressKey(shown, Qt::Key_A);
        pressKey(shown, Qt::Key_B);
        EXPECT_EQ(form.field.text(), u"b"_s);
        form.log.clear();
        pressKey(shown, Qt::Key_O, Qt::AltModifier | Qt::ShiftModifier);
        shown.reject();
    }});
    form.Show();
    EXPECT_EQ(form.log, (QStringList{u"key 16 1"_s, u"key 18 5"_s, u"key 79 5"_s, u"cancelled"_s}));
}

TEST(Form, HearsKeysBeforeTheControlsOnIt) {
    struct Control final : UserControl {
        Control(QStringList& heard, QWidget* parent)
            : UserControl(parent)
            , log(heard) {}
        void KeyDown(Integer& KeyCode, Integer&) override { log += u"control %1"_s.arg(KeyCode); }
        QStringList& log;
    };
    SampleForm form;
    Control control(form.log, &form);
    QLineEdit constituent(&control);
    form.swallowed = 65;
    ScriptedForms forms({[&](QDialog& shown) {
        constituent.setFocus();
        pressKey(shown, Qt::Key_A);
        pressKey(shown, Qt::Key_B);
        shown.reject();
    }});
    form.Show();
    EXPECT_EQ(constituent.text(), u"b"_s);
    EXPECT_EQ(form.log, (QStringList{u"key 65 0"_s, u"key 66 0"_s, u"control 66"_s, u"cancelled"_s}));
}

} // namespace mkl
