// The program as a whole, without a display.
#include "TestFolder.h"
#include "support/Printing.h"

#include <QImage>
#include <QProcess>
#include <optional>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

struct Ending {
    int status;
    QString output;
    QString errors;
};

Ending run(const QStringList& arguments) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
        environment.remove(name);
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(MKL_BIN_DIR "/artikelkatalog"), arguments);
    EXPECT_TRUE(program.waitForFinished(120000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

class ProgramTest : public ::testing::Test {
protected:
    Ending screenshot(const QStringList& arguments) const {
        return run(arguments + QStringList{u"--screenshot"_s, picture_});
    }
    void expectRefusal(const QString& file, const QString& part) const {
        const Ending ending = screenshot({file});
        EXPECT_EQ(ending.status, 1);
        EXPECT_TRUE(ending.errors.contains(part)) << ending.errors.toStdString();
        EXPECT_FALSE(QFile::exists(picture_));
    }

    TestFolder folder_;
    QString picture_ = folder_.path(u"bild.png"_s);
};

TEST_F(ProgramTest, MakesAPictureOfACatalogue) {
    const Ending ending = screenshot({folder_.demo(u"a.sqlite"_s)});
    EXPECT_EQ(ending.status, 0) << ending.errors.toStdString();
    EXPECT_EQ(QImage(picture_).size(), QSize(1000, 700));
}

TEST_F(ProgramTest, ThePictureShowsTheTree) {
    const QString file = folder_.demo(u"a.sqlite"_s, 40);
    ASSERT_EQ(screenshot({file}).status, 0);
    const QImage collapsed(picture_);
    ASSERT_EQ(screenshot({file, u"--expand"_s, u"2"_s}).status, 0);
    const QImage expanded(picture_);
    ASSERT_EQ(screenshot({}).status, 0);
    const QImage start(picture_);
    EXPECT_NE(collapsed, expanded);
    EXPECT_NE(collapsed, start);
}

TEST_F(ProgramTest, TheSizeIsAsWanted) {
    ASSERT_EQ(screenshot({folder_.demo(u"a.sqlite"_s), u"--size"_s, u"800x500"_s}).status, 0);
    EXPECT_EQ(QImage(picture_).size(), QSize(800, 500));
}

TEST_F(ProgramTest, RefusesWhatIsNoCatalogue) {
    expectRefusal(folder_.path(u"fehlt.sqlite"_s), u"fehlt.sqlite"_s);
    expectRefusal(folder_.file(u"null.sqlite"_s, {}), u"null.sqlite"_s);
    expectRefusal(folder_.file(u"text.sqlite"_s, "no database"), u"text.sqlite"_s);
    expectRefusal(folder_.foreignDatabase(u"fremd.sqlite"_s), u"ABSENDER"_s);
}

TEST_F(ProgramTest, ADatabaseIsNotImportedUnasked) {
    expectRefusal(folder_.file(u"alt.mdb"_s, "x"), u"importieren?"_s);
    EXPECT_FALSE(QFile::exists(folder_.path(u"alt.sqlite"_s)));
}

TEST_F(ProgramTest, APictureThatCannotBeWritten) {
    picture_ = folder_.path(u"fehlt/bild.png"_s);
    const Ending ending = screenshot({});
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(ending.errors.contains(u"bild.png"_s)) << ending.errors.toStdString();
}

TEST_F(ProgramTest, UsageErrors) {
    for (const QStringList& arguments : {QStringList{u"a"_s, u"b"_s},
                                         {u"--size"_s, u"10"_s},
                                         {u"--expand"_s, u"x"_s},
                                         {u"--expand"_s, u"-1"_s},
                                         {u"--nonsense"_s}}) {
        const Ending ending = run(arguments);
        EXPECT_EQ(ending.status, 2) << arguments.join(u' ').toStdString();
        EXPECT_FALSE(ending.errors.isEmpty());
    }
}

TEST_F(ProgramTest, TellsHowItIsCalled) {
    const Ending help = run({u"--help"_s});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.contains(u"--screenshot"_s));
    const Ending version = run({u"--version"_s});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.output.contains(u"Artikelkatalog"_s));
}

TEST_F(ProgramTest, WithoutADisplayItSaysSo) {
    const Ending ending = run({});
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(ending.errors.contains(u"--screenshot"_s)) << ending.errors.toStdString();
}

} // namespace
