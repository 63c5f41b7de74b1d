// The program with catalogues on a real server.
#include "ScriptedKeyStore.h"
#include "ServerCatalogue.h"
#include "TestFolder.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "base/DateTime.h"
#include "browser/ArtCatBrowser.h"
#include "controls/TreeView.h"
#include "support/PostgresServer.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedForms.h"
#include "support/StandingClock.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSettings>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

const QString secret = u"Geheim-17"_s;

class ServerCatalogueTest : public ::testing::Test {
protected:
    ServerCatalogueTest() { window_.show(); }

    Long nodeCount() const { return window_.browser()->CategoryTreeView()->Nodes().Count(); }
    QAction* entry(const char* name) const { return window_.findChild<QAction*>(QLatin1StringView(name)); }
    QStringList recentFiles() const { return settings_.value(u"RecentFiles"_s).toStringList(); }
    QString everythingStored() {
        settings_.sync();
        QFile file(folder_.path(u"settings.ini"_s));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    template<class Widget>
    static Widget& in(QDialog& dialog, const char* name) {
        return *dialog.findChild<Widget*>(QLatin1StringView(name));
    }
    /// The next dialog asks for a password and gets this one.
    void typePassword(const QString& password, bool remember = false, bool isWrongBefore = false) {
        forms_.answers.append([=](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), u"PasswordDialog"_s);
            EXPECT_EQ(dialog.findChild<QLabel*>(u"Wrong"_s) != nullptr, isWrongBefore);
            EXPECT_EQ(in<QLineEdit>(dialog, "Password").echoMode(), QLineEdit::Password);
            in<QLineEdit>(dialog, "Password").setText(password);
            in<QCheckBox>(dialog, "Remember").setChecked(remember);
            clickOn(dialog, u"OK"_s);
        });
    }
    void expectStartPage() const {
        EXPECT_EQ(window_.browser(), nullptr);
        EXPECT_TRUE(window_.findChild<QWidget*>(u"StartPage"_s)->isVisible());
        EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog"_s);
    }
    /// What the one message said, detail included.
    QString takeMessage() {
        EXPECT_EQ(asker_.shown.size(), 1);
        const QList<MessageBox> shown = std::exchange(asker_.shown, {});
        return shown.isEmpty() ? QString() : shown.first().text + u'\n' + shown.first().detail;
    }

    TestFolder folder_;
    QSettings settings_{folder_.path(u"settings.ini"_s), QSettings::IniFormat};
    ScriptedAsker asker_;
    ScriptedForms forms_;
    ScriptedKeyStore keys_;
    ServerCatalogue catalogue_;
    MainWindow window_{settings_};
};

TEST_F(ServerCatalogueTest, OpensWithoutAPasswordWhereTheServerWantsNone) {
    ASSERT_TRUE(window_.showFile(catalogue_.url()));
    EXPECT_EQ(nodeCount(), 3);
    EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog - %1 auf diesem Rechner"_s.arg(catalogue_.database()));
    EXPECT_EQ(recentFiles(), QStringList(catalogue_.url()));
    EXPECT_EQ(keys_.asked, 0);
    EXPECT_TRUE(asker_.shown.isEmpty());
}

TEST_F(ServerCatalogueTest, TheDialogOpensIt) {
    forms_.answers.append([this](QDialog& dialog) {
        in<QLineEdit>(dialog, "Host").setText(catalogue_.folder());
        in<QLineEdit>(dialog, "Database").setText(catalogue_.database());
        in<QLineEdit>(dialog, "User").setText(u"mkl"_s);
        clickOn(dialog, u"OK"_s);
    });
    entry("OpenServer")->trigger();
    ASSERT_NE(window_.browser(), nullptr);
    EXPECT_EQ(nodeCount(), 3);
    // The next time it begins with what was open.
    forms_.answers.append([this](QDialog& dialog) {
        EXPECT_EQ(in<QLineEdit>(dialog, "Host").text(), catalogue_.folder());
        EXPECT_EQ(in<QLineEdit>(dialog, "Database").text(), catalogue_.database());
        EXPECT_EQ(in<QLineEdit>(dialog, "User").text(), u"mkl"_s);
        pressKey(dialog, Qt::Key_Escape);
    });
    entry("OpenServer")->trigger();
    EXPECT_EQ(nodeCount(), 3);
}

