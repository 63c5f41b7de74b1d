// What a server does that a file never does: it goes away, gives transactions up, is changed under prepared statements.
#include "dao/OpenedDatabase.h"
#include "support/PostgresServer.h"

namespace dao {

namespace {

void endConnections(const OpenedDatabase& o) {
    constexpr const char* text = "SELECT count(pg_terminate_backend(pid, 60000)) FROM pg_stat_activity "
                                 "WHERE datname = current_database() AND pid <> pg_backend_pid()";
    EXPECT_EQ(mkl::runOnServer(o.file.path(), text), "1");
}

} // namespace

TEST(PostgresConnection, IsMadeAnewAfterALoss) {
    const OpenedDatabase o(threeRows());
    const QString sql = u"SELECT Name FROM T WHERE Nr = 2"_s;
    EXPECT_EQ(o.one(sql), Variant(u"zwei"_s));
    endConnections(o);
    EXPECT_EQ(o.errorOfQuery(sql), 3043);
    EXPECT_EQ(o.one(sql), Variant(u"zwei"_s));
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 'neu' WHERE Nr = 2"_s), 0);
    EXPECT_EQ(o.one(sql), Variant(u"neu"_s));
}

TEST(PostgresConnection, AnActionThatMeetsALossIsNotRunTwice) {
    const OpenedDatabase o(threeRows());
    const QString sql = u"UPDATE T SET Nr = Nr + 10"_s;
    EXPECT_EQ(o.errorOfExecute(sql), 0);
    endConnections(o);
    EXPECT_EQ(o.errorOfExecute(sql), 3043);
    EXPECT_EQ(o.one(u"SELECT Min(Nr) FROM T"_s), Variant(11));
    EXPECT_EQ(o.errorOfExecute(sql), 0);
    EXPECT_EQ(o.one(u"SELECT Min(Nr) FROM T"_s), Variant(21));
}

TEST(PostgresConnection, ALossDoomsTheTransaction) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    o.database->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
    endConnections(o);
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T WHERE Nr = 2"_s), 3043);
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T WHERE Nr = 3"_s), 3246);
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3246);
    o.workspace->Rollback();
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM T"_s), Variant(3));
}

TEST(PostgresConnection, ACommitThatTheServerTurnsIntoARollbackIsAnError) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    o.database->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
    EXPECT_NE(errorOf([&] { o.database->executeNative(u"ROLLBACK; BEGIN; SELECT 1/0"_s); }), 0);
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3246);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "3");
}

TEST(PostgresConnection, AFailureInATransactionUndoesItselfAlone) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) VALUES (2)"_s), 3022); // the first statement begins it
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) VALUES (4)"_s), 0);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) VALUES (4)"_s), 3022);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "3"); // others do not see it yet
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "4");
}

TEST(PostgresConnection, ATransactionWithoutStatementsEndsAsItBegan) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    o.workspace->CommitTrans();
    o.workspace->BeginTrans();
    o.workspace->BeginTrans();
    o.workspace->Rollback();
    o.workspace->Rollback();
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM T"_s), Variant(3));
    EXPECT_EQ(mkl::runOnServer(o.file.path(), "SELECT count(*) FROM pg_stat_activity WHERE datname = "
                                              "current_database() AND state LIKE 'idle in transaction%'"),
              "0");
}

TEST(PostgresConnection, ActionsSeeTheColumnsThatOthersAdd) {
    const OpenedDatabase o(threeRows() + "CREATE TABLE U (Nr INTEGER PRIMARY KEY, Name TEXT);");
    const QString copied = u"INSERT INTO U SELECT * FROM T WHERE Nr = "_s;
    EXPECT_EQ(o.errorOfExecute(copied + u'1'), 0);
    o.file.run("ALTER TABLE T ADD COLUMN Farbe TEXT; ALTER TABLE U ADD COLUMN Farbe TEXT; UPDATE T SET Farbe = 'rot'");
    EXPECT_EQ(o.errorOfExecute(copied + u'2'), 0);
    EXPECT_EQ(o.all(u"SELECT Farbe FROM U ORDER BY Nr"_s), (QStringList{u"Null"_s, u"rot"_s}));
    o.file.run("DROP TABLE U");
    EXPECT_EQ(o.errorOfExecute(copied + u'3'), 3192);
}

TEST(PostgresConnection, RowsThatTheServerCannotFinishComeOnce) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT); INSERT INTO T "
                           "SELECT n, CASE WHEN n = 900 THEN 'Ω' ELSE n::text END FROM generate_series(1, 1000) n");
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Name Like '*1*'"_s).size(), 272);
}

TEST(PostgresConnection, ValuesOfColumnsWithoutATypeKeepTheirKind) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Wert);");
    const QList<Variant> values{Variant(5), Variant(2.5), Variant(u"5"_s), Variant(u"\u0001i5"_s), Variant()};
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    for (const Variant& value : values) {
        table->AddNew();
        table->setValue(u"Nr", static_cast<Long>(table->RecordCount()));
        table->setValue(u"Wert", value);
        table->Update();
    }
    const Ref<Recordset> rows = o.open(u"SELECT Wert FROM T ORDER BY Nr"_s);
    for (const Variant& value : values) {
        EXPECT_EQ(rows->value(0), value);
        rows->MoveNext();
    }
    EXPECT_EQ(o.one(u"SELECT Wert + 1 FROM T WHERE Nr = 0"_s), Variant(6));
}

} // namespace dao
