// Each statement of a small piece of work fails once, and the server goes away before each: what is stored then is all
// of it or nothing, and whoever did it knows which.
#include "dao/FaultPoints.h"

#include "dao/OpenedDatabase.h"
#include "support/PostgresServer.h"

#include <future>
#include <libpq-fe.h>
#include <memory>

namespace dao {

namespace {

const QByteArray everyoneElse =
    "FROM pg_stat_activity WHERE datname = current_database() AND pid <> pg_backend_pid() AND backend_type = "
    "'client backend'";

void work(const OpenedDatabase& o) {
    o.workspace->BeginTrans();
    o.database->Execute(u"UPDATE T SET Name = 'neu' WHERE Nr = 1"_s, dbFailOnError);
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    rows->Edit();
    rows->setValue(u"Name", u"noch neuer"_s);
    rows->Update();
    rows->AddNew();
    rows->setValue(u"Nr", 4);
    rows->Update();
    o.database->Execute(u"DELETE FROM T WHERE Nr = 3"_s, dbFailOnError);
    o.workspace->CommitTrans();
}

const QByteArray before = "1eins,2zwei,3drei", after = "1noch neuer,2zwei,4";

QByteArray stored(const OpenedDatabase& o) {
    return o.file.one("SELECT string_agg(\"Nr\" || coalesce(\"Name\", ''), ',' ORDER BY \"Nr\") FROM \"T\"");
}

/// Does the work; where it fails what is left of it is undone, and it is done once more.
void expectAllOrNothing(const OpenedDatabase& o, Long error, qint64 point) {
    FaultPoints::disarm();
    FaultPoints::setObserver({});
    if (o.workspace->transactionDepth() > 0) o.workspace->Rollback();
    EXPECT_EQ(o.workspace->transactionDepth(), 0);
    EXPECT_EQ(stored(o), error == 0 ? after : before) << point;
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM T"_s), Variant(3)) << point;
    if (error == 0) return;
    EXPECT_EQ(errorOf([&] { work(o); }), 0) << point;
    EXPECT_EQ(stored(o), after) << point;
}

} // namespace

TEST(PostgresFaults, AStatementThatFailsLeavesAllOrNothing) {
    constexpr std::pair<StatementFault, Long> kinds[] = {{StatementFault::Constraint, 3022},
                                                         {StatementFault::Busy, 3260},
                                                         {StatementFault::DiskFull, 3026},
                                                         {StatementFault::Interrupt, 3059}};
    for (const auto& [fault, number] : kinds) {
        qint64 point = 0;
        for (bool fired = true; fired;) {
            const OpenedDatabase o(threeRows());
            FaultPoints::arm(fault, ++point);
            const Long error = errorOf([&] { work(o); });
            fired = FaultPoints::hasFired();
            EXPECT_EQ(error, fired ? number : 0) << point;
            expectAllOrNothing(o, error, point);
        }
        EXPECT_GE(point, 5);
    }
}

TEST(PostgresFaults, AServerThatGoesAwayBeforeAStatementLeavesAllOrNothing) {
    qint64 count = 0;
    {
        const OpenedDatabase o(threeRows());
        FaultPoints::setObserver([&](QByteArrayView) { ++count; });
        work(o);
        FaultPoints::setObserver({});
    }
    EXPECT_GE(count, 5);
    for (qint64 point = 1; point <= count; ++point) {
        const OpenedDatabase o(threeRows());
        qint64 passed = 0;
        FaultPoints::setObserver([&](QByteArrayView) {
            if (++passed == point)
                mkl::runOnServer(o.file.path(), "SELECT count(pg_terminate_backend(pid, 60000)) " + everyoneElse);
        });
        const Long error = errorOf([&] { work(o); });
        EXPECT_EQ(error, 3043) << point;
        expectAllOrNothing(o, error, point);
    }
}

TEST(PostgresFaults, ALostConnectionIsOneToTheHarness) {
    const OpenedDatabase o(threeRows());
    const QString update = u"UPDATE T SET Name = 'neu' WHERE Nr = 1"_s;
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 'eins' WHERE Nr = 1"_s), 0); // known from now on
    FaultPoints::arm(StatementFault::LostConnection, 2);
    EXPECT_EQ(errorOf([&] { work(o); }), 3043);
    EXPECT_EQ(o.errorOfExecute(update), 3246);
    EXPECT_EQ(errorOf([&] { o.workspace->BeginTrans(); }), 3246);
    expectAllOrNothing(o, 3043, 2);
}

namespace {

/// Another client with a transaction of its own, by native statements.
class OtherClient {
public:
    explicit OtherClient(const QString& url)
        : connection_(PQconnectdb(url.toUtf8().constData()), &PQfinish) {}
    void run(const char* native) const { PQclear(PQexec(connection_.get(), native)); }
    /// Sends it, and comes back when it waits for a lock.
    void runUntilItWaits(const QString& url, const char* native) const {
        PQsendQuery(connection_.get(), native);
        const QByteArray question = "SELECT count(*) FROM pg_locks WHERE NOT granted AND pid = " +
                                    QByteArray::number(PQbackendPID(connection_.get()));
        while (mkl::runOnServer(url, question) != "1") {
        }
    }

private:
    std::unique_ptr<PGconn, void (*)(PGconn*)> connection_;
};

} // namespace

TEST(PostgresFaults, ADeadlockUndoesTheStatementAlone) {
    const OpenedDatabase o(threeRows());
    const OtherClient other(o.file.path());
    other.run("BEGIN; SET LOCAL deadlock_timeout = '60s'; UPDATE \"T\" SET \"Name\" = 'fremd' WHERE \"Nr\" = 2");
    o.workspace->BeginTrans();
    o.database->Execute(u"UPDATE T SET Name = 'meins' WHERE Nr = 1"_s, dbFailOnError);
    other.runUntilItWaits(o.file.path(), "UPDATE \"T\" SET \"Name\" = 'fremd' WHERE \"Nr\" = 1");
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 'meins' WHERE Nr = 2"_s), 3260);
    EXPECT_FALSE(o.workspace->isDoomed());
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT \"Name\" FROM \"T\" WHERE \"Nr\" = 1"), "meins");
}

