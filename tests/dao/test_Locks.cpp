// Locks of other programs, and files that go away underneath.
#include "dao/OpenedDatabase.h"

#include <QElapsedTimer>
#include <QFile>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace dao {

namespace {

/// Another process that opens the file, begins a transaction, adds row 100 and waits for its end.
class OtherProgram {
public:
    explicit OtherProgram(const QString& file) {
        if (pipe(ready_) != 0 || pipe(go_) != 0) ADD_FAILURE() << "no pipe";
        child_ = fork();
        if (child_ == 0) hold(file);
        char byte = 0;
        EXPECT_EQ(read(ready_[0], &byte, 1), 1);
        EXPECT_EQ(byte, 'r');
    }
    ~OtherProgram() {
        if (child_ > 0) kill();
        for (const int end : {ready_[0], ready_[1], go_[0], go_[1]})
            close(end);
    }
    Q_DISABLE_COPY_MOVE(OtherProgram)

    /// Lets it commit, without waiting for it.
    void release() { EXPECT_EQ(write(go_[1], "c", 1), 1); }
    void commit() {
        release();
        waitForEnd();
    }
    void kill() {
        ::kill(child_, SIGKILL);
        waitForEnd();
    }

private:
    [[noreturn]] void hold(const QString& file) {
        char byte = 'r';
        bool isDone = false;
        try {
            const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
            const Ref<Database> database = workspace->OpenDatabase(file);
            workspace->BeginTrans();
            database->Execute(u"INSERT INTO T (Nr, Name) VALUES (100, 'fremd')"_s, dbFailOnError);
            isDone = write(ready_[1], &byte, 1) == 1 && read(go_[0], &byte, 1) == 1;
            workspace->CommitTrans();
        } catch (const std::exception&) {
            isDone = false;
        }
        _exit(isDone ? 0 : 1);
    }
    void waitForEnd() {
        int status = 0;
        waitpid(child_, &status, 0);
        child_ = 0;
    }

    int ready_[2] = {};
    int go_[2] = {};
    pid_t child_ = 0;
};

QByteArray keys(const TempDatabase& file) {
    return file.one("SELECT group_concat(Nr) FROM (SELECT Nr FROM T ORDER BY Nr)");
}

} // namespace

TEST(Locks, AnotherProcessHoldsTheLock) {
    const TempDatabase file(threeRows());
    OtherProgram other(file.path());
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    const Ref<Database> database = workspace->OpenDatabase(file.path(), {.busyTimeoutMilliseconds = 100});
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(errorOf([&] { workspace->BeginTrans(); }), 3260);
    EXPECT_GE(timer.elapsed(), 90); // it did wait
    EXPECT_EQ(workspace->transactionDepth(), 0);
    EXPECT_EQ(errorOf([&] { database->Execute(u"DELETE FROM T"_s, dbFailOnError); }), 3260);
    EXPECT_EQ(errorOf([&] { database->Execute(u"DELETE FROM T"_s); }), 3260);
    const Ref<Recordset> table = database->OpenRecordset(u"T"_s);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), 3260);
    EXPECT_EQ(keys(file), "1,2,3");
    table->Edit();
    table->setValue(u"Name", u"meins"_s);
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3260);
    EXPECT_EQ(table->EditMode(), EditMode::InProgress);
    EXPECT_EQ(table->value(u"Name"), Variant(u"meins"_s));
    other.commit();
    table->Update(); // nothing of it was lost
    EXPECT_EQ(file.one("SELECT Name FROM T WHERE Nr = 1"), "meins");
    EXPECT_EQ(keys(file), "1,2,3,100");
}

TEST(Locks, ThisProgramGoesOnWhenTheOtherIsDone) {
    const TempDatabase file(threeRows());
    OtherProgram other(file.path());
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    const Ref<Database> database = workspace->OpenDatabase(file.path());
    other.release();
    workspace->BeginTrans();
    EXPECT_EQ(database->OpenRecordset(u"T"_s)->RecordCount(), 4);
    database->Execute(u"DELETE FROM T WHERE Nr = 100"_s, dbFailOnError);
    workspace->CommitTrans();
    EXPECT_EQ(keys(file), "1,2,3");
}

