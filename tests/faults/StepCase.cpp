#include "StepCase.h"

#include "support/Printing.h"

#include <QFile>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long givenUp = 3246;
constexpr Long noTransaction = 3034;

QByteArray pragmas(JournalMode mode) {
    return QByteArray("PRAGMA page_size=512; PRAGMA journal_mode=") +
           (mode == JournalMode::WriteAhead ? "WAL;" : "DELETE;");
}

// A table that no step touches, for trying whether the workspace can write.
const QByteArray probe = "CREATE TABLE Probe (Nr INTEGER PRIMARY KEY); INSERT INTO Probe VALUES (1);";

void tryWrite(dao::Database& database) {
    database.Execute(u"UPDATE Probe SET Nr=2"_s, dao::dbFailOnError);
}

std::string number(Long error) {
    return std::to_string(error);
}

} // namespace

PointRange rangeFor(int fault) {
    static const bool full = qEnvironmentVariableIsSet("MKL_FULL");
    return full ? PointRange() : PointRange{1 + fault % 4, 4};
}

QByteArray twoTables(int count) {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT, Pos INTEGER); CREATE INDEX Namen ON T (Name);"
           "CREATE TABLE U (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT, Pos INTEGER);"
           "WITH RECURSIVE g(i) AS (VALUES (1) UNION ALL SELECT i+1 FROM g WHERE i<" +
           QByteArray::number(count) +
           ") INSERT INTO T SELECT i, 'Artikel Nummer ' || i || hex(zeroblob(30)), i FROM g;";
}

FaultFile::FaultFile(const QByteArray& tables, JournalMode mode)
    : file_(pragmas(mode) + tables + probe)
    , before_(file_.bytes()) {
    FaultVfs::installAsDefault(); // for the sake of speed: nothing here waits for the disk
}

void FaultFile::restore() const {
    for (const QString& suffix : {u"-journal"_s, u"-wal"_s, u"-shm"_s})
        QFile::remove(path() + suffix);
    file_.overwrite(before_);
}

QByteArray FaultFile::content() const {
    QByteArray content;
    const QByteArray names = file_.one("SELECT group_concat(name, '|') FROM (SELECT name FROM sqlite_master "
                                       "WHERE type='table' AND name NOT LIKE 'sqlite%' ORDER BY name)");
    for (const QByteArray& table : names.split('|')) {
        const QByteArray columns = file_.one("SELECT group_concat('quote(\"' || name || '\")', '||'',''||') "
                                             "FROM pragma_table_info('" +
                                             table + "')");
        content += table + ": " +
                   file_.one("SELECT group_concat(r, ' ') FROM (SELECT " + columns + " AS r FROM \"" + table +
                             "\" ORDER BY rowid)") +
                   '\n';
    }
    return content;
}

void FaultFile::expectSound() const {
    EXPECT_EQ(file_.one("PRAGMA integrity_check"), "ok");
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(path(), {.busyTimeoutMilliseconds = 0});
    tryWrite(*database);
    EXPECT_EQ(file_.one("SELECT Nr FROM Probe"), "2");
}

StepRun::StepRun(const StepCase& stepCase, JournalMode mode)
    : case_(stepCase)
    , file_(stepCase.tables, mode) {
    for (size_t steps = 0; steps <= case_.steps.size(); ++steps)
        contents_.push_back(contentAfter(steps));
    for (size_t i = 1; i < contents_.size(); ++i)
        EXPECT_NE(contents_[i], contents_[i - 1]) << case_.name << ": a step that changes nothing";
}

QByteArray StepRun::contentAfter(size_t steps) const {
    file_.restore();
    {
        const auto workspace = dao::DBEngine::CreateWorkspace();
        const auto database = workspace->OpenDatabase(file_.path());
        for (size_t i = 0; i < steps; ++i)
            case_.steps[i](*workspace, *database);
        EXPECT_EQ(workspace->transactionDepth(), 0);
    }
    return file_.content();
}

qint64 StepRun::fileFaults(FileFault fault, PointRange range) {
    givesUp_ = keepsOn_ = false; // the engine decides
    return runFileFaults(fault, command(FaultVfs::name), range);
}

qint64 StepRun::statementFaults(dao::StatementFault fault, PointRange range) {
    givesUp_ = fault == dao::StatementFault::DiskFull || fault == dao::StatementFault::LostConnection;
    keepsOn_ = fault == dao::StatementFault::Busy || fault == dao::StatementFault::Constraint;
    return runStatementFaults(fault, command({}), range);
}

FaultCommand StepRun::command(const QByteArray& vfs) {
    FaultCommand result;
    result.prepare = [this] { file_.restore(); };
    result.run = [this, vfs](FaultReport& report) { runSteps(report, vfs); };
    result.check = [this](const FaultReport& report) { check(report); };
    return result;
}

void StepRun::runSteps(FaultReport& report, const QByteArray& vfs) const {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(file_.path(), {.busyTimeoutMilliseconds = 0, .vfs = vfs});
    database->executeNative(u"PRAGMA cache_size=4"_s); // so that pages are written before the end of a transaction
    try {
        for (const Step& step : case_.steps) {
            step(*workspace, *database);
            ++report.stepsDone;
        }
    } catch (const RunTimeError&) {
        endTransaction(report, *workspace, *database);
        throw;
    }
}

void StepRun::endTransaction(FaultReport& report, dao::Workspace& workspace, dao::Database& database) const {
    report.fired = report.fired || dao::FaultPoints::hasFired();
    dao::FaultPoints::disarm();
    const int depth = workspace.transactionDepth();
    if (depth > 0) {
        const Long error = errorOf([&] { tryWrite(database); });
        if (error != 0 && error != givenUp) report.complain("writing after the failure: " + number(error));
        if (givesUp_ && error == 0) report.complain("written though the transaction was given up");
        if (keepsOn_ && error != 0) report.complain("doomed though the engine kept its transaction");
        const Long commitError = error == 0 ? 0 : errorOf([&] { workspace.CommitTrans(); });
        if (error != 0 && commitError != givenUp) report.complain("commit when doomed: " + number(commitError));
    }
    if (workspace.transactionDepth() != depth) report.complain("the depth changed by itself");
    for (int level = 0; level < depth; ++level)
        if (const Long error = errorOf([&] { workspace.Rollback(); })) report.complain("rollback: " + number(error));
    const Long surplus = errorOf([&] { workspace.Rollback(); });
    if (surplus != noTransaction) report.complain("one rollback too many: " + number(surplus));
}

void StepRun::check(const FaultReport& report) const {
    const testing::Message where = testing::Message() << case_.name << ", point " << report.point << ", error "
                                                      << report.error << ", steps " << report.stepsDone;
    const QByteArray content = file_.content();
    const auto done = static_cast<size_t>(report.stepsDone);
    const bool wholeSteps =
        content == contents_[done] || (report.killed && done + 1 < contents_.size() && content == contents_[done + 1]);
    EXPECT_TRUE(wholeSteps) << where << "\n" << content.left(2000).toStdString();
    EXPECT_TRUE(report.fired || report.error == 0) << where;
    EXPECT_TRUE(report.killed || report.error != 0 || done == case_.steps.size()) << where;
    const testing::ScopedTrace trace(__FILE__, __LINE__, where);
    file_.expectSound();
}

} // namespace mkl
