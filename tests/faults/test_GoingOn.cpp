// A procedure that is told of a failed statement, goes on, and commits at its end. What it was told must be true:
// stored is what succeeded in a transaction that could be committed, and nothing else.
#include "StepCase.h"

#include "support/Printing.h"

#include <iostream>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

const QStringList statements = {u"INSERT INTO U (Name, Pos) SELECT Name, Pos FROM T WHERE Nr<15"_s,
                                u"UPDATE T SET Pos=Pos-14, Name=Name & 'y'"_s, u"DELETE FROM T WHERE Nr<15"_s};
constexpr int allStatements = 7;

class GoingOn {
public:
    explicit GoingOn(JournalMode mode)
        : file_(twoTables(30), mode) {
        for (int succeeding = 0; succeeding <= allStatements; ++succeeding)
            contents_.push_back(contentAfter(succeeding));
    }

    FaultCommand command(const QByteArray& vfs) {
        return {[this] { file_.restore(); }, [this, vfs](FaultReport& report) { run(report, vfs, allStatements); },
                [this](const FaultReport& report) { check(report); }};
    }

private:
    /// Tries some of the statements, one bit each; the report tells which of them are stored, by what it was told.
    void run(FaultReport& report, const QByteArray& vfs, int tried) const {
        const auto workspace = dao::DBEngine::CreateWorkspace();
        const auto database = workspace->OpenDatabase(file_.path(), {.busyTimeoutMilliseconds = 0, .vfs = vfs});
        database->executeNative(u"PRAGMA cache_size=4"_s);
        workspace->BeginTrans();
        int succeeded = 0;
        for (int i = 0; i < statements.size(); ++i) {
            if (!(tried >> i & 1)) continue;
            if (errorOf([&] { database->Execute(statements[i], dao::dbFailOnError); }) == 0) succeeded |= 1 << i;
        }
        if (errorOf([&] { workspace->CommitTrans(); }) == 0) report.stepsDone = succeeded;
        if (workspace->transactionDepth() > 0) workspace->Rollback();
        if (workspace->transactionDepth() > 0) report.complain("a level is left");
    }

    QByteArray contentAfter(int succeeding) const {
        file_.restore();
        FaultReport report;
        run(report, {}, succeeding);
        EXPECT_EQ(report.stepsDone, succeeding);
        return file_.content();
    }

    void check(const FaultReport& report) const {
        const QByteArray content = file_.content();
        const bool wasTold = content == contents_[static_cast<size_t>(report.stepsDone)];
        EXPECT_TRUE(wasTold || (report.killed && content == contents_[allStatements]))
            << "point " << report.point << ", told " << report.stepsDone << "\n"
            << content.left(2000).toStdString();
        file_.expectSound();
    }

    FaultFile file_;
    std::vector<QByteArray> contents_; ///< by the bits of the statements that succeeded
};

} // namespace

TEST(GoingOn, StoredIsWhatTheCallerWasTold) {
    qint64 points = 0;
    for (const JournalMode mode : journalModes) {
        GoingOn goingOn(mode);
        int number = 0;
        for (const FileFault fault : fileFaults)
            points += runFileFaults(fault, goingOn.command(FaultVfs::name), rangeFor(number++));
        for (const dao::StatementFault fault : statementFaults)
            points += runStatementFaults(fault, goingOn.command({}));
    }
    std::cout << "Points: " << points << '\n';
    EXPECT_GE(points, 200);
}
