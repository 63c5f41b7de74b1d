#include "TestFolder.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "browser/ArtCatBrowser.h"
#include "controls/FormRunner.h"
#include "controls/TreeView.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedPump.h"

#include <QAction>
#include <QCoreApplication>
#include <QFileDialog>
#include <QMenu>
#include <QPushButton>
#include <QSettings>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

/// Picks a file in every file dialog.
class FilePicker final : public FormRunner {
public:
    explicit FilePicker(QString file)
        : file_(std::move(file))
        , former_(setFormRunner(this)) {}
    ~FilePicker() override { setFormRunner(former_); }
    Q_DISABLE_COPY_MOVE(FilePicker)

    int run(QDialog& form) override {
        if (file_.isEmpty()) return QDialog::Rejected;
        dynamic_cast<QFileDialog&>(form).selectFile(file_);
        return QDialog::Accepted;
    }

private:
    QString file_;
    FormRunner* former_;
};

class MainWindowTest : public ::testing::Test {
protected:
    Long nodeCount() const { return window_.browser()->CategoryTreeView()->Nodes().Count(); }
    QAction* entry(const char* name) const { return window_.findChild<QAction*>(QLatin1StringView(name)); }
    QStringList recentEntries() const {
        auto* menu = window_.findChild<QMenu*>(u"RecentFiles"_s);
        Q_EMIT menu->aboutToShow();
        QStringList captions;
        for (const QAction* action : menu->actions())
            captions += action->text();
        return captions;
    }

    TestFolder folder_;
    QSettings settings_{folder_.path(u"settings.ini"_s), QSettings::IniFormat};
    ScriptedAsker asker_;
    MainWindow window_{settings_};
};

