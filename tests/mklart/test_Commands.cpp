#include "Tool.h"
#include "support/Printing.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class Commands : public testing::Test {
protected:
    /// Runs what must succeed, and gives its output.
    QString done(const QStringList& arguments) const {
        const ToolResult result = tool.run(arguments);
        EXPECT_EQ(result.status, 0) << arguments.join(u' ').toStdString() << ": " << result.errors.toStdString();
        return result.output;
    }
    void importSmall() const { done({u"import"_s, testData(u"catalogue-small.mdb"_s), u"klein.sqlite"_s}); }
    QString sql(const QString& statement) const { return done({u"sql"_s, u"klein.sqlite"_s, statement}); }
    QJsonObject sqlJson(const QString& statement) const {
        return tool.run({u"sql"_s, u"klein.sqlite"_s, statement, u"--json"_s}).json();
    }

    Tool tool;
};

} // namespace

TEST_F(Commands, newMakesAnEmptyCatalogueOnce) {
    done({u"new"_s, u"neu.sqlite"_s});
    EXPECT_EQ(tool.files(), QStringList{u"neu.sqlite"_s});
    EXPECT_EQ(done({u"tree"_s, u"neu.sqlite"_s}), QString());
    EXPECT_EQ(tool.run({u"new"_s, u"neu.sqlite"_s}).status, 1);
    done({u"check"_s, u"neu.sqlite"_s});
}

TEST_F(Commands, demoIsSoundAndRepeatable) {
    const QStringList figures = {u"--articles=50"_s, u"--categories=12"_s, u"--seed=3"_s};
    done(QStringList{u"demo"_s, u"a.sqlite"_s} + figures);
    done(QStringList{u"demo"_s, u"b.sqlite"_s} + figures);
    const QString tree = done({u"tree"_s, u"a.sqlite"_s});
    EXPECT_EQ(tree.count(u'\n'), 12);
    EXPECT_EQ(tree, done({u"tree"_s, u"b.sqlite"_s}));
    EXPECT_TRUE(tool.run({u"check"_s, u"a.sqlite"_s, u"--json"_s}).json()[u"damaged"_s] == false);
}

TEST_F(Commands, importNamesItsTargetAfterTheSource) {
    ASSERT_TRUE(QFile::copy(testData(u"catalogue-small.mdb"_s), tool.path(u"alt.mdb"_s)));
    EXPECT_TRUE(done({u"import"_s, u"alt.mdb"_s}).contains(u"270"));
    EXPECT_EQ(tool.files(), (QStringList{u"alt.mdb"_s, u"alt.sqlite"_s}));
    const ToolResult again = tool.run({u"import"_s, u"alt.mdb"_s});
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.errors.contains(u"alt.sqlite"));
}

TEST_F(Commands, importOfAFolderStandsBesideTheFolder) {
    ASSERT_TRUE(QDir(tool.path({})).mkdir(u"daten"_s));
    const QDir source(testData(u"csv-small"_s));
    for (const QString& name : source.entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(source.filePath(name), tool.path(u"daten/"_s + name)));
    done({u"import"_s, u"daten/"_s});
    EXPECT_EQ(tool.files(), QStringList{u"daten.sqlite"_s});
}

TEST_F(Commands, importFillsAnEmptyCatalogueFromCsv) {
    done({u"new"_s, u"neu.sqlite"_s});
    done({u"import"_s, testData(u"csv-small"_s), u"neu.sqlite"_s});
    EXPECT_EQ(tool.run({u"info"_s, u"neu.sqlite"_s, u"--json"_s}).json()[u"rows"_s][u"ARTIKEL"_s], 40);
}

TEST_F(Commands, importRefusesDamageAndLeavesNothing) {
    QFile whole(testData(u"catalogue-small.mdb"_s)), cut(tool.path(u"kurz.mdb"_s));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly) && cut.open(QIODevice::WriteOnly));
    cut.write(whole.read(200000));
    cut.close();
    const ToolResult result = tool.run({u"import"_s, u"kurz.mdb"_s, u"neu.sqlite"_s});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains(u"unvollständig")) << result.errors.toStdString();
    EXPECT_EQ(result.errors.count(u'\n'), 1);
    EXPECT_EQ(tool.files(), QStringList{u"kurz.mdb"_s});
}

