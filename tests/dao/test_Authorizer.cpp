// Native texts as if they had come past the grammar: the engine itself refuses them.
#include "dao/OpenedDatabase.h"

#include "dao/Connection.h"
#include "dao/sqlite/SqliteFile.h"

namespace dao {

namespace {

struct Engine {
    explicit Engine(const QByteArray& nativeSql)
        : file(nativeSql)
        , connection(openSqlite(file.path(), {})) {}

    Long errorOf(const QByteArray& native, Access access) const {
        return mkl::errorOf([&] { connection->prepare(native, access); });
    }
    Long errorOfRead(const QByteArray& native) const { return errorOf(native, Access::Read); }
    Long errorOfWrite(const QByteArray& native) const { return errorOf(native, Access::Write); }
    /// Prepares and runs it.
    Long errorOfRun(const QByteArray& native) const {
        return mkl::errorOf([&] { connection->prepare(native, Access::Write)->run({}); });
    }

    TempDatabase file;
    std::shared_ptr<Connection> connection;
};

} // namespace

TEST(Authorizer, AQueryReadsTheUsersTables) {
    const Engine e(threeRows());
    EXPECT_EQ(e.errorOfRead("SELECT Nr, Name FROM T WHERE mkl_len(Name) > 2 ORDER BY Name COLLATE GERMAN"), 0);
    EXPECT_EQ(e.errorOfRead("SELECT count(*), max(Nr), sum(Nr) FROM T"), 0);
    EXPECT_EQ(e.errorOfRead("SELECT x.Nr, T._rowid_ FROM (SELECT Nr FROM main.T) AS x, T"), 0);
    EXPECT_EQ(e.errorOfRead("SELECT rank() OVER (ORDER BY Nr) FROM T UNION SELECT 1"), 0);
    EXPECT_EQ(e.errorOfRead("SELECT 1"), 0);
}

TEST(Authorizer, AQueryNeverWrites) {
    const Engine e(threeRows() + "CREATE INDEX I ON T (Name);");
    for (const char* native :
         {"INSERT INTO T VALUES (9, 'x')", "UPDATE T SET Nr = 9", "DELETE FROM T", "REPLACE INTO T VALUES (1, 'x')",
          "INSERT INTO T VALUES (9, 'x') RETURNING Nr", "WITH x AS (SELECT 1) DELETE FROM T", "REINDEX"})
        EXPECT_EQ(e.errorOfRead(native), 3112) << native;
    EXPECT_EQ(e.file.one("SELECT count(*) || max(Nr) FROM T"), "33");
}

TEST(Authorizer, NeitherQueryNorActionReachesBeyondTheTables) {
    const Engine e(threeRows());
    for (const char* native : {"ATTACH ':memory:' AS other",
                               "ATTACH '/tmp/fremd.sqlite' AS other",
                               "DETACH main",
                               "PRAGMA writable_schema = 1",
                               "PRAGMA journal_mode",
                               "PRAGMA user_version = 5",
                               "SELECT * FROM sqlite_master",
                               "SELECT count(*) FROM sqlite_schema",
                               "SELECT * FROM main.sqlite_schema",
                               "SELECT * FROM sqlite_temp_master",
                               "SELECT * FROM sqlite_sequence",
                               "SELECT * FROM pragma_table_list",
                               "SELECT * FROM pragma_database_list()",
                               "SELECT * FROM json_each('[1]')",
                               "SELECT * FROM T WHERE Nr IN (SELECT rootpage FROM sqlite_master)",
                               "SELECT load_extension('x')",
                               "SELECT sqlite_version()",
                               "SELECT randomblob(1000000)",
                               "SELECT printf('%s', Name) FROM T",
                               "SELECT Nr FROM T WHERE Name LIKE 'x'",
                               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n",
                               "CREATE TABLE U (a)",
                               "CREATE TEMP TABLE U (a)",
                               "CREATE TABLE U AS SELECT * FROM T",
                               "CREATE VIEW V AS SELECT 1",
                               "CREATE TRIGGER R AFTER INSERT ON T BEGIN DELETE FROM T; END",
                               "CREATE INDEX I ON T (Name)",
                               "CREATE VIRTUAL TABLE U USING fts5(a)",
                               "ALTER TABLE T RENAME TO U",
                               "DROP TABLE T",
                               "ANALYZE",
                               "BEGIN",
                               "COMMIT",
                               "ROLLBACK",
                               "SAVEPOINT x",
                               "DELETE FROM sqlite_master",
                               "INSERT INTO sqlite_sequence VALUES ('T', 5)",
                               "UPDATE sqlite_schema SET sql = ''"}) {
        EXPECT_NE(e.errorOfRead(native), 0) << native;
        EXPECT_NE(e.errorOfWrite(native), 0) << native;
    }
    EXPECT_EQ(e.errorOfRead("SELECT name FROM sqlite_schema"), 3112);
    EXPECT_EQ(e.errorOfWrite("DROP TABLE T"), 3112);
    EXPECT_EQ(e.file.one("SELECT count(*) FROM sqlite_master"), "1");
}

TEST(Authorizer, AVacuumDoesNothingHarmful) {
    const Engine e(threeRows());
    EXPECT_NE(e.errorOfRun("VACUUM"), 0);
    EXPECT_NE(e.errorOfRun("VACUUM INTO '/tmp/kopie.sqlite'"), 0);
}

TEST(Authorizer, ASecondStatementIsRefusedAndNotPassedOver) {
    const Engine e(threeRows());
    EXPECT_EQ(e.errorOfRead("SELECT 1; DELETE FROM T"), 3142);
    EXPECT_EQ(e.errorOfWrite("DELETE FROM T WHERE Nr = 1; DELETE FROM T"), 3142);
    EXPECT_EQ(e.errorOfRead("SELECT 1;  "), 0);
    EXPECT_EQ(e.errorOfRead("  "), 3129);
    EXPECT_EQ(e.file.one("SELECT count(*) FROM T"), "3");
}

TEST(Authorizer, NothingIsAttachedEvenFromInside) {
    const OpenedDatabase o(threeRows());
    EXPECT_NE(errorOf([&] { o.database->executeNative(u"ATTACH ':memory:' AS other"_s); }), 0);
    EXPECT_NE(errorOf([&] { o.database->executeNative(u"SELECT load_extension('x')"_s); }), 0);
    EXPECT_EQ(errorOf([&] { o.database->executeNative(u"CREATE TABLE U (a); DROP TABLE U"_s); }), 0);
}

TEST(Authorizer, TheErrorNamesWhatWasRefused) {
    const Engine e(threeRows());
    try {
        e.connection->prepare("SELECT sqlite_version()");
        FAIL();
    } catch (const mkl::RunTimeError& error) {
        EXPECT_TRUE(error.description().contains(u"'sqlite_version'"_s)) << error.what();
    }
    EXPECT_EQ(e.errorOfRead("SELECT Nr FROM T"), 0); // the refusal does not stick
}

TEST(Authorizer, AStatementKeepsItsAccessWhenTheEnginePreparesItAnew) {
    const Engine e(threeRows());
    const auto read = e.connection->prepare("SELECT Nr FROM T");
    const auto change = e.connection->prepare("UPDATE T SET Name = 'x' WHERE Nr = 1", Access::Write);
    e.file.run("ALTER TABLE T ADD COLUMN Neu INTEGER");
    RowStore rows;
    read->read({}, rows);
    EXPECT_EQ(rows.size(), 3);
    EXPECT_EQ(change->run({}), 1);
}

TEST(Authorizer, ATableThatBecameAView) {
    const Engine e(threeRows() + "CREATE TABLE Geheim (a); INSERT INTO Geheim VALUES ('x');");
    const auto read = e.connection->prepare("SELECT Nr FROM T");
    e.file.run("DROP TABLE T; CREATE VIEW T AS SELECT a AS Nr FROM Geheim");
    RowStore rows;
    read->read({}, rows); // a view over tables that a query may read anyway
    EXPECT_EQ(e.errorOfWrite("DELETE FROM T"), 3000);
    e.file.run("DROP VIEW T; CREATE VIEW T AS SELECT name AS Nr FROM sqlite_schema");
    EXPECT_EQ(errorOf([&] { read->read({}, rows); }), 3112);
}

TEST(Triggers, ACascadeOfDeletionsRuns) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY); CREATE TABLE Kind (Nr INTEGER, T INTEGER);"
                           "CREATE TRIGGER \"T:delete\" AFTER DELETE ON T BEGIN DELETE FROM Kind WHERE T = OLD.Nr; END;"
                           "INSERT INTO T VALUES (1), (2); INSERT INTO Kind VALUES (1, 1), (2, 2);");
    o.database->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr) FROM Kind"), "2");
    table->Delete();
    EXPECT_EQ(o.file.one("SELECT count(*) FROM Kind"), "0");
}

