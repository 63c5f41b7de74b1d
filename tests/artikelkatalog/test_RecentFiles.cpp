#include "apps/artikelkatalog/RecentFiles.h"
#include "support/Printing.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

class RecentFilesTest : public ::testing::Test {
protected:
    QTemporaryDir folder_;
    QSettings settings_{folder_.filePath(u"settings.ini"_s), QSettings::IniFormat};
    RecentFiles recent_{settings_};
};

TEST_F(RecentFilesTest, TheLatestStandsFirst) {
    recent_.add(u"/a/1.sqlite"_s);
    recent_.add(u"/a/2.sqlite"_s);
    EXPECT_EQ(recent_.files(), QStringList({u"/a/2.sqlite"_s, u"/a/1.sqlite"_s}));
}

TEST_F(RecentFilesTest, AFileStandsOnce) {
    recent_.add(u"/a/1.sqlite"_s);
    recent_.add(u"/a/2.sqlite"_s);
    recent_.add(u"/a/1.sqlite"_s);
    EXPECT_EQ(recent_.files(), QStringList({u"/a/1.sqlite"_s, u"/a/2.sqlite"_s}));
}

TEST_F(RecentFilesTest, NoMoreThanTheMaximum) {
    for (int i = 0; i < RecentFiles::MaximalCount + 3; ++i)
        recent_.add(u"/a/%1.sqlite"_s.arg(i));
    EXPECT_EQ(recent_.files().size(), RecentFiles::MaximalCount);
    EXPECT_EQ(recent_.files().first(), u"/a/10.sqlite"_s);
}

TEST_F(RecentFilesTest, RelativeNamesBecomePaths) {
    recent_.add(u"x.sqlite"_s);
    EXPECT_EQ(recent_.files(), QStringList(QDir::current().absoluteFilePath(u"x.sqlite"_s)));
    recent_.remove(u"x.sqlite"_s);
    EXPECT_TRUE(recent_.files().isEmpty());
}

TEST_F(RecentFilesTest, TheyLastInTheSettings) {
    recent_.add(u"/a/Gewürze.sqlite"_s);
    settings_.sync();
    QSettings again(settings_.fileName(), QSettings::IniFormat);
    EXPECT_EQ(RecentFiles(again).files(), QStringList(u"/a/Gewürze.sqlite"_s));
}

} // namespace