TEST(PostgresFaults, ARowThatAnotherHoldsIsLocked) {
    const OpenedDatabase o(threeRows(), {.busyTimeoutMilliseconds = 20});
    const OtherClient other(o.file.path());
    other.run("BEGIN; UPDATE \"T\" SET \"Name\" = 'fremd' WHERE \"Nr\" = 2");
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 'meins' WHERE Nr = 2"_s), 3260);
    EXPECT_EQ(o.one(u"SELECT Name FROM T WHERE Nr = 2"_s), Variant(u"zwei"_s));
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 'meins' WHERE Nr = 1"_s), 0);
    other.run("ROLLBACK");
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 'meins' WHERE Nr = 2"_s), 0);
}

TEST(PostgresFaults, AStatementThatIsCancelledIsInterrupted) {
    const OpenedDatabase o(threeRows());
    const OtherClient other(o.file.path());
    other.run("BEGIN; LOCK TABLE \"T\"");
    auto cancelled = std::async(std::launch::async, [url = o.file.path()] {
        while (mkl::runOnServer(url, "SELECT count(pg_cancel_backend(pid)) FROM pg_locks WHERE NOT granted") == "0") {
        }
    });
    EXPECT_EQ(o.errorOfQuery(u"SELECT Name FROM T"_s), 3059);
    cancelled.get();
    other.run("ROLLBACK");
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM T"_s), Variant(3));
}

namespace {

/// Ends its connection in the middle of COMMIT: before the server has done it, or when only the answer is missing.
QByteArray endingCommits(const char* when) {
    return QByteArray("CREATE FUNCTION public.ends() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN ") + when +
           " RETURN NULL; END $$; CREATE CONSTRAINT TRIGGER ends AFTER UPDATE ON \"T\" DEFERRABLE INITIALLY DEFERRED "
           "FOR EACH ROW EXECUTE FUNCTION public.ends();";
}

} // namespace

TEST(PostgresFaults, ACommitThatTheServerDidNotDoIsKnownToBeUndone) {
    const OpenedDatabase o(threeRows());
    mkl::runOnServer(o.file.path(), endingCommits("PERFORM pg_terminate_backend(pg_backend_pid());"));
    o.workspace->BeginTrans();
    o.database->Execute(u"UPDATE T SET Name = 'neu' WHERE Nr = 1"_s, dbFailOnError);
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3043);
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s), 3246);
    o.workspace->Rollback();
    EXPECT_EQ(stored(o), before);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 'neu' WHERE Nr = 1"_s), 3043); // one action alone as well
    EXPECT_EQ(stored(o), before);
}

} // namespace dao
