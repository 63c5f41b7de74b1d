#include "QueryFixture.h"
#include "dao/Workspace.h"

#include <QFile>

using namespace mkl;

namespace {

class Sql : public QueryTest {
protected:
    /// The program in a pipe or with its output elsewhere: {its exit status, what it wrote to standard error}.
    std::pair<QString, QString> shell(const QString& redirected) const {
        QProcess bash;
        bash.start(u"bash"_s, {u"-c"_s, redirected, u"bash"_s, QStringLiteral(MKL_BIN_DIR "/mklart"), file.path()});
        bash.waitForFinished(120000);
        return {QString::fromUtf8(bash.readAllStandardOutput()).trimmed(),
                QString::fromUtf8(bash.readAllStandardError())};
    }
};

} // namespace

TEST_F(Sql, asATable) {
    EXPECT_EQ(sql(u"SELECT * FROM Kunde ORDER BY Nr"_s).output, u"Nr  Name   Aktiv                 Seit  Betrag\n"
                                                                "--  -----  -----  -------------------  ------\n"
                                                                " 1  Öhler     -1           2001-04-02    12.5\n"
                                                                " 2  Null       0  2001-04-02 09:30:00    Null\n"
                                                                " 3  Maß       -1                 Null  0.0001\n"
                                                                "Zeilen: 3\n"_s);
    EXPECT_EQ(sql(u"Leer"_s).output, u"Nr  Name\n--  ----\nZeilen: 0\n"_s);
    EXPECT_EQ(sql(u"UPDATE Kunde SET Aktiv=0"_s).output, u"Geänderte Zeilen: 3\n"_s);
}

TEST_F(Sql, columnsStandStraightBelowWideAndCombinedCharacters) {
    const QString combined = u'o' + QString(QChar(0x0308)) + u'l';
    file.run("INSERT INTO Leer VALUES (1, '" + combined.toUtf8() + "'), (2, '日本')");
    EXPECT_EQ(sql(u"SELECT Name, Nr FROM Leer ORDER BY Nr"_s).output,
              u"Name  Nr\n----  --\n"_s + combined + u"     1\n日本   2\nZeilen: 2\n"_s);
}

TEST_F(Sql, asJson) {
    EXPECT_EQ(sql(u"SELECT * FROM Kunde ORDER BY Nr"_s, {u"--json"_s}).output,
              u"{\"columns\": [\"Nr\", \"Name\", \"Aktiv\", \"Seit\", \"Betrag\"], \"rows\": ["
              "[1, \"Öhler\", -1, \"2001-04-02\", 12.5], [2, null, 0, \"2001-04-02 09:30:00\", null], "
              "[3, \"Maß\", -1, null, 0.0001]]}\n"_s);
    EXPECT_EQ(sql(u"Leer"_s, {u"--json"_s}).output, u"{\"columns\": [\"Nr\", \"Name\"], \"rows\": []}\n"_s);
    EXPECT_EQ(sql(u"UPDATE Kunde SET Aktiv=0 WHERE Nr<3"_s, {u"--json"_s}).output, u"{\"affected\": 2}\n"_s);
    EXPECT_EQ(sql(u"DELETE FROM Leer"_s, {u"--json"_s}).output, u"{\"affected\": 0}\n"_s);
}

TEST_F(Sql, jsonValuesComeBackAsTheyWere) {
    EXPECT_EQ(sqlJson(u"SELECT \"a\"\"\\\" & Chr(10) & Chr(1) & Chr(127) & '\U0001F600' AS t FROM Kunde WHERE Nr=1"_s),
              (QJsonObject{{u"columns"_s, QJsonArray{u"t"_s}},
                           {u"rows"_s, QJsonArray{QJsonArray{u"a\"\\\n\u0001\u007f\U0001F600"_s}}}}));
    const QString numbers =
        sql(u"SELECT 0.1 AS a, 1/3 AS b, -2147483647 AS c, 1E300 AS d FROM Kunde WHERE Nr=1"_s, {u"--json"_s}).output;
    EXPECT_TRUE(numbers.contains(u"[[0.1, 0.3333333333333333, -2147483647, 1e+300]]")) << numbers.toStdString();
}

TEST_F(Sql, aNameThatSeveralColumnsBearComesWithItsTable) {
    const QJsonObject json = sqlJson(u"SELECT a.Nr, b.Nr, 1+1 FROM Kunde AS a INNER JOIN Kunde AS b ON a.Nr=b.Nr"_s);
    EXPECT_EQ(json[u"columns"_s], (QJsonArray{u"a.Nr"_s, u"b.Nr"_s, u"Expr1000"_s}));
    EXPECT_EQ(json[u"rows"_s][0], (QJsonArray{1, 1, 2}));
}

