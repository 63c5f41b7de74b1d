// A server tells by itself what others have stored, a moment later.
#include "dao/OpenedDatabase.h"
#include "support/PostgresServer.h"

namespace dao {

namespace {

class PostgresNotices : public ::testing::Test {
protected:
    static void insert(Database& database, int key) {
        database.Execute(u"INSERT INTO T (Nr, Name) VALUES (%1, 'neu')"_s.arg(key), dbFailOnError);
    }
    /// Comes back when the notice is there.
    static void awaitNotice(Database& database) {
        while (!database.takeChangedByOthers()) {
        }
    }

    OpenedDatabase own_{threeRows()};
    Ref<Workspace> others_ = DBEngine::CreateWorkspace();
    Ref<Database> other_ = others_->OpenDatabase(own_.file.path());
};

} // namespace

TEST_F(PostgresNotices, AreTakenOnce) {
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    insert(*other_, 4);
    awaitNotice(*own_.database);
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    mkl::runOnServer(own_.file.path(), "TRUNCATE \"T\""); // by somebody who knows nothing of us
    awaitNotice(*own_.database);
    EXPECT_FALSE(own_.database->takeChangedByOthers());
}

// One's own come with the answer to one's COMMIT, so that there is nothing to wait for.
TEST_F(PostgresNotices, OnesOwnAreNone) {
    insert(*own_.database, 4);
    own_.open(u"T"_s, dbOpenTable)->Delete();
    own_.workspace->BeginTrans();
    insert(*own_.database, 5);
    own_.workspace->CommitTrans();
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    awaitNotice(*other_);
}

TEST_F(PostgresNotices, WhatIsNotStoredIsNone) {
    others_->BeginTrans();
    insert(*other_, 4);
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    others_->Rollback();
    others_->BeginTrans();
    insert(*other_, 5);
    insert(*other_, 6);
    others_->CommitTrans();
    awaitNotice(*own_.database);
    EXPECT_FALSE(own_.database->takeChangedByOthers());
}

TEST_F(PostgresNotices, AreTakenBehindATransactionOfOnesOwn) {
    own_.workspace->BeginTrans();
    insert(*other_, 4);
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    own_.workspace->CommitTrans();
    awaitNotice(*own_.database);
}

TEST_F(PostgresNotices, RowsThatReplicationBringsAreTold) {
    mkl::runOnServer(own_.file.path(), "SET session_replication_role = replica; INSERT INTO \"T\" VALUES (4, 'fern')");
    awaitNotice(*own_.database);
    mkl::runOnServer(own_.file.path(), "SET session_replication_role = replica; DELETE FROM \"T\" WHERE \"Nr\" = 4");
    awaitNotice(*own_.database);
}

TEST_F(PostgresNotices, AfterALossSomethingMayHaveChanged) {
    mkl::runOnServer(own_.file.path(), "SELECT count(pg_terminate_backend(pid, 60000)) FROM pg_stat_activity WHERE "
                                       "datname = current_database() AND pid <> pg_backend_pid()");
    while (!own_.database->isLost())
        EXPECT_FALSE(own_.database->takeChangedByOthers());
    EXPECT_EQ(errorOf([&] { insert(*other_, 4); }), 3043);
    insert(*other_, 4);
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    EXPECT_EQ(own_.one(u"SELECT Count(*) FROM T"_s), Variant(4));
    EXPECT_FALSE(own_.database->isLost());
    EXPECT_TRUE(own_.database->takeChangedByOthers());
    insert(*other_, 5);
    awaitNotice(*own_.database);
}

} // namespace dao