TEST_F(ServerCatalogueTest, TheStartPageAndTheRecentOnesOpenItToo) {
    forms_.answers.append([](QDialog& dialog) { pressKey(dialog, Qt::Key_Escape); });
    window_.findChild<QPushButton*>(u"ServerButton"_s)->click();
    expectStartPage();
    settings_.setValue(u"RecentFiles"_s, QStringList(catalogue_.url()));
    auto* menu = window_.findChild<QMenu*>(u"RecentFiles"_s);
    Q_EMIT menu->aboutToShow();
    EXPECT_EQ(menu->actions().first()->text(), QString(catalogue_.url()).replace(u"&"_s, u"&&"_s));
    menu->actions().first()->trigger();
    EXPECT_EQ(nodeCount(), 3);
}

TEST_F(ServerCatalogueTest, APasswordIsAskedForAndStandsNowhere) {
    catalogue_.addClerk(u"mkl_clerk"_s, secret);
    typePassword(secret);
    ASSERT_TRUE(window_.showFile(catalogue_.url(u"mkl_clerk"_s)));
    EXPECT_EQ(nodeCount(), 3);
    EXPECT_TRUE(keys_.entries.isEmpty());
    window_.close();
    EXPECT_FALSE(everythingStored().contains(secret));
    EXPECT_TRUE(everythingStored().contains(u"mkl_clerk"_s));
    EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog - %1 auf diesem Rechner"_s.arg(catalogue_.database()));
}

TEST_F(ServerCatalogueTest, AWrongPasswordIsAskedForAgain) {
    catalogue_.addClerk(u"mkl_clerk"_s, secret);
    typePassword(u"falsch"_s);
    typePassword(u"auch falsch"_s, false, true);
    typePassword(secret, false, true);
    EXPECT_TRUE(window_.showFile(catalogue_.url(u"mkl_clerk"_s)));
    EXPECT_TRUE(asker_.shown.isEmpty());
}

TEST_F(ServerCatalogueTest, WhoGivesUpHasTheStartPageStill) {
    catalogue_.addClerk(u"mkl_clerk"_s, secret);
    forms_.answers.append([](QDialog& dialog) { pressKey(dialog, Qt::Key_Escape); });
    EXPECT_FALSE(window_.showFile(catalogue_.url(u"mkl_clerk"_s)));
    expectStartPage();
    EXPECT_TRUE(asker_.shown.isEmpty());
    EXPECT_TRUE(window_.showFile(catalogue_.url()));
}

TEST_F(ServerCatalogueTest, TheKeyStoreRemembersIt) {
    catalogue_.addClerk(u"mkl_clerk"_s, secret);
    const QString url = catalogue_.url(u"mkl_clerk"_s);
    typePassword(u"falsch"_s, true);
    typePassword(secret, true, true);
    ASSERT_TRUE(window_.showFile(url));
    EXPECT_EQ(keys_.entries.values(), QStringList(secret)); // not the wrong one
    ASSERT_TRUE(window_.showFile(url));                     // nobody is asked
    EXPECT_FALSE(everythingStored().contains(secret));
    // An outdated one is asked for anew.
    catalogue_.addClerk(u"mkl_clerk"_s, u"Neu-18"_s);
    forms_.answers.append([](QDialog& dialog) {
        EXPECT_TRUE(in<QCheckBox>(dialog, "Remember").isChecked());
        in<QLineEdit>(dialog, "Password").setText(u"Neu-18"_s);
        clickOn(dialog, u"OK"_s);
    });
    ASSERT_TRUE(window_.showFile(url));
    EXPECT_EQ(keys_.entries.values(), QStringList(u"Neu-18"_s));
    // Who wants it no longer remembered has it forgotten.
    catalogue_.addClerk(u"mkl_clerk"_s, secret);
    typePassword(secret, false, true);
    ASSERT_TRUE(window_.showFile(url));
    EXPECT_TRUE(keys_.entries.isEmpty());
}

TEST_F(ServerCatalogueTest, WithoutAKeyStoreTheDialogSaysSo) {
    keys_.isThere = false;
    catalogue_.addClerk(u"mkl_clerk"_s, secret);
    forms_.answers.append([](QDialog& dialog) {
        EXPECT_FALSE(in<QCheckBox>(dialog, "Remember").isVisible());
        EXPECT_TRUE(in<QLabel>(dialog, "NoStore").text().contains(u"Schlüsselbund"_s));
        in<QLineEdit>(dialog, "Password").setText(secret);
        clickOn(dialog, u"OK"_s);
    });
    EXPECT_TRUE(window_.showFile(catalogue_.url(u"mkl_clerk"_s)));
    EXPECT_TRUE(asker_.shown.isEmpty());
}

