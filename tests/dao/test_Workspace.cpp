// Levels of transactions, what a host is told of them, waiting, several databases.
#include "dao/OpenedDatabase.h"
#include "dao/TransactionWatch.h"
#include "dao/WorkspaceNotifier.h"

#include <QElapsedTimer>

namespace dao {

namespace {

void insert(const OpenedDatabase& o, int nr) {
    o.database->Execute(u"INSERT INTO T (Nr, Name) VALUES (%1, 'neu')"_s.arg(nr), dbFailOnError);
}

// As a second connection sees the file.
Long countElsewhere(const OpenedDatabase& o) {
    return DBEngine::CreateWorkspace()->OpenDatabase(o.file.path())->OpenRecordset(u"T"_s)->RecordCount();
}

QStringList* logged = nullptr;

void keepLog(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtWarningMsg) logged->append(message);
}

/// What is logged as a warning during its life.
class LogScope {
public:
    LogScope() {
        logged = &messages_;
        former_ = qInstallMessageHandler(&keepLog);
    }
    ~LogScope() { qInstallMessageHandler(former_); }
    Q_DISABLE_COPY_MOVE(LogScope)

    const QStringList& messages() const { return messages_; }

private:
    QStringList messages_;
    QtMessageHandler former_;
};

} // namespace

TEST(Workspace, AnInnerCommitIsNotDurableUntilTheOuterOne) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans(); // left open by some command
    o.workspace->BeginTrans();
    insert(o, 4);
    o.workspace->CommitTrans();
    EXPECT_EQ(o.open(u"T"_s, dbOpenTable)->RecordCount(), 4);
    EXPECT_EQ(countElsewhere(o), 3);
    o.workspace->CommitTrans();
    EXPECT_EQ(countElsewhere(o), 4);
}

TEST(Workspace, ClosingWithoutTheOuterCommitLosesAll) {
    OpenedDatabase o(threeRows());
    const LogScope log;
    o.workspace->BeginTrans();
    o.workspace->BeginTrans();
    insert(o, 4);
    o.workspace->CommitTrans();
    o.database.reset();
    o.workspace.reset();
    EXPECT_EQ(countElsewhere(o), 3);
    EXPECT_EQ(log.messages().size(), 1);
    EXPECT_TRUE(log.messages().join(u' ').contains(u"(Tiefe 1)"_s));
}

TEST(Workspace, EndsSilentlyWhenNothingIsOpen) {
    const LogScope log;
    {
        const OpenedDatabase o(threeRows());
        o.workspace->BeginTrans();
        o.workspace->CommitTrans();
        o.workspace->BeginTrans();
        o.workspace->Rollback();
    }
    EXPECT_TRUE(log.messages().isEmpty());
}

TEST(Workspace, TellsWhatACommandLeavesOpen) {
    const OpenedDatabase o(threeRows());
    QList<int> told;
    QObject::connect(&o.workspace->notifier(), &WorkspaceNotifier::transactionLeftOpen, &o.workspace->notifier(),
                     [&](int depth) { told.append(depth); });
    {
        const TransactionWatch watch(o.workspace);
        o.workspace->BeginTrans();
        o.workspace->CommitTrans();
    }
    EXPECT_TRUE(told.isEmpty());
    {
        const TransactionWatch outer(o.workspace);
        {
            const TransactionWatch inner(o.workspace);
            o.workspace->BeginTrans();
            o.workspace->BeginTrans();
        }
        EXPECT_TRUE(told.isEmpty());
    }
    EXPECT_EQ(told, QList<int>{2});
    {
        const TransactionWatch watch(o.workspace);
        o.workspace->Rollback();
    }
    EXPECT_EQ(told, QList<int>{2});
    o.workspace->Rollback();
    const TransactionWatch nothing({});
}

TEST(Workspace, BeginTakesTheLockBeforeTheFirstRow) {
    const OpenedDatabase holder(threeRows());
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    workspace->setBusyTimeout(0);
    const Ref<Database> other = workspace->OpenDatabase(holder.file.path());
    holder.workspace->BeginTrans(); // nothing written yet
    EXPECT_EQ(errorOf([&] { workspace->BeginTrans(); }), 3260);
    holder.workspace->Rollback();
    workspace->BeginTrans();
    workspace->Rollback();
}

TEST(Workspace, TheBusyTimeoutCanBeChanged) {
    const OpenedDatabase holder(threeRows());
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    EXPECT_EQ(workspace->BusyTimeout(), 5000);
    const Ref<Database> other = workspace->OpenDatabase(holder.file.path());
    EXPECT_EQ(other->BusyTimeout(), 5000);
    workspace->setBusyTimeout(150);
    EXPECT_EQ(workspace->BusyTimeout(), 150);
    EXPECT_EQ(other->BusyTimeout(), 150);
    EXPECT_EQ(workspace->OpenDatabase(holder.file.path())->BusyTimeout(), 150);
    EXPECT_EQ(workspace->OpenDatabase(holder.file.path(), {.busyTimeoutMilliseconds = 7})->BusyTimeout(), 7);
    holder.workspace->BeginTrans();
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(errorOf([&] { workspace->BeginTrans(); }), 3260);
    EXPECT_GE(timer.elapsed(), 140);
    other->setBusyTimeout(0);
    EXPECT_EQ(errorOf([&] { other->Execute(u"DELETE FROM T"_s, dbFailOnError); }), 3260);
    EXPECT_EQ(errorOf([&] { workspace->setBusyTimeout(-1); }), 5);
    EXPECT_EQ(errorOf([&] { other->setBusyTimeout(-1); }), 5);
}

