// Errors on their way through the engine, and statements that try to reach past it.
#include "dao/OpenedDatabase.h"
#include "support/PostgresServer.h"

namespace dao {

TEST(FunctionErrors, TravelWithTheirNumber) {
    const OpenedDatabase o(threeRows() + "INSERT INTO T VALUES (0, NULL);");
    EXPECT_EQ(o.errorOfQuery(u"SELECT 1 / Nr FROM T"_s), 11);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE 5 Mod Nr = 1"_s), 11);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr / Nr FROM T"_s), 6);
    EXPECT_EQ(o.errorOfQuery(u"SELECT CLng(Name) FROM T WHERE Nr = 0"_s), 94);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE Name = 5"_s), 3464);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Left(Name, -1) FROM T WHERE Nr = 1"_s), 5);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 1 / Nr"_s), 11);
    EXPECT_EQ(o.file.one("SELECT Name FROM T WHERE Nr = 1"), "eins");
}

TEST(FunctionErrors, LeaveTheStatementUsable) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.errorOfQuery(u"SELECT 6 / (Nr - 3) FROM T"_s), 11);
    EXPECT_EQ(o.one(u"SELECT 6 / (Nr - 4) FROM T WHERE Nr = 1"_s), Variant(-2.0));
    EXPECT_EQ(o.errorOfQuery(u"SELECT 6 / (Nr - 3) FROM T"_s), 11);
    EXPECT_EQ(o.all(u"SELECT 6 / (Nr - 4) FROM T"_s).size(), 3);
}

TEST(FunctionErrors, SpeakGermanAndNameNoEngine) {
    const OpenedDatabase o(threeRows());
    try {
        o.open(u"SELECT 1 / (Nr - 1) FROM T"_s);
        FAIL();
    } catch (const mkl::RunTimeError& error) {
        EXPECT_EQ(error.description(), u"Division durch Null."_s);
    }
}

TEST(Injection, ASecondStatementNeverRuns) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM T; DELETE FROM T"_s), 3142);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name='x' WHERE Nr=1; DELETE FROM T"_s), 3142);
    EXPECT_NE(o.errorOfQuery(u"SELECT * FROM T WHERE Nr=1; --"_s), 0);
    EXPECT_NE(o.errorOfQuery(u"SELECT * FROM T /* alles */"_s), 0);
    EXPECT_EQ(o.file.one("SELECT count(*) || max(Name) FROM T"), "3zwei");
}

TEST(Injection, LiteralsStayLiterals) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Name = 'x'' OR ''1''=''1'"_s).size(), 0);
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Name = 'x' OR '1'='1'"_s).size(), 3);
    EXPECT_NE(o.errorOfQuery(u"SELECT Nr FROM T WHERE Name = 'x"_s), 0);
    EXPECT_EQ(o.one(u"SELECT \"Name\" FROM T WHERE Nr = 1"_s), Variant(u"Name"_s));
}

TEST(Injection, TheEngineShowsNothingOfItsOwn) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM sqlite_master"_s), 3078);
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM sqlite_schema"_s), 3078);
    EXPECT_EQ(errorOf([&] { o.open(u"sqlite_master"_s, dbOpenTable); }), 3078);
    for (const QString& name : {u"rowid"_s, u"oid"_s, u"[_rowid_]"_s})
        EXPECT_EQ(o.errorOfQuery(u"SELECT "_s + name + u" FROM T"_s), 3061) << name.toStdString();
    for (const QString& call : {u"sqlite_version()"_s, u"load_extension('x')"_s, u"as_date(1)"_s, u"Coalesce(1, 2)"_s})
        EXPECT_EQ(o.errorOfQuery(u"SELECT "_s + call + u" FROM T"_s), 3085) << call.toStdString();
    EXPECT_NE(o.errorOfExecute(u"ATTACH DATABASE 'x' AS y"_s), 0);
    EXPECT_NE(o.errorOfExecute(u"PRAGMA writable_schema = 1"_s), 0);
    EXPECT_NE(o.errorOfExecute(u"DROP TABLE T"_s), 0);
    EXPECT_EQ(o.all(u"SELECT Nr FROM T"_s).size(), 3);
}

TEST(EngineErrors, ConstraintsHaveTheirNumbers) {
    const OpenedDatabase o("CREATE TABLE Vater (Nr INTEGER PRIMARY KEY);"
                           "CREATE TABLE T (A LONG NOT NULL, B TEXT NOT NULL, C INTEGER CHECK (C < 100),"
                           "V INTEGER REFERENCES Vater (Nr), PRIMARY KEY (A));"
                           "INSERT INTO Vater VALUES (1); INSERT INTO T VALUES (1, 'x', 5, 1);");
    const auto insertError = [&](const QString& values) {
        return o.errorOfExecute(u"INSERT INTO T (A, B, C, V) VALUES ("_s + values + u')');
    };
    EXPECT_EQ(insertError(u"1, 'y', 1, 1"_s), 3022);
    EXPECT_EQ(insertError(u"2, Null, 1, 1"_s), 3314);
    EXPECT_EQ(insertError(u"Null, 'y', 1, 1"_s), 3058);
    EXPECT_EQ(insertError(u"2, 'y', 100, 1"_s), 3317);
    EXPECT_EQ(insertError(u"2, 'y', 1, 2"_s), 3200);
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM Vater"_s), 3200);
    EXPECT_EQ(insertError(u"2, 'y', 1, 1"_s), 0);
    try {
        o.database->Execute(u"INSERT INTO T (A, B) VALUES (3, Null)"_s, dbFailOnError);
        FAIL();
    } catch (const mkl::RunTimeError& error) {
        EXPECT_EQ(error.description(), u"Das Feld 'B' darf nicht Null sein."_s);
        EXPECT_TRUE(error.source().contains(mkl::testsOnServer() ? u"23502"_s : u"NOT NULL"_s));
    }
}

TEST(EngineErrors, DamageThatShowsLater) {
    const OpenedDatabase made("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT);"
                              "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 5000)"
                              "INSERT INTO T SELECT i, 'Zeile ' || i FROM n;");
    QByteArray bytes = made.file.bytes();
    for (qsizetype page = 2 * 4096; page + 4096 < bytes.size(); page += 4096)
        bytes.replace(page, 64, QByteArray(64, '\xAA'));
    const TempDatabase file;
    file.overwrite(bytes);
    const Ref<Database> database = DBEngine::CreateWorkspace()->OpenDatabase(file.path());
    EXPECT_EQ(errorOf([&] { database->OpenRecordset(u"SELECT * FROM T"_s, dbOpenSnapshot); }), 3049);
}

} // namespace dao
