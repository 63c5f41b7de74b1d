#include "QueryFixture.h"

using namespace mkl;

namespace {

class Find : public QueryTest {};

} // namespace

TEST_F(Find, rowsOfATableInTheirOrder) {
    EXPECT_EQ(find(u"Kunde"_s, u"Aktiv"_s, {u"--json"_s}).output,
              u"{\"columns\": [\"Nr\", \"Name\", \"Aktiv\", \"Seit\", \"Betrag\"], \"rows\": ["
              "[1, \"Öhler\", -1, \"2001-04-02\", 12.5], [3, \"Maß\", -1, null, 0.0001]]}\n"_s);
    EXPECT_EQ(find(u"SELECT Nr, Name FROM Kunde ORDER BY Nr DESC"_s, u"[Name] Like '*ö*' Or Nr>1"_s).output,
              u"Nr  Name\n--  -----\n 3  Maß\n 2  Null\n 1  Öhler\nZeilen: 3\n"_s);
}

TEST_F(Find, noMatchIsNoError) {
    for (const QString& source : {u"Kunde"_s, u"Leer"_s}) {
        const ToolResult none = find(source, u"Nr=99"_s, {u"--json"_s});
        EXPECT_EQ(none.status, 0);
        EXPECT_EQ(none.json()[u"rows"_s], QJsonArray());
        EXPECT_TRUE(find(source, u"Nr=99"_s).output.endsWith(u"Zeilen: 0\n"));
    }
}

TEST_F(Find, errorsOfCriterionAndSource) {
    const struct {
        QString source, criterion;
        Long number;
    } cases[] = {{u"Kunde"_s, u"Nr = "_s, 3077},
                 {u"Kunde"_s, u"Nr=1 UNION SELECT 1"_s, 3077},
                 {u"Kunde"_s, u"fehlt=1"_s, 3070},
                 {u"Kunde"_s, u"Name=5"_s, 3464},
                 {u"Kunde"_s, u"Nr=1; DELETE FROM Kunde"_s, 3077},
                 {u"Fehlt"_s, u"Nr=1"_s, 3078},
                 {u"DELETE FROM Kunde"_s, u"Nr=1"_s, 3219}};
    for (const auto& [source, criterion, number] : cases) {
        const ToolResult result = find(source, criterion, {u"--json"_s});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(errorOf(result.json()), number) << criterion.toStdString() << result.output.toStdString();
        const ToolResult plain = find(source, criterion);
        EXPECT_EQ(plain.status, 1);
        EXPECT_EQ(plain.output, QString());
        EXPECT_EQ(plain.errors.count(u'\n'), 1);
    }
    EXPECT_EQ(file.one("SELECT count(*) FROM Kunde"), "3");
}

TEST_F(Find, anErrorInTheLastRowLeavesNoHalfAnswer) {
    const ToolResult result = find(u"SELECT Nr FROM Kunde ORDER BY Nr"_s, u"1/(3-Nr)>0"_s, {u"--json"_s});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(errorOf(result.json()), 11) << result.output.toStdString();
}

TEST_F(Find, criteriaLineByLine) {
    const ToolResult result = tool.run({u"find"_s, file.path(), u"SELECT Nr, Name FROM Kunde ORDER BY Nr"_s, u"-"_s},
                                       "Name='MASS'\nfehlt=1\n\nNr>=2\nNr=99\nNr=1\n");
    EXPECT_EQ(result.status, 1);
    const QList<QJsonObject> answers = result.jsonLines();
    ASSERT_EQ(answers.size(), 6);
    EXPECT_EQ(answers[0][u"rows"_s], (QJsonArray{QJsonArray{3, u"Maß"_s}}));
    EXPECT_EQ(errorOf(answers[1]), 3070);
    EXPECT_NE(errorOf(answers[2]), 0);
    EXPECT_EQ(answers[3][u"rows"_s], (QJsonArray{QJsonArray{2, QJsonValue()}, QJsonArray{3, u"Maß"_s}}));
    EXPECT_EQ(answers[4][u"rows"_s], QJsonArray());
    EXPECT_EQ(answers[5][u"rows"_s], (QJsonArray{QJsonArray{1, u"Öhler"_s}}));
    EXPECT_EQ(tool.run({u"find"_s, file.path(), u"Kunde"_s, u"-"_s}, "Nr=1\nNr=2\n").status, 0);
}