TEST_F(Commands, infoInFigures) {
    importSmall();
    const QJsonObject info = tool.run({u"info"_s, u"klein.sqlite"_s, u"--json"_s}).json();
    EXPECT_EQ(info[u"roots"_s], (QJsonArray{13, 83, 17}));
    EXPECT_EQ(info[u"categoriesPerLevel"_s], (QJsonArray{3, 5, 4}));
    EXPECT_EQ(info[u"highestArticleKey"_s], 4711);
    EXPECT_EQ(info[u"activeArticles"_s], 34);
    EXPECT_TRUE(done({u"info"_s, u"klein.sqlite"_s}).contains(u"13, 83, 17"));
}

TEST_F(Commands, treeAsAPicture) {
    importSmall();
    EXPECT_EQ(done({u"tree"_s, u"klein.sqlite"_s, u"--levels"_s, u"1"_s, u"--no-articles"_s}),
              u"13 Gartengeräte\n83 Bewässerung\n17 Möbel\n"_s);
    EXPECT_TRUE(done({u"tree"_s, u"klein.sqlite"_s, u"--root=27"_s})
                    .startsWith(u"27 Stühle - klappbar: 40 Klappstuhl Buche, geölt, 41 "));
    EXPECT_EQ(tool.run({u"tree"_s, u"klein.sqlite"_s, u"--root=4"_s}).status, 1);
}

TEST_F(Commands, namesCannotSteerTheTerminal) {
    importSmall();
    sql(u"UPDATE [ARTIKEL/KATEGORIEN] SET [Kategoriename]='a' & Chr(27) & '[2J' & Chr(10) & 'b' "
        "WHERE [Kategorie-Schlüssel]=17"_s);
    EXPECT_TRUE(done({u"tree"_s, u"klein.sqlite"_s, u"--no-articles"_s}).contains(u"17 a\\u{1b}[2J\\nb\n"));
    EXPECT_FALSE(sql(u"SELECT [Kategoriename] FROM [ARTIKEL/KATEGORIEN]"_s).contains(QChar(27)));
}

TEST_F(Commands, checkTellsDamageByItsStatus) {
    importSmall();
    const ToolResult sound = tool.run({u"check"_s, u"klein.sqlite"_s});
    EXPECT_EQ(sound.status, 0);
    EXPECT_TRUE(sound.output.contains(u"93")) << "a gap is a remark";
    sql(u"UPDATE [ARTIKEL/KATEGORIEN] SET [Parent]=33 WHERE [Kategorie-Schlüssel]=23"_s);
    sql(u"DELETE FROM ARTIKEL WHERE [Artikel-Schlüssel]=44"_s);
    const ToolResult damaged = tool.run({u"check"_s, u"klein.sqlite"_s});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(damaged.output.contains(u"Ring: 23, 33")) << damaged.output.toStdString();
    const ToolResult json = tool.run({u"check"_s, u"klein.sqlite"_s, u"--json"_s});
    EXPECT_EQ(json.status, 1);
    EXPECT_EQ(json.json()[u"damaged"_s], true);
    EXPECT_EQ(json.json()[u"rings"_s], (QJsonArray{QJsonArray{23, 33}}));
    EXPECT_EQ(json.json()[u"missingArticles"_s][0][u"missing"_s], 44);
    EXPECT_TRUE(tool.run({u"tree"_s, u"klein.sqlite"_s}).errors.contains(u": 3"));
}

