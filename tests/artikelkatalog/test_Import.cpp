// Opening an .mdb in the program.
#include "TestFolder.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "browser/ArtCatBrowser.h"
#include "controls/TreeView.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"

#include <QAction>
#include <QSettings>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

class ImportTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QFile::copy(QStringLiteral(MKL_SOURCE_DIR "/tests/data/catalogue-small.mdb"), source_));
    }

    TestFolder folder_;
    const QString source_ = folder_.path(u"Bestand 25.mdb"_s);
    const QString target_ = folder_.path(u"Bestand 25.sqlite"_s);
    QSettings settings_{folder_.path(u"settings.ini"_s), QSettings::IniFormat};
    ScriptedAsker asker_;
    MainWindow window_{settings_};
};

TEST_F(ImportTest, OffersReportsAndShows) {
    asker_.answers = {vbYes, vbOK};
    ASSERT_TRUE(window_.showFile(source_));
    ASSERT_EQ(asker_.shown.size(), 2);
    EXPECT_TRUE(asker_.shown[0].text.contains(u"Bestand 25.sqlite"_s));
    EXPECT_TRUE(asker_.shown[1].detail.contains(u"ARTIKEL/KATEGORIEN: 12"_s)) << asker_.shown[1].detail.toStdString();
    EXPECT_EQ(window_.windowTitle(), u"Artikelkatalog - Bestand 25.sqlite"_s);
    EXPECT_EQ(window_.browser()->CategoryTreeView()->Nodes().Count(), 12);
}

TEST_F(ImportTest, ADeclinedOneLeavesNothing) {
    asker_.answers = {vbNo};
    EXPECT_FALSE(window_.showFile(source_));
    EXPECT_FALSE(QFile::exists(target_));
    EXPECT_EQ(window_.browser(), nullptr);
}

TEST_F(ImportTest, AnExistingCatalogueIsOpenedNotOverwritten) {
    folder_.demo(u"Bestand 25.sqlite"_s, 5);
    asker_.answers = {vbYes};
    ASSERT_TRUE(window_.showFile(source_));
    EXPECT_EQ(asker_.shown.size(), 1);
    EXPECT_EQ(window_.browser()->CategoryTreeView()->Nodes().Count(), 5);
}

TEST_F(ImportTest, AForeignFileIsToldAndLeavesNothing) {
    const QString foreign = folder_.file(u"kein.mdb"_s, "This is no database at all.");
    asker_.answers = {vbYes, vbOK};
    EXPECT_FALSE(window_.showFile(foreign));
    ASSERT_EQ(asker_.shown.size(), 2);
    EXPECT_EQ(asker_.shown[1].text, u"Die Datenbank 'kein.mdb' wurde nicht importiert."_s);
    EXPECT_FALSE(asker_.shown[1].detail.isEmpty());
    EXPECT_FALSE(QFile::exists(folder_.path(u"kein.sqlite"_s)));
}

} // namespace
