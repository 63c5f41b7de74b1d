#include "support/FaultRun.h"

#include "base/RunTimeError.h"
#include "support/SharedMemory.h"

#include <cstring>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace mkl {

namespace {

void runAndNote(const FaultCommand& command, FaultReport& report) {
    try {
        command.run(report);
    } catch (const RunTimeError& error) {
        report.error = error.number();
    }
}

[[noreturn]] void runInChild(FileFault fault, const FaultCommand& command, FaultReport& report) {
    FaultVfs::install();
    FaultVfs::arm(fault, report.point);
    try {
        runAndNote(command, report);
        report.fired = report.fired || FaultVfs::hasFired();
    } catch (const std::exception& error) {
        report.complain(error.what());
    }
    _exit(0); // nothing of the test's own process may run at the end of its copy
}

void runChild(FileFault fault, const FaultCommand& command, FaultReport& report) {
    const pid_t child = fork();
    if (child == 0) runInChild(fault, command, report);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) throw std::runtime_error("no child process");
    report.killed = WIFSIGNALED(status);
    report.fired = report.fired || report.killed;
    const bool mayBeKilled = fault == FileFault::Kill || fault == FileFault::TornWrite;
    const bool endedWell = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    const bool killedByFault = mayBeKilled && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    EXPECT_TRUE(endedWell || killedByFault) << "wait status " << status;
}

template<class RunPoint>
qint64 forEachPoint(const FaultCommand& command, PointRange range, RunPoint&& runPoint) {
    qint64 points = 0;
    for (qint64 point = range.first;; point += range.step) {
        command.prepare();
        const SharedMemory<FaultReport> report;
        report->point = point;
        runPoint(*report);
        EXPECT_STREQ(report->complaint, "") << "at point " << point;
        command.check(*report);
        if (!report->fired || testing::Test::HasFatalFailure()) return points;
        ++points;
    }
}

} // namespace

void FaultReport::complain(const std::string& text) {
    if (complaint[0] == '\0') std::strncpy(complaint, text.c_str(), sizeof complaint - 1);
}

qint32 errorNumber(dao::StatementFault fault) {
    switch (fault) {
    case dao::StatementFault::Constraint: return 3022;
    case dao::StatementFault::Busy: return 3260;
    case dao::StatementFault::DiskFull: return 3026;
    case dao::StatementFault::Interrupt: return 3059;
    case dao::StatementFault::LostConnection: return 3043;
    }
    return 0;
}

qint64 runFileFaults(FileFault fault, const FaultCommand& command, PointRange range) {
    return forEachPoint(command, range, [&](FaultReport& report) { runChild(fault, command, report); });
}

qint64 runStatementFaults(dao::StatementFault fault, const FaultCommand& command, PointRange range) {
    return forEachPoint(command, range, [&](FaultReport& report) {
        dao::FaultPoints::arm(fault, report.point);
        runAndNote(command, report);
        report.fired = report.fired || dao::FaultPoints::hasFired();
        dao::FaultPoints::disarm();
    });
}

} // namespace mkl
