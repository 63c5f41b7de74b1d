#include "core/mdlCommand.h"

#include "core/App.h"
#include "support/Printing.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using mkl::app;

namespace {

QString normalized(QString helpfile) {
    mkl::mdlCommand::NormalizeHelpfile(helpfile);
    EXPECT_EQ(app().HelpFile(), helpfile);
    return helpfile;
}

QString besideTheProgram(const QString& file) {
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath() + u'/' + file);
}

} // namespace

TEST(NormalizeHelpfile, CompletesANameWithThePathOfTheApplication) {
    EXPECT_EQ(normalized({}), besideTheProgram(u"mklart25.chm"_s));
    EXPECT_EQ(normalized(u"hilfe.chm"_s), besideTheProgram(u"hilfe.chm"_s));
}

TEST(NormalizeHelpfile, TakesAPathAsItStands) {
    for (const QString& path : {u"C:\\Programme\\hilfe.chm"_s, u"/opt/hilfe.chm"_s, u"hilfe/a.chm"_s, u".\\a.chm"_s})
        EXPECT_EQ(normalized(path), path);
}

TEST(NormalizeHelpfile, LeavesItsResultAsItIs) {
    const QString once = normalized({});
    EXPECT_EQ(normalized(once), once);
}

TEST(App, KnowsTheRunningProgram) {
    EXPECT_EQ(app().Path(), QDir::toNativeSeparators(QCoreApplication::applicationDirPath()));
    EXPECT_EQ(app().EXEName(), QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName());
    EXPECT_FALSE(app().Title().isEmpty());
}