TEST_F(Sql, errorsGoToStandardErrorOrIntoTheAnswer) {
    const ToolResult plain = sql(u"SELECT fehlt FROM Kunde"_s);
    EXPECT_EQ(plain.status, 1);
    EXPECT_EQ(plain.output, QString());
    EXPECT_TRUE(plain.errors.startsWith(u"mklart: "));
    const ToolResult json = sql(u"SELECT fehlt FROM Kunde"_s, {u"--json"_s});
    EXPECT_EQ(json.status, 1);
    EXPECT_EQ(json.errors, QString());
    EXPECT_EQ(errorOf(json.json()), 3061);
    EXPECT_TRUE(json.json()[u"error"_s][u"description"_s].toString().contains(u"fehlt"));
    const ToolResult english =
        tool.runIn(u"C"_s, {u"sql"_s, file.path(), u"SELECT * FROM \"weg\""_s, u"--json"_s, u"--language=en"_s});
    EXPECT_TRUE(english.json().contains(u"error"_s));
    EXPECT_EQ(english.errors, QString());
    EXPECT_EQ(errorOf(tool.run({u"sql"_s, u"fehlt.db"_s, u"SELECT 1"_s, u"--json"_s}).json()), 3024);
}

TEST_F(Sql, whatFailsChangesNothing) {
    for (const QString& statement :
         {u"SELECT 1; DELETE FROM Kunde"_s, u"DELETE FROM Kunde; SELECT 1"_s, u""_s, u"DROP TABLE Kunde"_s,
          u"PRAGMA user_version"_s, u"weg"_s, u"UPDATE Kunde SET Nr=9"_s, u"UPDATE Kunde SET Nr=1/(Nr-3)+10"_s})
        EXPECT_EQ(sql(statement).status, 1) << statement.toStdString();
    EXPECT_EQ(file.one("SELECT group_concat(Nr) FROM Kunde"), "1,2,3");
}

TEST_F(Sql, anActionIsStored) {
    EXPECT_EQ(sql(u"INSERT INTO Leer (Nr, Name) VALUES (7, 'ä')"_s).status, 0);
    EXPECT_EQ(file.one("SELECT Name FROM Leer WHERE Nr=7"), "ä");
    EXPECT_EQ(sqlJson(u"INSERT INTO Leer SELECT Nr, Name FROM Kunde"_s), (QJsonObject{{u"affected"_s, 3}}));
}

TEST_F(Sql, readOnlyRefusesChangesAlone) {
    const QStringList options = {u"--json"_s, u"--read-only"_s};
    EXPECT_EQ(errorOf(sql(u"DELETE FROM Kunde"_s, options).json()), 3027);
    EXPECT_EQ(sql(u"SELECT Count(*) FROM Kunde"_s, options).json()[u"rows"_s], (QJsonArray{QJsonArray{3}}));
}

TEST_F(Sql, aLockOfAnotherProgramIsAnErrorAfterTheWait) {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto holder = workspace->OpenDatabase(file.path());
    workspace->BeginTrans();
    holder->Execute(u"DELETE FROM Kunde WHERE Nr=1"_s, dao::dbFailOnError);
    EXPECT_EQ(errorOf(sql(u"DELETE FROM Kunde"_s, {u"--json"_s, u"--wait=0"_s}).json()), 3260);
    EXPECT_EQ(sql(u"DELETE FROM Kunde"_s, {u"--wait=-1"_s}).status, 2);
    workspace->Rollback();
    EXPECT_EQ(sql(u"DELETE FROM Kunde"_s, {u"--json"_s, u"--wait=0"_s}).json(), (QJsonObject{{u"affected"_s, 3}}));
}

TEST_F(Sql, aLockThatGoesAwayIsWaitedFor) {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto holder = workspace->OpenDatabase(file.path());
    workspace->BeginTrans();
    holder->Execute(u"DELETE FROM Kunde WHERE Nr=1"_s, dao::dbFailOnError);
    QProcess waiting;
    waiting.start(QStringLiteral(MKL_BIN_DIR "/mklart"), {u"sql"_s, file.path(), u"-"_s, u"--wait"_s, u"60"_s});
    waiting.write("SELECT 1\nDELETE FROM Kunde\n");
    waiting.closeWriteChannel();
    ASSERT_TRUE(waiting.waitForReadyRead(60000)); // the first answer: the second statement is on its way
    EXPECT_FALSE(waiting.waitForFinished(300));
    workspace->CommitTrans();
    ASSERT_TRUE(waiting.waitForFinished(60000));
    EXPECT_TRUE(waiting.readAll().endsWith("{\"affected\": 2}\n"));
}

