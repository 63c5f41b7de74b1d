// What new categories get: their sender, and the digit of their keys.
#include "TestFolder.h"
#include "apps/artikelkatalog/CatalogueOptions.h"
#include "apps/artikelkatalog/FilterPanel.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "apps/artikelkatalog/SenderChoice.h"
#include "browser/ArtCatBrowser.h"
#include "catalogue/CatalogueReplica.h"
#include "controls/TreeView.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedForms.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

class CatalogueOptionsTest : public ::testing::Test {
protected:
    void open(const QString& file) {
        if (window_) window_->close();
        window_ = std::make_unique<MainWindow>(settings_);
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        ASSERT_TRUE(window_->showFile(file));
        database_ = dao::DBEngine::CreateWorkspace()->OpenDatabase(file);
    }
    void addSenders(std::initializer_list<Long> keys) const {
        for (const Long key : keys)
            database_->Execute(u"INSERT INTO ABSENDER VALUES (%1)"_s.arg(key), dao::dbFailOnError);
    }
    QAction& entry() const { return *window_->findChild<QAction*>(u"CatalogueOptions"_s); }
    ArtCatBrowser& browser() const { return *window_->browser(); }
    template<class Widget>
    static Widget& in(QDialog& dialog, const char* name) {
        return *dialog.findChild<Widget*>(QLatin1StringView(name));
    }
    /// What the user chooses in the dialog before OK.
    void choose(Long digit, const QString& sender = {}) {
        forms_.answers.append([=](QDialog& dialog) {
            in<QSpinBox>(dialog, "ReplicaDigit").setValue(digit);
            if (!sender.isEmpty()) in<QComboBox>(dialog, "Sender").setCurrentText(sender);
            clickOn(dialog, u"OK"_s);
        });
        entry().trigger();
    }
    /// Presses Ins in the tree and gives the new category a name; "key of sender".
    QString newCategory(const QString& name) {
        forms_.answers.append([name](QDialog& form) {
            typeText(form, name);
            pressKey(form, Qt::Key_O, Qt::AltModifier);
        });
        window_->activateWindow(); // no window manager does it behind a dialog
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        TreeView& tree = *browser().CategoryTreeView();
        tree.setFocus();
        QTest::keyClick(&tree, Qt::Key_Insert);
        const auto rows = database_->OpenRecordset(
            u"SELECT [Kategorie-Schlüssel] & ' of ' & [Absender-Schlüssel] FROM [ARTIKEL/KATEGORIEN] WHERE "
            "Kategoriename='%1'"_s.arg(name),
            dao::dbOpenSnapshot);
        return rows->Eof() ? u"none"_s : rows->value(0).toText();
    }
    void filterWorkgroup(const QString& filter) const {
        auto& edit = *window_->findChild<QLineEdit*>(u"WorkgroupFilter"_s);
        edit.setText(filter);
        QTest::keyClick(&edit, Qt::Key_Return);
    }

    TestFolder folder_;
    QSettings settings_{folder_.path(u"settings.ini"_s), QSettings::IniFormat};
    ScriptedAsker asker_;
    ScriptedForms forms_;
    std::unique_ptr<MainWindow> window_;
    Ref<dao::Database> database_; ///< as another program sees it
};

TEST_F(CatalogueOptionsTest, WithoutACatalogueThereIsNothingToChoose) {
    window_ = std::make_unique<MainWindow>(settings_);
    EXPECT_FALSE(entry().isEnabled());
    window_->showFile(folder_.demo(u"a.sqlite"_s));
    EXPECT_TRUE(entry().isEnabled());
}

TEST_F(CatalogueOptionsTest, TheDigitCountsFromTheNextCategoryOn) {
    open(folder_.emptyCatalogue(u"a.sqlite"_s));
    addSenders({4});
    open(folder_.path(u"a.sqlite"_s));
    EXPECT_EQ(newCategory(u"erste"_s), u"10 of 4"_s);
    choose(7);
    EXPECT_EQ(replicaDigit(*database_), 7);
    EXPECT_EQ(newCategory(u"zweite"_s), u"17 of 4"_s);
    setReplicaDigit(*database_, 2); // another program
    EXPECT_EQ(newCategory(u"dritte"_s), u"12 of 4"_s);
    EXPECT_TRUE(asker_.shown.isEmpty());
}

TEST_F(CatalogueOptionsTest, CancelStoresNothing) {
    open(folder_.demo(u"a.sqlite"_s));
    forms_.answers.append([](QDialog& dialog) {
        EXPECT_EQ(in<QSpinBox>(dialog, "ReplicaDigit").value(), 0);
        in<QSpinBox>(dialog, "ReplicaDigit").setValue(7);
        pressKey(dialog, Qt::Key_Escape);
    });
    entry().trigger();
    EXPECT_EQ(replicaDigit(*database_), 0);
    EXPECT_FALSE(settings_.contains(u"Senders"_s));
}