TEST(Locks, AKilledProgramLeavesNothing) {
    for (const char* mode : {"PRAGMA journal_mode = WAL;", "PRAGMA journal_mode = DELETE;"}) {
        const TempDatabase file(mode + threeRows());
        OtherProgram other(file.path());
        other.kill();
        const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
        const Ref<Database> database = workspace->OpenDatabase(file.path(), {.busyTimeoutMilliseconds = 0});
        workspace->BeginTrans();
        EXPECT_EQ(database->OpenRecordset(u"T"_s)->RecordCount(), 3) << mode;
        workspace->CommitTrans();
    }
}

TEST(Locks, TheErrorSaysWhatToDo) {
    const OpenedDatabase holder(threeRows());
    const OpenedDatabase other(threeRows());
    holder.workspace->BeginTrans();
    const Ref<Database> waiting =
        DBEngine::CreateWorkspace()->OpenDatabase(holder.file.path(), {.busyTimeoutMilliseconds = 0});
    try {
        waiting->Execute(u"DELETE FROM T"_s, dbFailOnError);
        FAIL();
    } catch (const mkl::RunTimeError& error) {
        EXPECT_EQ(error.number(), 3260);
        EXPECT_TRUE(error.description().contains(u"noch einmal"_s));
        EXPECT_TRUE(error.source().contains(u"SQLite"_s));
    }
}

TEST(Locks, AReaderDelaysTheCommitOfAFileWithARollbackJournal) {
    const TempDatabase file("PRAGMA journal_mode = DELETE;" + threeRows());
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    const Ref<Database> writer = workspace->OpenDatabase(file.path(), {.busyTimeoutMilliseconds = 0});
    const Ref<Workspace> elsewhere = DBEngine::CreateWorkspace();
    const Ref<Database> reader = elsewhere->OpenDatabase(file.path(), {.readOnly = true});
    elsewhere->BeginTrans();
    EXPECT_EQ(reader->OpenRecordset(u"T"_s)->RecordCount(), 3);
    workspace->BeginTrans();
    writer->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
    EXPECT_EQ(errorOf([&] { workspace->CommitTrans(); }), 3260);
    EXPECT_EQ(workspace->transactionDepth(), 1); // to be tried again
    EXPECT_FALSE(workspace->isDoomed());
    elsewhere->Rollback();
    workspace->CommitTrans();
    EXPECT_EQ(keys(file), "2,3");
}

TEST(LostFile, NothingIsStoredInADeletedFile) {
    const OpenedDatabase o(threeRows());
    o.workspace->BeginTrans();
    o.database->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
    ASSERT_TRUE(QFile::remove(o.file.path()));
    EXPECT_EQ(errorOf([&] { o.workspace->CommitTrans(); }), 3043);
    o.workspace->Rollback();
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s), 3043);
    EXPECT_EQ(errorOf([&] { o.workspace->BeginTrans(); }), 3043);
    EXPECT_EQ(errorOf([&] { o.open(u"T"_s, dbOpenTable)->Delete(); }), 3043);
    EXPECT_FALSE(QFile::exists(o.file.path()));
}

TEST(LostFile, NothingIsStoredInAFileThatWasReplaced) {
    const OpenedDatabase o(threeRows());
    const TempDatabase other("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT);");
    const QString moved = o.file.path() + u".alt"_s;
    ASSERT_TRUE(QFile::rename(o.file.path(), moved));
    ASSERT_TRUE(QFile::copy(other.path(), o.file.path()));
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s), 3043);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "0");
    ASSERT_TRUE(QFile::remove(o.file.path()));
    ASSERT_TRUE(QFile::rename(moved, o.file.path()));
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T WHERE Nr = 1"_s), 0); // it is back
}

TEST(LostFile, AFolderThatCannotBeWritten) {
    if (geteuid() == 0) GTEST_SKIP() << "this user writes everywhere";
    const TempDatabase file("PRAGMA journal_mode = DELETE;" + threeRows());
    const Ref<Database> database = DBEngine::CreateWorkspace()->OpenDatabase(file.path());
    ASSERT_TRUE(QFile::setPermissions(file.folder(), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_NE(errorOf([&] { database->Execute(u"DELETE FROM T"_s, dbFailOnError); }), 0);
    EXPECT_EQ(database->OpenRecordset(u"T"_s)->RecordCount(), 3);
    QFile::setPermissions(file.folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace dao