TEST_F(Commands, sqlAsATable) {
    importSmall();
    EXPECT_EQ(sql(u"SELECT [Artikel-Schlüssel], [EigeneArtikelnummer], [Absender-Schlüssel], [Aktiv], [LetzteÄnderung] "
                  "FROM ARTIKEL WHERE [Artikel-Schlüssel] In (1, 999) ORDER BY [Artikel-Schlüssel]"_s),
              u"Artikel-Schlüssel  EigeneArtikelnummer  Absender-Schlüssel  Aktiv       LetzteÄnderung\n"
              "-----------------  -------------------  ------------------  -----  -------------------\n"
              "                1  RS-200                                3     -1  2001-04-02 09:00:00\n"
              "              999  Null                               Null     -1                 Null\n"
              "Zeilen: 2\n"_s);
    EXPECT_TRUE(sql(u"SELECT [Artikelname] FROM ARTIKEL WHERE False"_s).endsWith(u"Zeilen: 0\n"));
}

TEST_F(Commands, sqlAsJson) {
    importSmall();
    const QJsonObject json = sqlJson(u"SELECT [Artikel-Schlüssel], [Aktiv], [Absender-Schlüssel], #2001-04-02# AS d, "
                                     "[LetzteÄnderung], \"a\"\"\\\" AS t FROM ARTIKEL WHERE [Artikel-Schlüssel]=1"_s);
    EXPECT_EQ(json[u"columns"_s], (QJsonArray{u"Artikel-Schlüssel"_s, u"Aktiv"_s, u"Absender-Schlüssel"_s, u"d"_s,
                                              u"LetzteÄnderung"_s, u"t"_s}));
    EXPECT_EQ(json[u"rows"_s],
              (QJsonArray{QJsonArray{1, -1, 3, u"2001-04-02"_s, u"2001-04-02 09:00:00"_s, u"a\"\\"_s}}));
    EXPECT_TRUE(done({u"sql"_s, u"klein.sqlite"_s, u"SELECT Max([Preis]) FROM [ARTIKEL/PREISE]"_s, u"--json"_s})
                    .contains(u"[123456.7899]"));
    EXPECT_EQ(sqlJson(u"UPDATE ARTIKEL SET [Aktiv]=0 WHERE [Artikel-Schlüssel]<3"_s),
              (QJsonObject{{u"affected"_s, 2}}));
    const ToolResult failed = tool.run({u"sql"_s, u"klein.sqlite"_s, u"SELECT fehlt FROM ARTIKEL"_s, u"--json"_s});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.json()[u"error"_s][u"number"_s], 3061);
}

TEST_F(Commands, sqlRefusesASecondStatementAndChangesNothing) {
    importSmall();
    for (const QString& statement : {u"SELECT 1; DELETE FROM ARTIKEL"_s, u"DELETE FROM ARTIKEL; SELECT 1"_s, u""_s,
                                     u"DROP TABLE ARTIKEL"_s, u"PRAGMA user_version"_s, u"weg"_s})
        EXPECT_EQ(tool.run({u"sql"_s, u"klein.sqlite"_s, statement}).status, 1) << statement.toStdString();
    EXPECT_TRUE(sql(u"SELECT Count(*) FROM ARTIKEL"_s).contains(u"40"));
}

TEST_F(Commands, sqlWorksOnAnyDatabase) {
    QProcess shell;
    shell.start(u"sqlite3"_s, {tool.path(u"fremd.db"_s), u"CREATE TABLE Kunde(Nr INTEGER, Name TEXT); "
                                                         "INSERT INTO Kunde VALUES(1, 'Öhler'), (2, NULL)"_s});
    if (!shell.waitForFinished() || shell.exitCode() != 0) GTEST_SKIP() << "needs the program sqlite3";
    const ToolResult rows = tool.run({u"sql"_s, u"fremd.db"_s, u"SELECT Name FROM Kunde WHERE Name='öHLER'"_s});
    EXPECT_EQ(rows.status, 0) << rows.errors.toStdString();
    EXPECT_TRUE(rows.output.contains(u"Öhler"));
    const ToolResult info = tool.run({u"info"_s, u"fremd.db"_s});
    EXPECT_EQ(info.status, 1);
    EXPECT_TRUE(info.errors.contains(u"'ABSENDER'")) << info.errors.toStdString();
}
