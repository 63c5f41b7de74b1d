#pragma once
// Commands that change a file in steps, each of which must be done as a whole or not at all, whatever fails in between.
#include "dao/Workspace.h"
#include "support/FaultFile.h"

#include <functional>
#include <vector>

namespace mkl {

using Step = std::function<void(dao::Workspace&, dao::Database&)>;

struct StepCase {
    const char* name;
    QByteArray tables; ///< native statements that make the file
    std::vector<Step> steps;
};

/// Runs one case through faults and checks after each:
/// - the file is sound, and can be opened and written again;
/// - it holds what stood there before the failed step or, where the process was killed, after it;
/// - the workspace that saw the failure is doomed (3246) exactly where the engine gave its transaction up, and free of
/// it
///   after as many Rollbacks as there are levels.
class StepRun {
public:
    StepRun(const StepCase& stepCase, JournalMode mode);

    /// Both give the number of points.
    qint64 fileFaults(FileFault fault, PointRange range = {});
    qint64 statementFaults(dao::StatementFault fault, PointRange range = {});

private:
    FaultCommand command(const QByteArray& vfs);
    void runSteps(FaultReport& report, const QByteArray& vfs) const;
    void endTransaction(FaultReport& report, dao::Workspace& workspace, dao::Database& database) const;
    void check(const FaultReport& report) const;
    QByteArray contentAfter(size_t steps) const;

    const StepCase& case_;
    FaultFile file_;
    std::vector<QByteArray> contents_; ///< after 0, 1, 2, … steps
    bool givesUp_ = false;             ///< the fault under way ends the engine's transaction
    bool keepsOn_ = false;             ///< … leaves it as it is
};

/// Native statements for a table T with rows 1 to count and an index, and an empty U with a counter.
QByteArray twoTables(int count);

} // namespace mkl