TEST_F(ServerCatalogueTest, AKeyStoreThatKeepsNothingIsTold) {
    keys_.canKeep = false;
    catalogue_.addClerk(u"mkl_clerk"_s, secret);
    typePassword(secret, true);
    EXPECT_TRUE(window_.showFile(catalogue_.url(u"mkl_clerk"_s)));
    EXPECT_TRUE(takeMessage().contains(u"Schlüsselbund"_s));
}

TEST_F(ServerCatalogueTest, WhatCannotBeOpenedIsToldAndLeavesTheStartPage) {
    const QString missing = QString(catalogue_.url()).replace(catalogue_.database(), u"gibtesnicht"_s);
    EXPECT_FALSE(window_.showFile(missing));
    EXPECT_TRUE(takeMessage().contains(u"keine Datenbank 'gibtesnicht'"_s));
    EXPECT_FALSE(window_.showFile(u"postgresql://mkl@/x?host=/tmp/mkl-nowhere"_s));
    EXPECT_TRUE(takeMessage().contains(u"keine Verbindung"_s));
    const QString foreign = PostgresServer::instance().takeDatabase();
    runOnServer(foreign, "CREATE TABLE \"Kunden\" (\"Name\" text)");
    EXPECT_FALSE(window_.showFile(foreign));
    EXPECT_TRUE(takeMessage().contains(u"ABSENDER"_s));
    PostgresServer::instance().returnDatabase(foreign);
    catalogue_.run("ALTER TABLE \"ARTIKEL\" ALTER COLUMN \"Artikelname\" TYPE bytea USING NULL");
    EXPECT_FALSE(window_.showFile(catalogue_.url()));
    EXPECT_TRUE(takeMessage().contains(u"Artikelname"_s));
    expectStartPage();
    EXPECT_EQ(recentFiles(), QStringList());
}

TEST_F(ServerCatalogueTest, AServerThatIsAwayStaysAmongTheRecentOnes) {
    ASSERT_TRUE(window_.showFile(catalogue_.url()));
    PostgresServer::instance().stop();
    EXPECT_FALSE(window_.showFile(catalogue_.url()));
    EXPECT_TRUE(takeMessage().contains(u"keine Verbindung"_s));
    PostgresServer::instance().start();
    EXPECT_EQ(recentFiles(), QStringList(catalogue_.url()));
    EXPECT_TRUE(window_.showFile(catalogue_.url()));
    EXPECT_EQ(nodeCount(), 3);
}

TEST_F(ServerCatalogueTest, APasswordInTheAddressIsRefused) {
    const QString url = u"postgresql://mkl:%1@localhost/katalog"_s.arg(secret);
    EXPECT_FALSE(window_.showFile(url));
    const QString message = takeMessage();
    EXPECT_TRUE(message.contains(u"enthält ein Kennwort"_s)) << message.toStdString();
    EXPECT_FALSE(message.contains(secret));
    EXPECT_EQ(recentFiles(), QStringList());
    expectStartPage();
}

TEST_F(ServerCatalogueTest, AnUnencryptedLineToAnotherMachineIsAskedAbout) {
    for (const QString& mode : {u"?sslmode=disable"_s, u"?sslmode=prefer"_s, u"?sslmode=allow"_s, u""_s}) {
        asker_.answers = {vbNo};
        EXPECT_FALSE(window_.showFile(u"postgresql://anna@server1.invalid/katalog"_s + mode));
        ASSERT_EQ(asker_.shown.size(), 1) << mode.toStdString();
        const MessageBox box = asker_.shown.takeFirst();
        EXPECT_TRUE(box.text.contains(u"'server1.invalid'"_s));
        EXPECT_TRUE(box.text.contains(u"mitlesen"_s));
        EXPECT_EQ(box.flags, vbYesNo + vbExclamation + vbDefaultButton2);
    }
    qputenv("PGSSLMODE", "disable");
    asker_.answers = {vbNo};
    EXPECT_FALSE(window_.showFile(u"postgresql://anna@server1.invalid/katalog"_s));
    qunsetenv("PGSSLMODE");
    EXPECT_TRUE(asker_.shown.takeFirst().text.contains(u"wird nicht verschlüsselt"_s));
    asker_.answers = {vbYes};
    EXPECT_FALSE(window_.showFile(u"postgresql://anna@server1.invalid/katalog?sslmode=disable"_s));
    EXPECT_EQ(asker_.shown.size(), 2); // and there is no such server
    expectStartPage();
}

