// What a command of the browser leaves when the process, a write or a statement fails in the middle of it.
#include "CommandRun.h"

#include "support/Printing.h"

#include <QElapsedTimer>
#include <dirent.h>
#include <iostream>

using namespace mkl;

namespace {

struct Sum {
    qint64 points = 0;
    qint64 statements = 0;
};

Sum runAll(const BrowserCommand& command, int& number) {
    Sum sum;
    for (const JournalMode mode : journalModes) {
        CommandRun run(command, mode);
        for (const FileFault fault : fileFaults)
            sum.points += run.fileFaults(fault, rangeFor(number++, 8));
        // The journal is nothing to a statement that does not get so far.
        if (mode == JournalMode::Rollback)
            for (const dao::StatementFault fault : statementFaults)
                sum.statements += run.statementFaults(fault, rangeFor(number++, 8));
    }
    return sum;
}

int threads() {
    int count = 0;
    DIR* tasks = opendir("/proc/self/task");
    while (tasks && readdir(tasks))
        ++count;
    if (tasks) closedir(tasks);
    return count - 2; // without . and ..
}

} // namespace

// What a child process has of its parent is sound only if nothing else ran there.
TEST(Durability, TheProcessThatForksHasOneThread) {
    ScriptedWorld world;
    const FaultFile file("CREATE TABLE T (Nr INTEGER);", JournalMode::Rollback);
    const CommandHost host(world, file.path(), {});
    EXPECT_EQ(threads(), 1);
}

TEST(Durability, EveryPointLeavesWhatTheCommandTells) {
    Sum sum;
    int number = 0;
    QElapsedTimer all;
    all.start();
    for (const BrowserCommand& command : browserCommands()) {
        QElapsedTimer time;
        time.start();
        const Sum own = runAll(command, number);
        std::cout << command.name << ": " << own.points << " points of files, " << own.statements
                  << " failing statements, " << time.elapsed() << " ms\n";
        sum.points += own.points;
        sum.statements += own.statements;
    }
    std::cout << "All: " << sum.points << " points of files, " << sum.statements << " failing statements, "
              << all.elapsed() << " ms\n";
}