TEST(Triggers, WhatWritesSomethingElseIsRefused) {
    for (const char* step : {"INSERT INTO Log VALUES (1)", "UPDATE Log SET a = 2", "UPDATE T SET Name = 'x'",
                             "DELETE FROM Log", "SELECT randomblob(5)"}) {
        const OpenedDatabase o(threeRows() + "CREATE TABLE Log (a); CREATE TRIGGER Spion AFTER INSERT ON T BEGIN " +
                               step + "; END;");
        EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) VALUES (9)"_s), 3112) << step;
        EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T WHERE Nr = 1"_s), 0) << step;
        EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "2");
    }
}

TEST(Triggers, ACascadeMayNotDoMoreThanItsName) {
    const OpenedDatabase o(threeRows() + "CREATE TABLE Log (a); CREATE TRIGGER \"T:delete\" AFTER DELETE ON T BEGIN "
                                         "INSERT INTO Log VALUES (1); END;");
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s), 3112);
}

TEST(Triggers, ARuleMayRefuse) {
    const OpenedDatabase o(threeRows() + "CREATE TRIGGER Regel BEFORE INSERT ON T WHEN NEW.Nr > 100 BEGIN "
                                         "SELECT RAISE(ABORT, 'zu gross'); END;");
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) VALUES (50)"_s), 0);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) VALUES (101)"_s), 3317);
}

