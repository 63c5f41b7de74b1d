#include "dao/OpenedDatabase.h"

namespace dao {

namespace {

void insert(const OpenedDatabase& o, int nr) {
    o.database->Execute(u"INSERT INTO T (Nr, Name) VALUES (%1, 'neu')"_s.arg(nr), dbFailOnError);
}

// As other programs see the file.
QByteArray stored(const OpenedDatabase& o) {
    return o.file.one("SELECT group_concat(Nr) FROM (SELECT Nr FROM T ORDER BY Nr)");
}

QByteArray seen(const OpenedDatabase& o) {
    return o.all(u"SELECT Nr FROM T ORDER BY Nr"_s).join(u',').toUtf8();
}

/// In the middle of a transaction the file may grow no further: the engine gives the whole transaction up by itself.
class FullDisk {
public:
    explicit FullDisk(const OpenedDatabase& o)
        : o_(o) {
        o.workspace->BeginTrans();
        insert(o, 40);
        o.database->executeNative(u"PRAGMA max_page_count = 1"_s);
        error_ = o.errorOfExecute(u"INSERT INTO T (Nr, Name) VALUES (100, String(100000, 'x'))"_s);
    }
    Long error() const { return error_; }
    void end() const { o_.database->executeNative(u"PRAGMA max_page_count = 1000000"_s); }

private:
    const OpenedDatabase& o_;
    Long error_ = 0;
};

} // namespace

TEST(Transaction, CommitAndRollback) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.workspace->transactionDepth(), 0);
    o.workspace->BeginTrans();
    insert(o, 4);
    EXPECT_EQ(seen(o), "1,2,3,4");
    EXPECT_EQ(stored(o), "1,2,3");
    o.workspace->Rollback();
    EXPECT_EQ(seen(o), "1,2,3");
    o.workspace->BeginTrans();
    insert(o, 5);
    o.workspace->CommitTrans();
    EXPECT_EQ(stored(o), "1,2,3,5");
}

TEST(Transaction, WithoutBegin) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3034);
    EXPECT_EQ(errorOf([&] { o.workspace->Rollback(); }), 3034);
    insert(o, 4);
    EXPECT_EQ(stored(o), "1,2,3,4");
}

TEST(Transaction, Nests) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    insert(o, 4);
    o.workspace->BeginTrans();
    insert(o, 5);
    o.workspace->BeginTrans();
    insert(o, 6);
    EXPECT_EQ(o.workspace->transactionDepth(), 3);
    o.workspace->CommitTrans();
    o.workspace->Rollback();
    EXPECT_EQ(seen(o), "1,2,3,4");
    o.workspace->BeginTrans();
    insert(o, 7);
    o.workspace->CommitTrans();
    EXPECT_EQ(stored(o), "1,2,3");
    o.workspace->CommitTrans();
    EXPECT_EQ(stored(o), "1,2,3,4,7");
    EXPECT_EQ(o.workspace->transactionDepth(), 0);
}

TEST(Transaction, TheOuterRollbackTakesCommittedInnerLevelsBack) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    for (int level = 0; level < 20; ++level)
        o.workspace->BeginTrans();
    insert(o, 4);
    for (int level = 0; level < 20; ++level)
        o.workspace->CommitTrans();
    o.workspace->Rollback();
    EXPECT_EQ(seen(o), "1,2,3");
}

TEST(Transaction, AFailedStatementLeavesItAsItWas) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    insert(o, 4);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Nr = 9"_s), 3022);
    EXPECT_EQ(o.errorOfQuery(u"SELECT 1 / 0 FROM T"_s), 11);
    EXPECT_EQ(seen(o), "1,2,3,4");
    insert(o, 5);
    o.workspace->CommitTrans();
    EXPECT_EQ(stored(o), "1,2,3,4,5");
}

TEST(Transaction, EndsWithItsDatabase) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    insert(o, 4);
    o.database->Close();
    EXPECT_EQ(stored(o), "1,2,3");
    o.workspace->CommitTrans();
    EXPECT_EQ(o.workspace->transactionDepth(), 0);
}