TEST_F(ServerCatalogueTest, WhoMayOnlyReadIsToldAndChangesNothing) {
    catalogue_.addReader(u"mkl_reader"_s, secret);
    typePassword(secret);
    ASSERT_TRUE(window_.showFile(catalogue_.url(u"mkl_reader"_s)));
    EXPECT_EQ(nodeCount(), 3);
    EXPECT_EQ(window_.windowTitle(),
              u"Artikelkatalog - %1 auf diesem Rechner (schreibgeschützt)"_s.arg(catalogue_.database()));
    TreeView& tree = *window_.browser()->CategoryTreeView();
    window_.activateWindow(); // no window manager does it behind a dialog
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    tree.setFocus();
    asker_.texts = {u"Anderer Name"_s};
    QTest::keyClick(&tree, Qt::Key_F2);
    const QString message = takeMessage();
    EXPECT_TRUE(message.contains(u"kein Recht"_s) && message.contains(u"'ARTIKEL/KATEGORIEN' fehlt Ihnen UPDATE"_s))
        << message.toStdString();
    EXPECT_EQ(tree.Nodes().Item(1)->Text(), u"001 - Schrauben"_s);
    EXPECT_EQ(catalogue_.nameOf(10), u"Schrauben"_s);
}

// The date is that of the machine where somebody works; the server's own clock tells something else.
TEST_F(ServerCatalogueTest, AClockThatIsFarOffDatesTheRowsAndStopsNobody) {
    ASSERT_TRUE(window_.showFile(catalogue_.url()));
    TreeView& tree = *window_.browser()->CategoryTreeView();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    const std::pair<const char*, Qt::Key> moves[] = {{"1970-01-01 00:00:00", Qt::Key_Down},
                                                     {"2100-06-30 12:00:00", Qt::Key_Up},
                                                     {"9999-12-31 23:59:59", Qt::Key_Down}};
    for (const auto& [date, key] : moves) {
        const StandingClock clock(*dateFromIso(QString::fromLatin1(date)));
        tree.setFocus();
        QTest::keyClick(&tree, key, Qt::AltModifier);
        EXPECT_TRUE(asker_.shown.isEmpty()) << asker_.shown.first().text.toStdString();
        EXPECT_EQ(catalogue_.run("SELECT \"LetzteÄnderung\" || ' ' || \"Order\" FROM \"ARTIKEL/KATEGORIEN\" WHERE "
                                 "\"Kategorie-Schlüssel\" = 10"),
                  QByteArray(date) + (key == Qt::Key_Down ? " 2" : " 1"));
    }
    ASSERT_TRUE(window_.showFile(catalogue_.url()));
    EXPECT_EQ(nodeCount(), 3);
}

TEST_F(ServerCatalogueTest, TheSenderIsRememberedPerCatalogue) {
    catalogue_.run("INSERT INTO \"ABSENDER\" VALUES (7)");
    settings_.setValue(u"Senders"_s, QVariantMap{{catalogue_.url(), 7}});
    ASSERT_TRUE(window_.showFile(catalogue_.url()));
    EXPECT_EQ(window_.browser()->CurrentSenderID(), 7);
}

struct Ending {
    int status;
    QString output;
};

Ending run(const QStringList& arguments) {
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(MKL_BIN_DIR "/artikelkatalog"), arguments);
    EXPECT_TRUE(program.waitForFinished(120000));
    return {program.exitCode(), QString::fromUtf8(program.readAll())};
}

TEST_F(ServerCatalogueTest, TheProgramTakesAnAddress) {
    const QString picture = folder_.path(u"bild.png"_s);
    const Ending shown = run({catalogue_.url(), u"--screenshot"_s, picture});
    EXPECT_EQ(shown.status, 0) << shown.output.toStdString();
    EXPECT_TRUE(QFile::exists(picture));
    catalogue_.addClerk(u"mkl_clerk"_s, secret);
    const Ending asked = run({catalogue_.url(u"mkl_clerk"_s), u"--screenshot"_s, picture});
    EXPECT_EQ(asked.status, 1);
    EXPECT_TRUE(asked.output.contains(u"verlangt ein Kennwort"_s)) << asked.output.toStdString();
}

TEST_F(ServerCatalogueTest, TheProgramRefusesAPasswordAmongItsArguments) {
    for (const QString& url : {u"postgresql://mkl:%1@localhost/x"_s, u"postgresql://localhost/x?password=%1"_s,
                               u"POSTGRES://mkl:%1@localhost/x"_s}) {
        const Ending refused = run({url.arg(secret), u"--screenshot"_s, folder_.path(u"bild.png"_s)});
        EXPECT_EQ(refused.status, 2);
        EXPECT_TRUE(refused.output.contains(u"enthält ein Kennwort"_s)) << refused.output.toStdString();
        EXPECT_FALSE(refused.output.contains(secret));
    }
}

} // namespace
