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
    EXPECT_EQ(info[u"replicaDigit"_s], 0);
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
