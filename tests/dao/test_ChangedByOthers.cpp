// What a connection notices of the changes of others without being asked to read.
#include "dao/OpenedDatabase.h"

#include <QElapsedTimer>
#include <QFile>

namespace dao {

namespace {

class ChangedByOthers : public ::testing::Test {
protected:
    void insert(Database& database, int key) {
        database.Execute(u"INSERT INTO T (Nr, Name) VALUES (%1, 'neu')"_s.arg(key), dbFailOnError);
    }

    OpenedDatabase own_{threeRows()};
    Ref<Workspace> others_ = DBEngine::CreateWorkspace();
    Ref<Database> other_ = others_->OpenDatabase(own_.file.path());
};

TEST_F(ChangedByOthers, AreToldOnce) {
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    insert(*other_, 4);
    EXPECT_TRUE(own_.database->takeChangedByOthers());
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    other_->Execute(u"UPDATE T SET Name = 'x' WHERE Nr = 4"_s, dbFailOnError);
    other_->Execute(u"DELETE FROM T WHERE Nr = 4"_s, dbFailOnError);
    EXPECT_TRUE(own_.database->takeChangedByOthers());
    EXPECT_FALSE(own_.database->takeChangedByOthers());
}

TEST_F(ChangedByOthers, CountFromTheOpeningOn) {
    insert(*other_, 4);
    const Ref<Database> later = others_->OpenDatabase(own_.file.path());
    EXPECT_FALSE(later->takeChangedByOthers());
    EXPECT_TRUE(own_.database->takeChangedByOthers()); // the first question
}

TEST_F(ChangedByOthers, OnesOwnAreNone) {
    insert(*own_.database, 4);
    const Ref<Recordset> table = own_.open(u"T"_s, dbOpenTable);
    table->Delete();
    own_.workspace->BeginTrans();
    insert(*own_.database, 5);
    own_.workspace->CommitTrans();
    own_.workspace->BeginTrans();
    insert(*own_.database, 6);
    own_.workspace->Rollback();
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    EXPECT_TRUE(other_->takeChangedByOthers());
}

TEST_F(ChangedByOthers, ReadingTakesNothingAway) {
    insert(*other_, 4);
    EXPECT_EQ(own_.all(u"SELECT Nr FROM T ORDER BY Nr"_s).size(), 4);
    insert(*own_.database, 5);
    EXPECT_TRUE(own_.database->takeChangedByOthers());
}

TEST_F(ChangedByOthers, WhatIsUndoneOrNotYetStoredIsNone) {
    others_->BeginTrans();
    insert(*other_, 4);
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    others_->Rollback();
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    others_->BeginTrans();
    insert(*other_, 4);
    others_->CommitTrans();
    EXPECT_TRUE(own_.database->takeChangedByOthers());
}

TEST_F(ChangedByOthers, AreToldBehindATransactionOfOnesOwn) {
    insert(*other_, 4);
    own_.workspace->BeginTrans();
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    insert(*own_.database, 5);
    own_.workspace->CommitTrans();
    EXPECT_TRUE(own_.database->takeChangedByOthers());
}

TEST_F(ChangedByOthers, AClosedDatabaseHasNone) {
    insert(*other_, 4);
    own_.database->Close();
    EXPECT_FALSE(own_.database->takeChangedByOthers());
    EXPECT_FALSE(own_.database->isLost());
}

// A writer of the older journal locks readers out while it writes.
TEST(ChangedByOthersInAFile, ALockIsNotWaitedFor) {
    const OpenedDatabase own("PRAGMA journal_mode = DELETE;" + threeRows());
    const Ref<Workspace> others = DBEngine::CreateWorkspace();
    const Ref<Database> other = others->OpenDatabase(own.file.path());
    other->executeNative(u"PRAGMA locking_mode = EXCLUSIVE"_s);
    other->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
    EXPECT_EQ(own.database->BusyTimeout(), 5000);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(own.database->takeChangedByOthers());
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_EQ(own.database->BusyTimeout(), 5000);
    other->Close();
    EXPECT_TRUE(own.database->takeChangedByOthers());
    EXPECT_FALSE(own.database->takeChangedByOthers());
}

TEST(ChangedByOthersInAFile, AskingLocksNobodyOut) {
    for (const char* mode : {"PRAGMA journal_mode = WAL;", "PRAGMA journal_mode = DELETE;"}) {
        const OpenedDatabase own(mode + threeRows());
        const Ref<Workspace> others = DBEngine::CreateWorkspace();
        const Ref<Database> other = others->OpenDatabase(own.file.path(), {.busyTimeoutMilliseconds = 0});
        EXPECT_FALSE(own.database->takeChangedByOthers());
        other->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
        EXPECT_TRUE(own.database->takeChangedByOthers()) << mode;
        other->Execute(u"DELETE FROM T WHERE Nr = 2"_s, dbFailOnError);
        EXPECT_TRUE(own.database->takeChangedByOthers()) << mode;
    }
}

TEST(ChangedByOthersInAFile, AReadOnlyFileToo) {
    const OpenedDatabase own("PRAGMA journal_mode = WAL;" + threeRows(), {.readOnly = true});
    own.file.run("DELETE FROM T WHERE Nr = 1");
    EXPECT_TRUE(own.database->takeChangedByOthers());
    EXPECT_FALSE(own.database->takeChangedByOthers());
}

TEST(ChangedByOthersInAFile, WhatCannotBeReadIsNone) {
    const OpenedDatabase own("PRAGMA journal_mode = DELETE;" + threeRows());
    own.file.overwrite("no database at all, and long enough to be asked what it may be");
    EXPECT_FALSE(own.database->takeChangedByOthers());
}

} // namespace

} // namespace dao
