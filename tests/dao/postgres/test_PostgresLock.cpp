// Transactions of several clients follow one another as in a file.
#include "dao/OpenedDatabase.h"
#include "support/PostgresServer.h"

namespace dao {

namespace {

struct Client {
    explicit Client(const OpenedDatabase& o, int timeout = 1)
        : database(workspace->OpenDatabase(o.file.path(), {.busyTimeoutMilliseconds = timeout})) {}
    Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    Ref<Database> database;
};

} // namespace

TEST(PostgresLock, ATransactionWaitsForTheOther) {
    const OpenedDatabase holder(threeRows());
    const Client other(holder);
    holder.workspace->BeginTrans();
    EXPECT_EQ(errorOf([&] { other.workspace->BeginTrans(); }), 3260);
    EXPECT_EQ(other.workspace->transactionDepth(), 0);
    EXPECT_EQ(errorOf([&] { other.workspace->CommitTrans(); }), 3034);
    holder.workspace->BeginTrans(); // an inner one
    holder.workspace->CommitTrans();
    EXPECT_EQ(errorOf([&] { other.workspace->BeginTrans(); }), 3260);
    holder.workspace->CommitTrans();
    other.workspace->BeginTrans();
    EXPECT_EQ(errorOf([&] {
                  holder.workspace->setBusyTimeout(1);
                  holder.workspace->BeginTrans();
              }),
              3260);
    other.workspace->Rollback();
    holder.workspace->BeginTrans();
    holder.workspace->Rollback();
}

TEST(PostgresLock, ReadingAndSingleActionsTakeNoPart) {
    const OpenedDatabase holder(threeRows());
    const Client other(holder);
    holder.workspace->BeginTrans();
    holder.database->Execute(u"UPDATE T SET Name = 'x' WHERE Nr = 1"_s, dbFailOnError);
    EXPECT_EQ(other.database->OpenRecordset(u"SELECT Name FROM T"_s, dbOpenSnapshot)->value(0), Variant(u"eins"_s));
    EXPECT_EQ(errorOf([&] { other.database->Execute(u"UPDATE T SET Name = 'y' WHERE Nr = 2"_s, dbFailOnError); }), 0);
    holder.workspace->CommitTrans();
    EXPECT_EQ(holder.file.one("SELECT string_agg(\"Name\", ',' ORDER BY \"Nr\") FROM \"T\""), "x,y,drei");
}

TEST(PostgresLock, GoesWithTheConnection) {
    const OpenedDatabase holder(threeRows());
    const Client other(holder, 5000);
    holder.workspace->BeginTrans();
    EXPECT_EQ(mkl::runOnServer(holder.file.path(), "SELECT count(pg_terminate_backend(pid, 60000)) FROM pg_locks WHERE "
                                                   "locktype = 'advisory' AND granted"),
              "1");
    other.workspace->BeginTrans();
    other.database->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
    other.workspace->CommitTrans();
    EXPECT_EQ(errorOf([&] { holder.workspace->CommitTrans(); }), 3043);
    holder.workspace->Rollback();
}

TEST(PostgresLock, OfAnotherDatabaseIsAnother) {
    const OpenedDatabase one(threeRows()), two(threeRows());
    one.workspace->BeginTrans();
    two.workspace->setBusyTimeout(1);
    EXPECT_EQ(errorOf([&] { two.workspace->BeginTrans(); }), 0);
}

} // namespace dao