TEST(Limits, WhatIsTooLargeIsAnError) {
    const Engine e(threeRows());
    QByteArray deep = "1";
    for (int i = 0; i < 2000; ++i)
        deep = "(1 + " + deep + ")";
    EXPECT_EQ(e.errorOfRead("SELECT " + deep), 3360);
    QByteArray compound = "SELECT 1";
    for (int i = 0; i < 600; ++i)
        compound += " UNION ALL SELECT 1";
    EXPECT_EQ(e.errorOfRead(compound), 3360);
    EXPECT_EQ(e.errorOfRead("SELECT ?300000"), 3360);
    EXPECT_EQ(e.errorOfRead("SELECT '" + QByteArray(17 * 1024 * 1024, 'x') + "'"), 3360);
    QByteArray columns = "1";
    for (int i = 0; i < 3000; ++i)
        columns += ", 1";
    EXPECT_EQ(e.errorOfRead("SELECT " + columns), 3360);
    EXPECT_EQ(e.errorOfRead("SELECT max(" + columns + ')'), 3360);
}

TEST(Limits, ALongListOfKeysIsNone) {
    const OpenedDatabase o(threeRows());
    QString list = u"1"_s;
    for (int i = 4; i < 10'000; ++i)
        list += u',' + QString::number(i);
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Nr IN ("_s + list + u')'), QStringList{u"1"_s});
}

} // namespace dao
