#include "StepCase.h"

#include "support/Printing.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long givenUp = 3246;
constexpr Long noTransaction = 3034;

std::string number(Long error) {
    return std::to_string(error);
}

} // namespace

QByteArray twoTables(int count) {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT, Pos INTEGER); CREATE INDEX Namen ON T (Name);"
           "CREATE TABLE U (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT, Pos INTEGER);"
           "WITH RECURSIVE g(i) AS (VALUES (1) UNION ALL SELECT i+1 FROM g WHERE i<" +
           QByteArray::number(count) +
           ") INSERT INTO T SELECT i, 'Artikel Nummer ' || i || hex(zeroblob(30)), i FROM g;";
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
        const Long error = errorOf([&] { writeProbe(database); });
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