TEST(Workspace, SeveralDatabasesGoTogether) {
    const OpenedDatabase first(threeRows());
    const TempDatabase otherFile(threeRows());
    const Ref<Database> second = first.workspace->OpenDatabase(otherFile.path());
    const QString change = u"UPDATE T SET Name = 'x' WHERE Nr = 1"_s;
    for (const bool keep : {false, true}) {
        first.workspace->BeginTrans();
        first.database->Execute(change, dbFailOnError);
        second->Execute(change, dbFailOnError);
        keep ? first.workspace->CommitTrans() : first.workspace->Rollback();
        EXPECT_EQ(first.file.one("SELECT Name FROM T WHERE Nr = 1"), keep ? "x" : "eins");
        EXPECT_EQ(otherFile.one("SELECT Name FROM T WHERE Nr = 1"), keep ? "x" : "eins");
    }
    first.workspace->BeginTrans();
    second->Execute(u"DELETE FROM T"_s, dbFailOnError);
    second->Close();
    first.database->Execute(u"DELETE FROM T WHERE Nr = 3"_s, dbFailOnError);
    first.workspace->CommitTrans();
    EXPECT_EQ(otherFile.one("SELECT count(*) FROM T"), "3");
    EXPECT_EQ(countElsewhere(first), 2);
}

TEST(Workspace, AReadOnlyDatabaseTakesPart) {
    const OpenedDatabase first(threeRows());
    const TempDatabase otherFile(threeRows());
    const Ref<Database> second = first.workspace->OpenDatabase(otherFile.path(), {.readOnly = true});
    first.workspace->BeginTrans();
    insert(first, 4);
    EXPECT_EQ(errorOf([&] { second->Execute(u"DELETE FROM T"_s, dbFailOnError); }), 3027);
    first.workspace->CommitTrans();
    EXPECT_EQ(countElsewhere(first), 4);
}

TEST(Workspace, DoomedUntilRollback) {
    const OpenedDatabase o(threeRows());
    EXPECT_FALSE(o.workspace->isDoomed());
    o.workspace->BeginTrans();
    insert(o, 4);
    o.database->executeNative(u"PRAGMA max_page_count = 1"_s);
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    table->AddNew();
    table->setValue(u"Nr", 5);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr, Name) VALUES (100, String(100000, 'x'))"_s), 3026);
    EXPECT_TRUE(o.workspace->isDoomed());
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3246);
    EXPECT_EQ(errorOf([&] { table->AddNew(); }), 3246);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), 3246);
    EXPECT_EQ(errorOf([&] { table->Edit(); }), 3246);
    EXPECT_EQ(table->RecordCount(), 3); // reading shows what is stored
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3246);
    o.workspace->Rollback();
    EXPECT_FALSE(o.workspace->isDoomed());
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3034);
    o.database->executeNative(u"PRAGMA max_page_count = 1000000"_s);
    insert(o, 6);
    EXPECT_EQ(countElsewhere(o), 4);
}

TEST(Execute, FailOnErrorUndoesTheWholeStatement) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    insert(o, 10);
    EXPECT_EQ(o.database->RecordsAffected(), 1);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Nr = Nr + 7"_s), 3022); // 1 and 2 go, 3 meets 10
    EXPECT_EQ(o.database->RecordsAffected(), 0);
    EXPECT_EQ(o.all(u"SELECT Nr FROM T ORDER BY Nr"_s).join(u','), u"1,2,3,10"_s);
    o.database->Execute(u"DELETE FROM T WHERE Nr < 3"_s, dbFailOnError);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    o.workspace->CommitTrans();
    EXPECT_EQ(countElsewhere(o), 2);
}

TEST(Execute, AConflictClauseOfTheFileBreaksNoTransaction) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY ON CONFLICT FAIL, Name TEXT);"
                           "INSERT INTO T VALUES (3, 'drei'), (5, 'fuenf');");
    o.workspace->BeginTrans();
    insert(o, 8);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) SELECT Nr + 2 FROM T"_s), 3022);
    EXPECT_EQ(o.all(u"SELECT Nr FROM T ORDER BY Nr"_s).join(u','), u"3,5,8"_s);
    o.workspace->CommitTrans();
}

TEST(WholeNumbers, LeaveTheRangeOfLongWithAnError) {
    const OpenedDatabase o(
        "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Zahl INTEGER); INSERT INTO T VALUES (1, 2147483647);");
    EXPECT_EQ(o.errorOfQuery(u"SELECT Zahl + 1 FROM T"_s), 6);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Max(Zahl) + 1 FROM T"_s), 6);
    EXPECT_EQ(o.errorOfQuery(u"SELECT -Zahl - 2 FROM T"_s), 6);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Zahl * 2 FROM T"_s), 6);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE Zahl + Nr > 0"_s), 6);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Zahl = Zahl + 1"_s), 6);
    EXPECT_NE(o.errorOfExecute(u"UPDATE T SET Zahl = 3000000000"_s), 0);
    EXPECT_NE(o.errorOfExecute(u"INSERT INTO T (Nr, Zahl) VALUES (2, 2147483648)"_s), 0);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Zahl = -2147483648"_s), 0);
    EXPECT_EQ(o.file.one("SELECT Zahl FROM T"), "-2147483648");
}

} // namespace dao
