#pragma once
// Runs a command once for every point at which it can be made to fail, until it comes through without reaching one:
//
//   FaultCommand command;
//   command.prepare = [&] { file.overwrite(before); };
//   command.run = [&](FaultReport& report) { /* open with OpenOptions{.vfs = FaultVfs::name}, do it, ++report.stepsDone
//   */ }; command.check = [&](const FaultReport& report) { EXPECT_... }; const qint64 points =
//   runFileFaults(FileFault::Kill, command);
#include "dao/FaultPoints.h"
#include "support/FaultVfs.h"

#include <functional>
#include <string>

namespace mkl {

/// How the command ended with one point failing. It comes through memory shared with the process that ran it.
struct FaultReport {
    qint64 point = 0;   ///< from 1
    bool fired = false; ///< false in the last run, which passed all points; a command that disarms them notes it itself
    bool killed = false;
    qint32 error = 0;         ///< number of the run-time error that the command raised
    qint32 stepsDone = 0;     ///< counted by the command, for commands of several parts
    char complaint[500] = {}; ///< what the command itself found wrong; empty if nothing

    void complain(const std::string& text);
};

struct FaultCommand {
    std::function<void()> prepare;                 ///< puts the file back as it was before
    std::function<void(FaultReport&)> run;         ///< may raise RunTimeError
    std::function<void(const FaultReport&)> check; ///< with the points disarmed, in the test's own process
};

/// The number that a statement's failure has above the data layer.
qint32 errorNumber(dao::StatementFault fault);

/// Which points are taken: all, or every so many-th from the first on.
struct PointRange {
    qint64 first = 1;
    qint64 step = 1;
};

/// Fails the k-th call that changes a file, for k = 1, 2, …, in a child process each, and gives the number of points.
/// A child that ends in another way than by its fault fails the test.
qint64 runFileFaults(FileFault fault, const FaultCommand& command, PointRange range = {});

/// The same for the k-th statement, in this process.
qint64 runStatementFaults(dao::StatementFault fault, const FaultCommand& command, PointRange range = {});

} // namespace mkl
