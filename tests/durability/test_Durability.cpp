// What a command of the browser leaves when the process, a write or a statement fails in the middle of it.
#include "CommandRun.h"

#include "support/PostgresServer.h"
#include "support/Printing.h"

#include <QElapsedTimer>
#include <dirent.h>
#include <iostream>

using namespace mkl;

namespace {

constexpr int articles = 30;

/// Of one command or all: what was taken, and what there is.
struct Sum {
    qint64 points = 0, statements = 0;
    qint64 allPoints = 0, allStatements = 0;

    void operator+=(const Sum& other) {
        points += other.points;
        statements += other.statements;
        allPoints += other.allPoints;
        allStatements += other.allStatements;
    }
};

std::ostream& operator<<(std::ostream& out, const Sum& sum) {
    return out << sum.points << " of " << sum.allPoints << " points of files, " << sum.statements << " of about "
               << sum.allStatements << " failing statements";
}

/// A full run takes every point; else one of each fault, at another place of each command.
PointRange rangeOf(qint64 points, qint64& number) {
    return rangeFor(number++ * 5, std::max<qint64>(1, points));
}

Sum runAll(const BrowserCommand& command, qint64& number) {
    Sum sum;
    for (const JournalMode mode : journalModes) {
        if (testsOnServer() && mode == JournalMode::WriteAhead) continue;
        CommandRun run(command, mode);
        if (!testsOnServer()) sum.allPoints += run.points() * std::ssize(fileFaults);
        for (const FileFault fault : fileFaults)
            if (!testsOnServer()) sum.points += run.fileFaults(fault, rangeOf(run.points(), number));
        if (mode == JournalMode::WriteAhead) continue; // a statement that is not run knows no journal
        sum.allStatements += run.statements() * std::ssize(statementFaults);
        for (const dao::StatementFault fault : statementFaults)
            sum.statements += run.statementFaults(fault, rangeOf(run.statements(), number));
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

std::string testName(const testing::TestParamInfo<BrowserCommand>& command) {
    return QString::fromUtf8(command.param.name).replace(u' ', u'_').toStdString();
}

class DurabilityOf : public testing::TestWithParam<BrowserCommand> {
protected:
    static void TearDownTestSuite() {
        std::cout << "All commands: " << all << '\n';
        if (ran != browserCommands(articles).size()) return;
        EXPECT_GE(all.allPoints, testsOnServer() ? 0 : 5000);
        EXPECT_GE(all.allStatements, 1500);
    }

    static inline Sum all;
    static inline qint64 ran = 0;
    static inline qint64 number = 0;
};

TEST_P(DurabilityOf, EveryPointLeavesWhatTheCommandTells) {
    QElapsedTimer time;
    time.start();
    const Sum sum = runAll(GetParam(), number);
    std::cout << GetParam().name << ": " << sum << ", " << time.elapsed() << " ms\n";
    all += sum;
    ++ran;
}

INSTANTIATE_TEST_SUITE_P(Commands, DurabilityOf, testing::ValuesIn(browserCommands(articles)), testName);
