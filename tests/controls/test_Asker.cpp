#include "controls/Asker.h"

#include "controls/FormRunner.h"
#include "support/Printing.h"

#include <QAbstractButton>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// Does something with the dialog that the next call opens.
template<class Dialog, class Act>
void whenOpen(Act act) {
    QTimer::singleShot(0, [act] {
        auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        act(*dialog);
    });
}

Long answerTo(Long flags, const QString& button) {
    whenOpen<QMessageBox>([button](QMessageBox& box) {
        for (QAbstractButton* each : box.buttons())
            if (each->text() == button) return each->click();
        ADD_FAILURE() << "no button " << button.toStdString();
        box.reject();
    });
    return asker().ask({u"Frage?"_s, flags, u"Titel"_s, {}});
}

Long answerToKey(Long flags, Qt::Key key) {
    whenOpen<QMessageBox>([key](QMessageBox& box) { QTest::keyClick(&box, key); });
    return asker().ask({u"Frage?"_s, flags, u"Titel"_s, {}});
}

} // namespace

TEST(Asker, ButtonsGiveTheirAnswers) {
    EXPECT_EQ(answerTo(vbOKOnly, u"OK"_s), vbOK);
    EXPECT_EQ(answerTo(vbOKCancel, u"OK"_s), vbOK);
    EXPECT_EQ(answerTo(vbOKCancel, u"Abbrechen"_s), vbCancel);
    EXPECT_EQ(answerTo(vbYesNo, u"&Ja"_s), vbYes);
    EXPECT_EQ(answerTo(vbYesNo, u"&Nein"_s), vbNo);
    EXPECT_EQ(answerTo(vbYesNoCancel, u"&Ja"_s), vbYes);
    EXPECT_EQ(answerTo(vbYesNoCancel, u"&Nein"_s), vbNo);
    EXPECT_EQ(answerTo(vbYesNoCancel, u"Abbrechen"_s), vbCancel);
}

TEST(Asker, EscapeIsTheCautiousAnswer) {
    EXPECT_EQ(answerToKey(vbOKOnly, Qt::Key_Escape), vbOK);
    EXPECT_EQ(answerToKey(vbOKCancel, Qt::Key_Escape), vbCancel);
    EXPECT_EQ(answerToKey(vbYesNo, Qt::Key_Escape), vbNo);
    EXPECT_EQ(answerToKey(vbYesNoCancel, Qt::Key_Escape), vbCancel);
}

TEST(Asker, DefaultButtonByFlag) {
    EXPECT_EQ(answerToKey(vbYesNo, Qt::Key_Return), vbYes);
    EXPECT_EQ(answerToKey(vbYesNo | vbDefaultButton2, Qt::Key_Return), vbNo);
    EXPECT_EQ(answerToKey(vbYesNoCancel | vbDefaultButton3, Qt::Key_Return), vbCancel);
    EXPECT_EQ(answerToKey(vbOKOnly | vbDefaultButton2, Qt::Key_Return), vbOK);
}

TEST(Asker, PicturesByFlag) {
    const auto picture = [](Long flags) {
        QMessageBox::Icon shown{};
        whenOpen<QMessageBox>([&shown](QMessageBox& box) {
            shown = box.icon();
            box.reject();
        });
        asker().ask({u"x"_s, flags, {}, {}});
        return shown;
    };
    EXPECT_EQ(picture(0), QMessageBox::NoIcon);
    EXPECT_EQ(picture(20), QMessageBox::Critical);
    EXPECT_EQ(picture(36), QMessageBox::Question);
    EXPECT_EQ(picture(49), QMessageBox::Warning);
    EXPECT_EQ(picture(64), QMessageBox::Information);
}

TEST(Asker, TextsAreShownAsTheyAre) {
    const QString name = u"<b>Meier & Söhne</b>"_s;
    whenOpen<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.text(), name + u"\n\n"_s + u"Fehler Nr.: 91"_s);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), u"Titel"_s);
        for (const QLabel* label : box.findChildren<QLabel*>())
            EXPECT_EQ(label->buddy(), nullptr); // so that "&" is no access key
        box.reject();
    });
    asker().ask({name, vbOKOnly, u"Titel"_s, u"Fehler Nr.: 91"_s});
}

TEST(Asker, ADetailAloneNeedsNoText) {
    whenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), u"nur das"_s);
        box.reject();
    });
    asker().ask({{}, vbOKOnly, {}, u"nur das"_s});
}

TEST(Asker, ALongDetailIsShownInFullAndFitsTheScreen) {
    const QString detail = u"SELECT [Kategorie-Schlüssel] FROM [ARTIKEL/KATEGORIEN]\n"_s.repeated(300);
    whenOpen<QMessageBox>([&](QMessageBox& box) {
        const auto* const field = box.findChild<QPlainTextEdit*>();
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->toPlainText(), detail);
        EXPECT_TRUE(field->isReadOnly());
        EXPECT_TRUE(field->isVisible());
        EXPECT_LT(field->geometry().bottom(), box.buttons().constFirst()->mapTo(&box, QPoint()).y());
        EXPECT_LT(box.height(), 600);
        box.reject();
    });
    asker().ask({u"Fehler"_s, vbCritical, {}, detail});
}

TEST(Asker, AskTextGivesTheLineOrNothing) {
    whenOpen<QInputDialog>([](QInputDialog& dialog) {
        EXPECT_EQ(dialog.textValue(), u"alt"_s);
        dialog.setTextValue(u"neu & schön"_s);
        dialog.accept();
    });
    EXPECT_EQ(asker().askText(u"Name von 'Meier & Söhne':"_s, u"Umbenennen"_s, u"alt"_s), u"neu & schön"_s);
    whenOpen<QInputDialog>([](QInputDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(asker().askText(u"Name:"_s, {}), std::nullopt);
}

TEST(Asker, TheWindowBehindMayGo) {
    for (const bool forText : {false, true}) {
        auto* const host = new QWidget;
        host->show();
        host->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(host));
        QTimer::singleShot(0, [host] { delete host; });
        if (forText)
            EXPECT_EQ(asker().askText(u"Name:"_s, {}), std::nullopt);
        else
            EXPECT_EQ(asker().ask({u"Frage?"_s, vbYesNo, {}, {}}), vbNo);
    }
}

TEST(Asker, CanBeReplaced) {
    class Silent : public Asker {
    public:
        Long ask(const MessageBox& box) override { return box.flags; }
        std::optional<QString> askText(const QString& prompt, const QString&, const QString&) override {
            return prompt;
        }
    } silent;
    Asker* const former = setAsker(&silent);
    EXPECT_EQ(asker().ask({u"x"_s, 36, {}, {}}), 36);
    EXPECT_EQ(setAsker(nullptr), &silent);
    EXPECT_EQ(&asker(), former);
}

TEST(FormRunner, RunsTheFormModally) {
    QDialog form;
    QTimer::singleShot(0, [&] {
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(QApplication::activeModalWidget(), &form);
        form.accept();
    });
    EXPECT_EQ(formRunner().run(form), QDialog::Accepted);
}

TEST(FormRunner, CanBeReplaced) {
    class Refuser : public FormRunner {
    public:
        int run(QDialog&) override { return QDialog::Rejected; }
    } refuser;
    FormRunner* const former = setFormRunner(&refuser);
    QDialog form;
    EXPECT_EQ(formRunner().run(form), QDialog::Rejected);
    EXPECT_EQ(setFormRunner(nullptr), &refuser);
    EXPECT_EQ(&formRunner(), former);
}

} // namespace mkl
