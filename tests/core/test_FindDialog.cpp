#include "core/FindDialog.h"

#include "controls/FormRunner.h"
#include "core/Finder.h"
#include "core/FunctionLibrary.h"
#include "support/Printing.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

// Does what a user would do with the form, then gives its result.
class ScriptedForms final : public FormRunner {
public:
    explicit ScriptedForms(std::function<void(QDialog&)> user)
        : user_(std::move(user))
        , former_(setFormRunner(this)) {}
    ~ScriptedForms() override { setFormRunner(former_); }
    Q_DISABLE_COPY_MOVE(ScriptedForms)

    int run(QDialog& form) override {
        int result = QDialog::Rejected;
        QObject::connect(&form, &QDialog::finished, &form, [&result](int code) { result = code; });
        user_(form);
        return result;
    }

private:
    std::function<void(QDialog&)> user_;
    FormRunner* former_;
};

void enter(QDialog& form, const QString& term, const QString& button) {
    form.findChild<QLineEdit*>(u"txtSearch"_s)->setText(term);
    form.findChild<QPushButton*>(button)->click();
}

} // namespace

TEST(FindDialog, GivesTheTermThatWasConfirmed) {
    const ScriptedForms forms([](QDialog& form) { enter(form, u"Schraube*"_s, u"cmdOK"_s); });
    const auto dialog = makeRef<FindDialog>();
    dialog->setFieldName(u"Artikelname"_s);
    EXPECT_TRUE(dialog->Show());
    EXPECT_EQ(dialog->Text(), u"Schraube*"_s);
}

TEST(FindDialog, ConfirmsAnEmptyTermToo) {
    const ScriptedForms forms([](QDialog& form) { enter(form, {}, u"cmdOK"_s); });
    const auto dialog = makeRef<FindDialog>();
    EXPECT_TRUE(dialog->Show());
    EXPECT_EQ(dialog->Text(), QString());
}

TEST(FindDialog, KeepsTheFormerTermWhenCancelled) {
    QString button = u"cmdOK"_s;
    const ScriptedForms forms([&](QDialog& form) { enter(form, button, button); });
    const auto dialog = makeRef<FindDialog>();
    dialog->Show();
    button = u"cmdCancel"_s;
    EXPECT_FALSE(dialog->Show());
    EXPECT_EQ(dialog->Text(), u"cmdOK"_s);
}

TEST(FindDialog, ShowsTheFieldAsPlainText) {
    QString prompt;
    const ScriptedForms forms([&](QDialog& form) { prompt = form.findChild<QLabel*>()->text(); });
    const auto dialog = makeRef<FindDialog>();
    dialog->setFieldName(u"<b>Name & Nummer</b>"_s);
    dialog->Show();
    EXPECT_EQ(prompt, u"<b>Name & Nummer</b> suchen:"_s);
}

TEST(FindDialog, OutlivesItsOwnerAndItself) {
    auto* owner = new QWidget;
    auto dialog = makeRef<FindDialog>();
    const ScriptedForms forms([&](QDialog&) {
        delete owner;
        dialog.reset();
    });
    dialog->setOwnerWindow(owner);
    EXPECT_FALSE(dialog->Show());
    EXPECT_FALSE(dialog);
}

TEST(FindDialog, SearchingARecordsetIsRefused) {
    const auto dialog = makeRef<FindDialog>();
    dialog->setMode(FindDialog::SearchRecordset);
    EXPECT_EQ(errorOf([&] { dialog->Show(); }), 3251);
}

TEST(Finder, HandsOutOneDialogAndPassesItsHitsOn) {
    Finder finder;
    const auto dialog = finder.FindDialog();
    EXPECT_EQ(finder.FindDialog(), dialog);
    Variant found;
    QObject::connect(&finder, &Finder::RecordFound, &finder, [&](const Variant& bookmark) { found = bookmark; });
    Q_EMIT dialog->RecordFound(Variant(QByteArray("b")));
    EXPECT_EQ(found, Variant(QByteArray("b")));
}

TEST(Finder, KeepsTheDatabase) {
    Finder finder;
    EXPECT_FALSE(finder.Database());
    finder.setDatabase(nullptr);
    EXPECT_FALSE(finder.Database());
}
