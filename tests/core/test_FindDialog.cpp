#include "core/FindDialog.h"

#include "core/Catalogue.h"
#include "core/Finder.h"
#include "core/FunctionLibrary.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedForms.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

void enter(QDialog& form, const QString& term, const QString& button) {
    form.findChild<QLineEdit*>(u"txtSearch"_s)->setText(term);
    form.findChild<QPushButton*>(button)->click();
}

} // namespace

TEST(FindDialog, GivesTheTermThatWasConfirmed) {
    const ScriptedForms forms({[](QDialog& form) { enter(form, u"Schraube*"_s, u"cmdOK"_s); }});
    const auto dialog = makeRef<FindDialog>();
    dialog->setFieldName(u"Artikelname"_s);
    EXPECT_TRUE(dialog->Show());
    EXPECT_EQ(dialog->Text(), u"Schraube*"_s);
}

TEST(FindDialog, ConfirmsAnEmptyTermToo) {
    const ScriptedForms forms({[](QDialog& form) { enter(form, {}, u"cmdOK"_s); }});
    const auto dialog = makeRef<FindDialog>();
    EXPECT_TRUE(dialog->Show());
    EXPECT_EQ(dialog->Text(), QString());
}

TEST(FindDialog, KeepsTheFormerTermWhenCancelled) {
    const ScriptedForms forms({[](QDialog& form) { enter(form, u"Schraube"_s, u"cmdOK"_s); },
                               [](QDialog& form) { enter(form, u"Mutter"_s, u"cmdCancel"_s); }});
    const auto dialog = makeRef<FindDialog>();
    dialog->Show();
    EXPECT_FALSE(dialog->Show());
    EXPECT_EQ(dialog->Text(), u"Schraube"_s);
}

TEST(FindDialog, ShowsTheFieldAsPlainText) {
    QString prompt;
    const ScriptedForms forms({[&](QDialog& form) {
        prompt = form.findChild<QLabel*>()->text();
        closeForm(form);
    }});
    const auto dialog = makeRef<FindDialog>();
    dialog->setFieldName(u"<b>Name & Nummer</b>"_s);
    dialog->Show();
    EXPECT_EQ(prompt, u"<b>Name & Nummer</b> suchen:"_s);
}

TEST(FindDialog, OutlivesItsOwnerAndItself) {
    auto* owner = new QWidget;
    auto dialog = makeRef<FindDialog>();
    const ScriptedForms forms({[&](QDialog&) {
        delete owner;
        dialog.reset();
    }});
    dialog->setOwnerWindow(owner);
    EXPECT_FALSE(dialog->Show());
    EXPECT_FALSE(dialog);
}

namespace {

// Confirms the terms one after the other, then cancels; keeps the names of the articles found.
struct Search {
    explicit Search(const QStringList& terms) {
        for (const QString& term : terms)
            forms.answers += [term](QDialog& form) { enter(form, term, u"cmdOK"_s); };
        forms.answers += [](QDialog& form) { enter(form, {}, u"cmdCancel"_s); };
        dialog->setMode(FindDialog::SearchRecordset);
        dialog->setFieldName(u"Artikelname"_s);
        dialog->setRecordset(rows);
        QObject::connect(dialog.get(), &FindDialog::RecordFound, dialog.get(), [this](const Variant& bookmark) {
            const auto clone = rows->Clone();
            clone->setBookmark(bookmark);
            found.append(clone->value(u"Artikelname").toText());
        });
    }

    Catalogue catalogue;
    Ref<dao::Recordset> rows = catalogue.database->OpenRecordset(u"SELECT * FROM ARTIKEL"_s, dao::dbOpenSnapshot);
    Ref<FindDialog> dialog = makeRef<FindDialog>();
    QStringList found;
    ScriptedAsker asker;
    ScriptedForms forms;
};

} // namespace

TEST(FindDialog, SearchesItsRecordset) {
    Search search({u"*e*"_s, u"*e*"_s, u"Anker"_s, u"*e*"_s});
    search.rows->MoveNext();
    EXPECT_TRUE(search.dialog->Show());
    EXPECT_EQ(search.found, (QStringList{u"Bolzen"_s, u"Anker"_s, u"Anker"_s, u"Bolzen"_s}));
    EXPECT_TRUE(search.asker.shown.isEmpty());
    EXPECT_EQ(search.rows->value(u"Artikelname").toText(), u"Anker"_s);
    EXPECT_EQ(search.dialog->Text(), u"*e*"_s);
}

TEST(FindDialog, SaysWhenTheSearchHasEndedAndBeginsAnew) {
    Search search({u"ösen"_s, u"ösen"_s, u"ösen"_s, u"O'Neill"_s});
    EXPECT_TRUE(search.dialog->Show());
    EXPECT_EQ(search.found, (QStringList{u"Ösen"_s, u"Ösen"_s}));
    ASSERT_EQ(search.asker.shown.size(), 2);
    EXPECT_EQ(search.asker.shown[0].text, u"Die Suche ist beendet."_s);
    EXPECT_EQ(search.asker.shown[0].flags, vbInformation);
    EXPECT_EQ(search.rows->value(u"Artikelname").toText(), u"Bolzen"_s);
}

TEST(FindDialog, SearchCancelledAtOnce) {
    Search search({});
    EXPECT_FALSE(search.dialog->Show());
    EXPECT_TRUE(search.found.isEmpty());
}

TEST(FindDialog, SearchWithoutARecordset) {
    Search search({u"x"_s});
    search.dialog->setRecordset(nullptr);
    EXPECT_EQ(errorOf([&] { search.dialog->Show(); }), 91);
    search.dialog->setRecordset(search.rows);
    search.dialog->setFieldName(u"Farbe"_s);
    EXPECT_EQ(errorOf([&] { search.dialog->Show(); }), 3070);
    search.forms.answers.clear(); // the failure has ended the search
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
