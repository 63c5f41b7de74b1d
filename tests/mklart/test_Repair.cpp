#include "Tool.h"
#include "support/Printing.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class RepairTool : public testing::Test {
protected:
    RepairTool() {
        EXPECT_EQ(tool.run({u"new"_s, file}).status, 0);
        category(13, u"Null"_s, 1);
    }

    void sql(const QString& statement) const {
        const ToolResult result = tool.run({u"sql"_s, file, statement});
        EXPECT_EQ(result.status, 0) << result.errors.toStdString();
    }
    void category(int key, const QString& parent, int position) const {
        sql(u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Parent], [Order]) VALUES (%1, %2, %3)"_s
                .arg(key)
                .arg(parent)
                .arg(position));
    }
    void assign(int id, int article, int category, int position) const {
        sql(u"INSERT INTO ARTKAT ([ArtKatID], [Artikel-Schlüssel], [Kategorie-Schlüssel], [Order]) "
            "VALUES (%1, %2, %3, %4)"_s.arg(id)
                .arg(article)
                .arg(category)
                .arg(position));
    }
    /// One damage of each kind.
    void damage() const {
        sql(u"INSERT INTO ARTIKEL ([Artikel-Schlüssel]) VALUES (1)"_s);
        category(23, u"99"_s, 7);
        category(33, u"43"_s, 1);
        category(43, u"53"_s, 1);
        category(53, u"33"_s, 1);
        category(63, u"13"_s, 2);
        category(73, u"13"_s, 2);
        assign(1, 1, 88, 5);
        assign(2, 1, 13, 1);
        assign(3, 1, 13, 2);
        assign(4, 77, 13, 2);
        assign(5, 1, 63, 1);
        assign(6, 78, 63, 1);
    }
    ToolResult run(const QStringList& arguments) const { return tool.run(QStringList{u"repair"_s, file} + arguments); }
    ToolResult check() const { return tool.run({u"check"_s, file}); }

    const QString file = u"Filiale.sqlite"_s;
    Tool tool;
};

} // namespace

TEST_F(RepairTool, aSoundCatalogueNeedsNone) {
    const ToolResult result = run({});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, u"Es gibt nichts zu reparieren.\n"_s);
    EXPECT_EQ(run({u"--json"_s}).output,
              u"{\"changes\":[],\"damaged\":false,\"keptWithoutArticle\":[],\"stored\":true}\n"_s);
}

TEST_F(RepairTool, tellsEveryChange) {
    damage();
    const ToolResult result = run({u"--delete-without-article"_s});
    EXPECT_EQ(result.status, 0) << result.errors.toStdString();
    EXPECT_EQ(result.output,
              u"Kategorie 23 wird Hauptkategorie: 99 fehlt. Position 7 -> 2\n"
              "Kategorie 33 wird Hauptkategorie: Sie bildete mit 43 darüber einen Ring. Position 1 -> 3\n"
              "Zuordnung 1 gelöscht: Die Kategorie 88 fehlt (Artikel 1, Position 5).\n"
              "Zuordnung 3 gelöscht: Artikel 1 steht schon in Kategorie 13 (Position 2).\n"
              "Zuordnung 4 gelöscht: Der Artikel 77 fehlt (Kategorie 13, Position 2).\n"
              "Zuordnung 6 gelöscht: Der Artikel 78 fehlt (Kategorie 63, Position 1).\n"
              "Kategorie 73 unter 13: Position 2 -> 3\n"
              "Geänderte Zeilen: 7. Der Katalog ist in Ordnung.\n"_s);
    EXPECT_EQ(check().status, 0);
}