TEST_F(CatalogueOptionsTest, OfSeveralSendersTheChosenOneIsRememberedPerCatalogue) {
    open(folder_.emptyCatalogue(u"a.sqlite"_s));
    addSenders({7, 3});
    open(folder_.path(u"a.sqlite"_s));
    EXPECT_EQ(browser().CurrentSenderID(), 3);
    choose(0, u"7"_s);
    EXPECT_EQ(browser().CurrentSenderID(), 7);
    EXPECT_EQ(newCategory(u"erste"_s), u"10 of 7"_s);
    open(folder_.emptyCatalogue(u"b.sqlite"_s));
    addSenders({7, 3});
    open(folder_.path(u"b.sqlite"_s));
    EXPECT_EQ(browser().CurrentSenderID(), 3);
    open(folder_.path(u"a.sqlite"_s));
    EXPECT_EQ(browser().CurrentSenderID(), 7);
    database_->Execute(u"DELETE FROM ABSENDER WHERE [Absender-Schlüssel]=7"_s);
    open(folder_.path(u"a.sqlite"_s));
    EXPECT_EQ(browser().CurrentSenderID(), 3);
}

TEST_F(CatalogueOptionsTest, AFilterOfTheWorkgroupNamesTheSender) {
    open(folder_.emptyCatalogue(u"a.sqlite"_s));
    addSenders({3, 7, 9});
    open(folder_.path(u"a.sqlite"_s));
    filterWorkgroup(u"IN(9,7)"_s);
    EXPECT_EQ(newCategory(u"erste"_s), u"10 of 9"_s);
    filterWorkgroup(u"IN(7)"_s);
    EXPECT_EQ(newCategory(u"zweite"_s), u"20 of 7"_s);
    filterWorkgroup({});
    EXPECT_EQ(newCategory(u"dritte"_s), u"30 of 3"_s);
}

TEST_F(CatalogueOptionsTest, ACatalogueWithoutSendersGetsItsFirst) {
    open(folder_.emptyCatalogue(u"a.sqlite"_s));
    EXPECT_EQ(browser().CurrentSenderID(), 0);
    choose(0, u"1 (wird angelegt)"_s);
    EXPECT_EQ(SenderChoice::sendersOf(*database_), QList<Long>{1});
    EXPECT_EQ(newCategory(u"erste"_s), u"10 of 1"_s);
}

TEST_F(CatalogueOptionsTest, AForeignNumberIsToldAndReplaced) {
    open(folder_.demo(u"a.sqlite"_s));
    database_->setLocalNumber(4711);
    forms_.answers.append([](QDialog& dialog) {
        EXPECT_TRUE(in<QLabel>(dialog, "ForeignDigit").text().contains(u"4711"_s));
        EXPECT_EQ(in<QSpinBox>(dialog, "ReplicaDigit").value(), 0);
        clickOn(dialog, u"OK"_s);
    });
    entry().trigger();
    EXPECT_EQ(replicaDigit(*database_), 0);
}

TEST_F(CatalogueOptionsTest, WhatCannotBeStoredIsToldAndTheDialogStays) {
    const QString file = folder_.demo(u"a.sqlite"_s);
    const Ref<dao::Workspace> other = dao::DBEngine::CreateWorkspace();
    const Ref<dao::Database> writer = other->OpenDatabase(file);
    const Ref<dao::Database> database =
        dao::DBEngine::CreateWorkspace()->OpenDatabase(file, {.busyTimeoutMilliseconds = 0});
    SenderChoice senders(settings_);
    CatalogueOptions dialog(database, senders);
    dialog.show();
    in<QSpinBox>(dialog, "ReplicaDigit").setValue(5);
    other->BeginTrans();
    clickOn(dialog, u"OK"_s);
    ASSERT_EQ(asker_.shown.size(), 1);
    EXPECT_EQ(asker_.shown.first().text, u"Die Einstellungen wurden nicht gespeichert."_s);
    EXPECT_TRUE(asker_.shown.first().detail.contains(u"gesperrt"_s)) << asker_.shown.first().detail.toStdString();
    EXPECT_TRUE(dialog.isVisible());
    other->Rollback();
    clickOn(dialog, u"OK"_s);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(replicaDigit(*writer), 5);
}

TEST_F(CatalogueOptionsTest, AReadOnlyCatalogueSaysSo) {
    const QString path = folder_.demo(u"a.sqlite"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(18));
    file.write(QByteArray(1, 3)); // a later format, which this engine reads and never writes
    file.close();
    open(path);
    forms_.answers.append([](QDialog& dialog) {
        EXPECT_TRUE(in<QLabel>(dialog, "ReadOnly").text().contains(u"schreibgeschützt"_s));
        for (const char* field : {"ReplicaDigit", "Sender", "OK"})
            EXPECT_FALSE(in<QWidget>(dialog, field).isEnabled()) << field;
        clickOn(dialog, u"Cancel"_s);
    });
    entry().trigger();
    EXPECT_TRUE(asker_.shown.isEmpty());
}

} // namespace
