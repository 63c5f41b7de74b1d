// The number that belongs to a database and is no row of a table.
#include "dao/OpenedDatabase.h"

#include <limits>

namespace dao {

namespace {

Long errorOfSetting(const Ref<Database>& database, Long number) {
    return errorOf([&] { database->setLocalNumber(number); });
}

} // namespace

TEST(LocalNumber, IsZeroUntilItIsSet) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.database->LocalNumber(), 0);
    for (const Long number : {7, -1, std::numeric_limits<Long>::max(), std::numeric_limits<Long>::min()}) {
        o.database->setLocalNumber(number);
        EXPECT_EQ(o.database->LocalNumber(), number);
    }
}

TEST(LocalNumber, StaysWithTheFile) {
    const OpenedDatabase o(threeRows());
    o.database->setLocalNumber(7);
    o.database->Close();
    EXPECT_EQ(o.workspace->OpenDatabase(o.file.path())->LocalNumber(), 7);
}

TEST(LocalNumber, IsNoRowAndNoTable) {
    const OpenedDatabase o(threeRows());
    const QStringList tables = o.database->tableNames();
    o.database->setLocalNumber(7);
    EXPECT_EQ(o.database->tableNames(), tables);
    EXPECT_EQ(o.all(u"SELECT Name FROM T"_s), (QStringList{u"eins"_s, u"zwei"_s, u"drei"_s}));
}

TEST(LocalNumber, OthersSeeItAtOnceOrWithTheCommit) {
    const OpenedDatabase o("PRAGMA journal_mode = WAL;" + threeRows());
    const Ref<Database> other = DBEngine::CreateWorkspace()->OpenDatabase(o.file.path());
    o.database->setLocalNumber(7);
    EXPECT_EQ(other->LocalNumber(), 7);
    o.workspace->BeginTrans();
    o.database->setLocalNumber(8);
    EXPECT_EQ(o.database->LocalNumber(), 8);
    EXPECT_EQ(other->LocalNumber(), 7);
    o.workspace->CommitTrans();
    EXPECT_EQ(other->LocalNumber(), 8);
}

TEST(LocalNumber, IsUndoneWithItsTransaction) {
    const OpenedDatabase o(threeRows());
    o.database->setLocalNumber(1);
    o.workspace->BeginTrans();
    o.database->setLocalNumber(2);
    o.workspace->BeginTrans();
    o.database->setLocalNumber(3);
    EXPECT_EQ(o.database->LocalNumber(), 3);
    o.workspace->Rollback();
    EXPECT_EQ(o.database->LocalNumber(), 2);
    o.workspace->Rollback();
    EXPECT_EQ(o.database->LocalNumber(), 1);
}

TEST(LocalNumber, FailsAsOtherWritesDo) {
    const OpenedDatabase o(threeRows());
    o.database->setLocalNumber(4);
    const Ref<Database> reader = DBEngine::CreateWorkspace()->OpenDatabase(o.file.path(), {.readOnly = true});
    EXPECT_EQ(errorOfSetting(reader, 5), 3027);
    EXPECT_EQ(reader->LocalNumber(), 4);
    const Ref<Database> waiting =
        DBEngine::CreateWorkspace()->OpenDatabase(o.file.path(), {.busyTimeoutMilliseconds = 0});
    o.workspace->BeginTrans();
    o.database->setLocalNumber(6);
    EXPECT_EQ(errorOfSetting(waiting, 5), 3260);
    o.workspace->Rollback();
    waiting->Close();
    EXPECT_EQ(errorOfSetting(waiting, 5), 3420);
    EXPECT_EQ(errorOf([&] { waiting->LocalNumber(); }), 3420);
    EXPECT_EQ(o.database->LocalNumber(), 4);
}

TEST(LocalNumber, IsNotSetInADoomedTransaction) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY ON CONFLICT ROLLBACK); INSERT INTO T VALUES (1);");
    o.workspace->BeginTrans();
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) VALUES (1)"_s), 3022);
    ASSERT_TRUE(o.workspace->isDoomed());
    EXPECT_EQ(errorOfSetting(o.database, 5), 3246);
    EXPECT_EQ(o.database->LocalNumber(), 0);
    o.workspace->Rollback();
    o.database->setLocalNumber(5);
    EXPECT_EQ(o.database->LocalNumber(), 5);
}

// A snapshot is of the moment of its opening, also where its rest is read later.
TEST(LocalNumber, SnapshotsAreReadBeforeIt) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY);"
                           "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 3000)"
                           "INSERT INTO T SELECT i FROM n;");
    const Ref<Recordset> rows = o.open(u"SELECT Nr FROM T"_s);
    o.database->setLocalNumber(5);
    o.file.run("DELETE FROM T");
    rows->MoveLast();
    EXPECT_EQ(rows->value(0), Variant(3000));
}

} // namespace dao
