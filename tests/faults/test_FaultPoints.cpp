#include "dao/FaultPoints.h"

#include "dao/OpenedDatabase.h"

using namespace dao;

namespace {

struct Kind {
    StatementFault fault;
    Long number;
    bool dooms;
};

constexpr Kind kinds[] = {{StatementFault::Constraint, 3022, false},
                          {StatementFault::Busy, 3260, false},
                          {StatementFault::DiskFull, 3026, true},
                          {StatementFault::Interrupt, 3059, true},
                          {StatementFault::LostConnection, 3043, true}};

const QString update = u"UPDATE T SET Name='x'"_s;

} // namespace

TEST(FaultPoints, EachKindHasItsNumberAndLeavesTheTransactionAsTheEngineDoes) {
    for (const auto& [fault, number, dooms] : kinds)
        for (qint64 nth = 1;; ++nth) {
            const OpenedDatabase o(threeRows());
            o.workspace->BeginTrans();
            o.database->Execute(update, dbFailOnError);
            o.database->Execute(u"DELETE FROM T WHERE Nr=1"_s, dbFailOnError);
            FaultPoints::arm(fault, nth);
            const Long error = o.errorOfExecute(update);
            const bool fired = FaultPoints::hasFired();
            FaultPoints::disarm();
            EXPECT_EQ(error, fired ? number : 0);
            if (!fired) break;
            EXPECT_EQ(o.workspace->transactionDepth(), 1);
            const Long next = o.errorOfExecute(update);
            // What only reads can be interrupted without harm.
            EXPECT_TRUE(next == (dooms ? 3246 : 0) || (fault == StatementFault::Interrupt && next == 0)) << nth;
            EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), next);
            if (next != 0) o.workspace->Rollback();
            EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), next != 0 ? "3" : "2");
        }
}

TEST(FaultPoints, OnlyWhatWritesCanViolateAConstraint) {
    const OpenedDatabase o(threeRows());
    FaultPoints::arm(StatementFault::Constraint, 1);
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM T"_s), 0);
    o.workspace->BeginTrans();
    o.workspace->CommitTrans();
    EXPECT_EQ(FaultPoints::reached(), 0);
    EXPECT_EQ(o.errorOfExecute(update), 3022);
    EXPECT_TRUE(FaultPoints::hasFired());
    EXPECT_EQ(o.errorOfExecute(update), 0);
    FaultPoints::disarm();
    EXPECT_EQ(FaultPoints::reached(), 0);
}

TEST(FaultPoints, ALostConnectionStaysLost) {
    const OpenedDatabase o(threeRows());
    FaultPoints::arm(StatementFault::LostConnection, 1);
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM T"_s), 3043);
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM T"_s), 3043);
    EXPECT_EQ(o.errorOfExecute(update), 3043);
    EXPECT_EQ(errorOf([&] { o.workspace->BeginTrans(); }), 3043);
    FaultPoints::disarm();
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM T"_s), 0);
}

TEST(FaultPoints, ADefaultThatCannotBeReadIsAFailure) {
    for (qint64 nth = 1, fired = 1; fired; ++nth) {
        const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Aktiv INTEGER DEFAULT 7)");
        const auto rows = o.database->OpenRecordset(u"T"_s, dbOpenTable);
        FaultPoints::arm(StatementFault::Busy, nth);
        const Long error = errorOf([&] { rows->AddNew(); });
        fired = FaultPoints::hasFired();
        FaultPoints::disarm();
        EXPECT_EQ(error, fired ? 3260 : 0) << nth;
        if (error != 0) continue;
        EXPECT_EQ(rows->value(u"Aktiv").toLong(), 7);
    }
}