TEST_F(Sql, eachLineOfTheInputHasItsAnswer) {
    const ToolResult result =
        tool.run({u"sql"_s, file.path(), u"-"_s},
                 "SELECT Count(*) AS n FROM Kunde\r\nweg\n\nUPDATE Kunde SET Name='ä' WHERE Nr=2\n"
                 "SELECT '\xE4'\nSELECT Name FROM Kunde WHERE Nr=2");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, QString());
    const QList<QJsonObject> answers = result.jsonLines();
    ASSERT_EQ(answers.size(), 6);
    EXPECT_EQ(answers[0][u"rows"_s], (QJsonArray{QJsonArray{3}}));
    EXPECT_EQ(errorOf(answers[1]), 3078);
    EXPECT_NE(errorOf(answers[2]), 0);
    EXPECT_EQ(answers[3], (QJsonObject{{u"affected"_s, 1}}));
    EXPECT_EQ(errorOf(answers[4]), 5);
    EXPECT_EQ(answers[5][u"rows"_s], (QJsonArray{QJsonArray{u"ä"_s}}));
}

TEST_F(Sql, linesWithoutAnErrorAndNoLinesAtAllAreSuccess) {
    EXPECT_EQ(tool.run({u"sql"_s, file.path(), u"-"_s}, "SELECT 1\nSELECT 2\n").status, 0);
    const ToolResult none = tool.run({u"sql"_s, file.path(), u"-"_s, u"--json"_s});
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.output, QString());
    const ToolResult noFile = tool.run({u"sql"_s, u"fehlt.db"_s, u"-"_s}, "SELECT 1\nSELECT 2\n");
    EXPECT_EQ(noFile.status, 1);
    ASSERT_EQ(noFile.jsonLines().size(), 1);
    EXPECT_EQ(errorOf(noFile.json()), 3024);
}

TEST_F(Sql, anAnswerComesBeforeTheNextLineIsThere) {
    QProcess process;
    process.start(QStringLiteral(MKL_BIN_DIR "/mklart"), {u"sql"_s, file.path(), u"-"_s});
    for (int i = 1; i <= 3; ++i) {
        process.write("SELECT " + QByteArray::number(i) + " AS n\n");
        ASSERT_TRUE(process.waitForReadyRead(60000));
        EXPECT_EQ(process.readLine(), "{\"columns\": [\"n\"], \"rows\": [[" + QByteArray::number(i) + "]]}\n");
    }
    process.closeWriteChannel();
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
}

TEST_F(Sql, utf8InEveryLocale) {
    for (const QString& locale : {u"C"_s, u"POSIX"_s, u"C.UTF-8"_s, u"de_DE.ISO-8859-1"_s}) {
        const QString statement = u"SELECT 'ä' & Name AS Größe FROM Kunde WHERE Name='öhler'"_s;
        const QString wanted = u"{\"columns\": [\"Größe\"], \"rows\": [[\"äÖhler\"]]}\n"_s;
        const ToolResult argument = tool.runIn(locale, {u"sql"_s, file.path(), statement, u"--json"_s});
        EXPECT_EQ(argument.output, wanted) << locale.toStdString();
        const ToolResult line = tool.runIn(locale, {u"sql"_s, file.path(), u"-"_s}, statement.toUtf8());
        EXPECT_EQ(line.output, wanted) << locale.toStdString();
    }
    ASSERT_TRUE(QFile::copy(file.path(), tool.path(u"Müßig.db"_s)));
    EXPECT_EQ(tool.runIn(u"C"_s, {u"sql"_s, u"Müßig.db"_s, u"SELECT 1"_s}).status, 0);
}

TEST_F(Sql, aReaderThatGoesAwayEndsItQuietly) {
    file.run("WITH RECURSIVE g(i) AS (VALUES (10) UNION ALL SELECT i+1 FROM g WHERE i<50000) "
             "INSERT INTO Kunde (Nr, Name) SELECT i, 'Name' || i FROM g");
    for (const QString& form : {u""_s, u"--json"_s}) {
        const auto [status, errors] =
            shell(u"\"$1\" sql \"$2\" \"SELECT * FROM Kunde\" %1 | head -c 100 >/dev/null; echo ${PIPESTATUS[0]}"_s.arg(
                form));
        EXPECT_EQ(status, u"1"_s);
        EXPECT_EQ(errors, QString());
    }
    const auto [status, errors] = shell(u"for i in 1 2 3; do echo 'SELECT * FROM Kunde'; done | "
                                        "\"$1\" sql \"$2\" - | head -c 100 >/dev/null; echo ${PIPESTATUS[1]}"_s);
    EXPECT_EQ(status, u"1"_s);
    EXPECT_EQ(errors, QString());
}

TEST_F(Sql, outputThatCannotBeWrittenIsAnError) {
    if (!QFile::exists(u"/dev/full"_s)) GTEST_SKIP() << "needs a device that is always full";
    const auto [status, errors] = shell(u"\"$1\" sql \"$2\" \"SELECT 1\" >/dev/full; echo $?"_s);
    EXPECT_EQ(status, u"1"_s);
    EXPECT_EQ(errors.count(u'\n'), 1) << errors.toStdString();
}