TEST_F(MainWindowTest, TheBrowsersQuitClosesIt) {
    ASSERT_TRUE(window_.showFile(folder_.demo(u"Werkzeug.sqlite"_s, 10)));
    window_.show();
    Q_EMIT window_.browser()->Quit();
    EXPECT_TRUE(window_.isVisible()) << "not in the middle of the control's own event";
    QCoreApplication::processEvents();
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(MainWindowTest, StartsWithoutACatalogue) {
    EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog"_s);
    EXPECT_EQ(window_.browser(), nullptr);
    EXPECT_NE(window_.findChild<QWidget*>(u"StartPage"_s), nullptr);
    EXPECT_EQ(recentEntries(), QStringList(u"(keine)"_s));
}

TEST_F(MainWindowTest, ShowsTheTreeOfACatalogue) {
    ASSERT_TRUE(window_.showFile(folder_.demo(u"Gewürze.sqlite"_s, 12)));
    EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog - Gewürze.sqlite"_s);
    EXPECT_EQ(nodeCount(), 12);
    EXPECT_TRUE(asker_.shown.isEmpty());
    EXPECT_EQ(recentEntries(), QStringList(folder_.path(u"Gewürze.sqlite"_s)));
}

TEST_F(MainWindowTest, ExpandsAsManyLevelsAsWanted) {
    window_.showFile(folder_.demo(u"a.sqlite"_s, 40));
    const Ref<Node> root = window_.browser()->CategoryTreeView()->Nodes().Item(1);
    ASSERT_GT(root->Children(), 0);
    window_.expandTree(0);
    EXPECT_FALSE(root->Expanded());
    window_.expandTree(1);
    EXPECT_TRUE(root->Expanded());
    EXPECT_FALSE(root->Child()->Expanded());
}

TEST_F(MainWindowTest, AnEmptyCatalogueIsFine) {
    ASSERT_TRUE(window_.showFile(folder_.emptyCatalogue(u"leer.sqlite"_s)));
    EXPECT_EQ(nodeCount(), 0);
    window_.expandTree(2);
    EXPECT_TRUE(asker_.shown.isEmpty());
}

TEST_F(MainWindowTest, WhatCannotBeOpenedLeavesTheOpenOne) {
    const QStringList bad{folder_.path(u"fehlt.sqlite"_s), folder_.file(u"null.sqlite"_s, {}),
                          folder_.file(u"text.sqlite"_s, QByteArray(5000, 'x')),
                          folder_.foreignDatabase(u"fremd.sqlite"_s), folder_.path(u"."_s)};
    const QString good = folder_.demo(u"gut.sqlite"_s);
    ASSERT_TRUE(window_.showFile(good));
    for (const QString& file : bad) {
        asker_.shown.clear();
        EXPECT_FALSE(window_.showFile(file));
        ASSERT_EQ(asker_.shown.size(), 1) << file.toStdString();
        EXPECT_FALSE(asker_.shown.first().detail.isEmpty()) << file.toStdString();
        EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog - gut.sqlite"_s);
        EXPECT_EQ(nodeCount(), 12);
    }
    EXPECT_EQ(recentEntries(), QStringList(good));
}

TEST_F(MainWindowTest, TheMissingTableIsNamed) {
    EXPECT_FALSE(window_.showFile(folder_.foreignDatabase(u"fremd.sqlite"_s)));
    ASSERT_EQ(asker_.shown.size(), 1);
    EXPECT_EQ(asker_.shown.first().text, u"Der Katalog 'fremd.sqlite' kann nicht geöffnet werden."_s);
    EXPECT_TRUE(asker_.shown.first().detail.contains(u"Tabelle 'ABSENDER'"_s))
        << asker_.shown.first().detail.toStdString();
}

TEST_F(MainWindowTest, TheTitleTellsThatNothingCanBeWritten) {
    const QString file = folder_.demo(u"a.sqlite"_s);
    QFile::setPermissions(file, QFile::ReadOwner);
    if (QFileInfo(file).isWritable()) GTEST_SKIP() << "this user may write everything";
    ASSERT_TRUE(window_.showFile(file));
    EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog - a.sqlite (schreibgeschützt)"_s);
}

TEST_F(MainWindowTest, ALockedCatalogueIsTold) {
    const QString file = folder_.demo(u"a.sqlite"_s);
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    const Ref<dao::Database> other = workspace->OpenDatabase(file);
    other->executeNative(u"PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE"_s);
    EXPECT_FALSE(window_.showFile(file));
    ASSERT_EQ(asker_.shown.size(), 1);
    EXPECT_TRUE(asker_.shown.first().detail.contains(u"gesperrt"_s)) << asker_.shown.first().detail.toStdString();
    other->executeNative(u"ROLLBACK"_s);
}

TEST_F(MainWindowTest, AFileThatIsGoneLeavesTheRecentOnes) {
    const QString file = folder_.demo(u"a.sqlite"_s);
    window_.showFile(file);
    window_.showFile(folder_.demo(u"b.sqlite"_s));
    QFile::remove(file);
    window_.showFile(file);
    EXPECT_EQ(recentEntries(), QStringList(folder_.path(u"b.sqlite"_s)));
}

TEST_F(MainWindowTest, OneCatalogueReplacesTheOther) {
    window_.showFile(folder_.demo(u"a.sqlite"_s, 12));
    window_.showFile(folder_.demo(u"b.sqlite"_s, 7));
    EXPECT_EQ(nodeCount(), 7);
    EXPECT_EQ(recentEntries(), QStringList({folder_.path(u"b.sqlite"_s), folder_.path(u"a.sqlite"_s)}));
}

TEST_F(MainWindowTest, ClosingInTheMiddleOfARead) {
    const QString file = folder_.demo(u"a.sqlite"_s, 200);
    window_.show();
    int served = 0;
    {
        const ScriptedPump pump([&] {
            if (++served == 2) window_.close();
        });
        EXPECT_FALSE(window_.showFile(file));
    }
    EXPECT_GE(served, 2);
    EXPECT_EQ(window_.browser(), nullptr);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(MainWindowTest, NoSecondCatalogueInTheMiddleOfARead) {
    const QString first = folder_.demo(u"a.sqlite"_s, 12);
    const QString second = folder_.demo(u"b.sqlite"_s, 7);
    bool isRefused = true;
    {
        const ScriptedPump pump([&] { isRefused &= !window_.showFile(second); });
        EXPECT_TRUE(window_.showFile(first));
    }
    EXPECT_TRUE(isRefused);
    EXPECT_EQ(nodeCount(), 12);
}

TEST_F(MainWindowTest, OpensWhatTheDialogGives) {
    const FilePicker picker(folder_.demo(u"a.sqlite"_s));
    entry("Open")->trigger();
    EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog - a.sqlite"_s);
}

TEST_F(MainWindowTest, ACancelledDialogChangesNothing) {
    const FilePicker picker({});
    entry("Open")->trigger();
    entry("Import")->trigger();
    EXPECT_EQ(window_.browser(), nullptr);
    EXPECT_TRUE(asker_.shown.isEmpty());
}

TEST_F(MainWindowTest, TheStartPageOpensToo) {
    const FilePicker picker(folder_.demo(u"a.sqlite"_s));
    window_.findChild<QPushButton*>(u"OpenButton"_s)->click();
    EXPECT_NE(window_.browser(), nullptr);
}

TEST_F(MainWindowTest, TheRecentOnesOpen) {
    const QString file = folder_.demo(u"a & b.sqlite"_s);
    window_.showFile(file);
    window_.showFile(folder_.demo(u"c.sqlite"_s));
    recentEntries();
    window_.findChild<QMenu*>(u"RecentFiles"_s)->actions().at(1)->trigger();
    EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog - a & b.sqlite"_s);
}

TEST_F(MainWindowTest, ReloadReadsAnew) {
    const QString file = folder_.demo(u"a.sqlite"_s, 12);
    window_.showFile(file);
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    openCatalogue(*workspace, file)->Execute(u"DELETE FROM [ARTIKEL/KATEGORIEN]"_s, dao::dbFailOnError);
    entry("Reload")->trigger();
    EXPECT_EQ(nodeCount(), 0);
}

TEST_F(MainWindowTest, ViewEntriesWithoutACatalogueDoNothing) {
    for (const char* name : {"Reload", "StatusBar", "Imageset2"})
        EXPECT_FALSE(entry(name)->isEnabled()) << name;
}

TEST_F(MainWindowTest, TheIconsChangeWithTheSet) {
    window_.showFile(folder_.demo(u"a.sqlite"_s));
    const auto image = [this] { return window_.browser()->CategoryTreeView()->Nodes().Item(1)->Image(); };
    EXPECT_FALSE(image().contains(u'2'));
    entry("Imageset2")->trigger();
    EXPECT_TRUE(image().contains(u'2'));
    EXPECT_TRUE(entry("Imageset2")->isChecked());
}

TEST_F(MainWindowTest, TheStatusBarGoes) {
    window_.showFile(folder_.demo(u"a.sqlite"_s));
    EXPECT_TRUE(entry("StatusBar")->isChecked());
    entry("StatusBar")->trigger();
    EXPECT_FALSE(window_.browser()->ShowStatusBar());
}

TEST_F(MainWindowTest, TheWindowKeepsItsSize) {
    window_.resize(640, 480);
    window_.close();
    const MainWindow again(settings_);
    EXPECT_EQ(again.size(), QSize(640, 480));
}

} // namespace
