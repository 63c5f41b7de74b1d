// The program's window as its user and the window manager see it.
#include "TestFolder.h"
#include "desktop/Desktop.h"
#include "support/Printing.h"

#include <QProcess>

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

class WindowTest : public ::testing::Test {
protected:
    ~WindowTest() override {
        program_.kill();
        program_.waitForFinished();
    }

    void start(const QString& file) {
        program_.setProcessChannelMode(QProcess::MergedChannels);
        program_.start(QStringLiteral(MKL_BIN_DIR "/artikelkatalog"), {file});
        ASSERT_TRUE(program_.waitForStarted());
    }
    /// The visible windows of the program with that title.
    QStringList windows(const QString& title) const {
        const QString process = QString::number(program_.processId());
        return xdotool({u"search"_s, u"--onlyvisible"_s, u"--pid"_s, process, u"--name"_s, title})
            .split(u'\n', Qt::SkipEmptyParts);
    }
    bool waitForWindows(const QString& title, int count) const {
        return waitUntil([&] { return windows(title).size() == count; });
    }
    /// The window of that title, as soon as it is there.
    QString window(const QString& title) const {
        EXPECT_TRUE(waitForWindows(title, 1)) << title.toStdString();
        return windows(title).value(0);
    }
    /// Asks the window manager to close the window, as a click on its button does.
    void close(const QString& window) { xdotool({u"windowactivate"_s, u"--sync"_s, window, u"key"_s, u"alt+F4"_s}); }
    void expectCleanEnd() {
        EXPECT_TRUE(waitUntil([&] { return program_.state() == QProcess::NotRunning; }));
        EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program_.exitCode(), 0) << program_.readAll().toStdString();
    }

    TestFolder folder_;
    QProcess program_;
};

TEST_F(WindowTest, ShowsTheCatalogueAndEnds) {
    start(folder_.demo(u"Gewürze.sqlite"_s));
    const QString shown = window(u"^Artikelkatalog - Gewürze.sqlite$"_s);
    keepPicture(u"window"_s);
    close(shown);
    expectCleanEnd();
}

TEST_F(WindowTest, ClosedWhileItReads) {
    start(folder_.demo(u"gross.sqlite"_s, 30000));
    close(window(u"^Artikelkatalog"_s));
    expectCleanEnd();
}

TEST_F(WindowTest, ABadFileGetsAMessageAndTheWindowStays) {
    start(folder_.file(u"kaputt.sqlite"_s, "no database"));
    const QString title = u"^Artikelkatalog$"_s;
    EXPECT_TRUE(waitForWindows(title, 2)); // the window and the message box
    keepPicture(u"bad-file"_s);
    press(u"Return"_s);
    EXPECT_TRUE(waitForWindows(title, 1));
    EXPECT_EQ(program_.state(), QProcess::Running);
    close(window(title));
    expectCleanEnd();
}

} // namespace