TEST(Transaction, EndsWithItsWorkspace) {
    OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    o.workspace->BeginTrans();
    insert(o, 4);
    o.workspace.reset();
    EXPECT_EQ(seen(o), "1,2,3");
    insert(o, 5);
    EXPECT_EQ(stored(o), "1,2,3,5");
}

TEST(Transaction, TakesInWhatIsOpenedMeanwhile) {
    const OpenedDatabase first(threeRows());
    const TempDatabase other(threeRows());
    first.workspace->BeginTrans();
    first.workspace->BeginTrans();
    const Ref<Database> second = first.workspace->OpenDatabase(other.path());
    second->Execute(u"DELETE FROM T"_s, dbFailOnError);
    insert(first, 4);
    first.workspace->CommitTrans();
    first.workspace->Rollback();
    EXPECT_EQ(other.one("SELECT count(*) FROM T"), "3");
    EXPECT_EQ(stored(first), "1,2,3");
}

TEST(Transaction, ALockOfAnotherProgramShowsAtTheBegin) {
    const OpenedDatabase holder(threeRows());
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    const Ref<Database> waiting = workspace->OpenDatabase(holder.file.path(), {.busyTimeoutMilliseconds = 1});
    holder.workspace->BeginTrans();
    insert(holder, 4);
    EXPECT_EQ(errorOf([&] { workspace->BeginTrans(); }), 3260);
    EXPECT_EQ(workspace->transactionDepth(), 0);
    EXPECT_EQ(errorOf([&] { waiting->Execute(u"DELETE FROM T"_s, dbFailOnError); }), 3260);
    EXPECT_EQ(waiting->OpenRecordset(u"T"_s)->RecordCount(), 3);
    holder.workspace->CommitTrans();
    workspace->BeginTrans();
    waiting->Execute(u"DELETE FROM T WHERE Nr = 4"_s, dbFailOnError);
    workspace->CommitTrans();
    EXPECT_EQ(stored(holder), "1,2,3");
}

TEST(Transaction, BeginFailsForAllDatabasesOrNone) {
    const OpenedDatabase first(threeRows());
    const OpenedDatabase holder(threeRows());
    const Ref<Database> locked = first.workspace->OpenDatabase(holder.file.path(), {.busyTimeoutMilliseconds = 1});
    holder.workspace->BeginTrans();
    insert(holder, 4);
    EXPECT_EQ(errorOf([&] { first.workspace->BeginTrans(); }), 3260);
    insert(first, 4);
    EXPECT_EQ(stored(first), "1,2,3,4");
}

TEST(DoomedTransaction, NothingAfterTheErrorIsStored) {
    const OpenedDatabase o(threeRows());
    const FullDisk full(o);
    ASSERT_EQ(full.error(), 3026);
    EXPECT_EQ(stored(o), "1,2,3");
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s), 3246);
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s, 0), 3246);
    RowWriter writer = o.database->appendRows(u"T"_s, {u"Nr"_s});
    const Variant row[] = {Variant(50)};
    EXPECT_EQ(errorOf([&] { writer.append(row); }), 3246);
    EXPECT_EQ(errorOf([&] { o.database->executeNative(u"DELETE FROM T"_s); }), 3246);
    EXPECT_EQ(errorOf([&] { o.workspace->BeginTrans(); }), 3246);
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3246);
    EXPECT_EQ(o.workspace->transactionDepth(), 1);
    EXPECT_EQ(seen(o), "1,2,3");
    o.workspace->Rollback();
    EXPECT_EQ(o.workspace->transactionDepth(), 0);
    full.end();
    insert(o, 4);
    EXPECT_EQ(stored(o), "1,2,3,4");
}

TEST(DoomedTransaction, StaysDoomedUntilTheOutermostLevelIsRolledBack) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    insert(o, 4);
    const FullDisk full(o);
    EXPECT_NE(full.error(), 0);
    o.workspace->Rollback();
    EXPECT_EQ(o.workspace->transactionDepth(), 1);
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s), 3246);
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3246);
    o.workspace->Rollback();
    full.end();
    insert(o, 5);
    EXPECT_EQ(stored(o), "1,2,3,5");
}

} // namespace dao