TEST_F(RepairTool, keepsAssignmentsOfMissingArticlesAndSaysSo) {
    damage();
    const ToolResult result = run({});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.output.contains(u"Zuordnung 6 (Artikel 78 in Kategorie 63): Position 1 -> 2\n"));
    EXPECT_TRUE(result.output.endsWith(u"Zuordnungen, deren Artikel fehlt, bleiben stehen (ArtKatID 4, 6); "
                                       "--delete-without-article löscht sie.\nGeänderte Zeilen: 6.\n"))
        << result.output.toStdString();
    EXPECT_EQ(check().status, 1);
    EXPECT_EQ(run({u"--json"_s}).json()[u"keptWithoutArticle"_s], (QJsonArray{4, 6}));
}

TEST_F(RepairTool, aDryRunStoresNothing) {
    damage();
    const QString before = check().output;
    const ToolResult planned = run({u"--dry-run"_s, u"--delete-without-article"_s});
    EXPECT_EQ(planned.status, 1);
    EXPECT_TRUE(planned.output.endsWith(u"Zu ändernde Zeilen: 7. Es wurde nichts gespeichert.\n"));
    EXPECT_EQ(check().output, before);
    const QString done = run({u"--delete-without-article"_s}).output;
    EXPECT_EQ(planned.output.section(u'\n', 0, 6), done.section(u'\n', 0, 6));
}

TEST_F(RepairTool, asJson) {
    damage();
    const ToolResult result = run({u"--json"_s, u"--delete-without-article"_s});
    const QJsonObject json = result.json();
    EXPECT_EQ(json[u"stored"_s], true);
    EXPECT_EQ(json[u"damaged"_s], false);
    const QJsonArray changes = json[u"changes"_s].toArray();
    ASSERT_EQ(changes.size(), 7);
    EXPECT_EQ(changes[0].toObject(), (QJsonObject{{u"change"_s, u"parentMissing"_s},
                                                  {u"key"_s, 23},
                                                  {u"parent"_s, 99},
                                                  {u"formerPosition"_s, 7},
                                                  {u"position"_s, 2}}));
    EXPECT_EQ(changes[2].toObject(), (QJsonObject{{u"change"_s, u"categoryMissing"_s},
                                                  {u"key"_s, 1},
                                                  {u"category"_s, 88},
                                                  {u"article"_s, 1},
                                                  {u"formerPosition"_s, 5},
                                                  {u"position"_s, QJsonValue()}}));
}

TEST_F(RepairTool, numbersWithoutGapsOnRequest) {
    category(23, u"Null"_s, 9);
    EXPECT_EQ(run({}).output, u"Es gibt nichts zu reparieren.\n"_s);
    EXPECT_EQ(run({u"--dense"_s}).output, u"Kategorie 23 unter den Hauptkategorien: Position 9 -> 2\n"
                                          "Geänderte Zeilen: 1. Der Katalog ist in Ordnung.\n"_s);
}

TEST_F(RepairTool, inEnglish) {
    category(23, u"99"_s, 7);
    EXPECT_EQ(
        tool.runIn(u"en_GB.UTF-8"_s, {u"repair"_s, file}).output,
        u"Category 23 becomes a root: 99 is missing. Position 7 -> 2\nRows changed: 1. The catalogue is sound.\n"_s);
}

TEST_F(RepairTool, aReadOnlyFileIsRefused) {
    category(23, u"99"_s, 7);
    QFile database(tool.path(file)); // a file of a later format, which this engine reads and never writes
    ASSERT_TRUE(database.open(QIODevice::ReadWrite) && database.seek(18));
    database.write(QByteArray(1, 3));
    database.close();
    const ToolResult result = run({});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains(u"schreibgeschützt")) << result.errors.toStdString();
    EXPECT_TRUE(run({u"--dry-run"_s}).output.startsWith(u"Kategorie 23 wird Hauptkategorie"));
}

TEST_F(RepairTool, wrongCalls) {
    EXPECT_EQ(tool.run({u"repair"_s}).status, 2);
    EXPECT_EQ(run({u"--hard"_s}).status, 2);
    EXPECT_EQ(tool.run({u"repair"_s, u"keine.sqlite"_s}).status, 1);
}
