// Two programs on one file: what they leave is what one of them after the other would have left.
#include "TwoPrograms.h"

#include "support/Printing.h"

#include <QElapsedTimer>
#include <iostream>

using namespace mkl;

namespace {

struct Sum {
    qint64 pairs = 0, waiting = 0, givingUp = 0;
};

/// The commands with each other at these distances in the table; 0 is one command in both programs.
QList<qsizetype> distances() {
    return isFullRun() ? QList<qsizetype>{0, 1, 3} : QList<qsizetype>{1};
}

void runBoth(const BrowserCommand& first, const BrowserCommand& second, Sum& sum) {
    constexpr int switches = 2;
    constexpr qint64 few = 20;
    const PointRange range{.step = isFullRun() ? 1 : few};
    TwoPrograms programs(first, second, journalModes[sum.pairs++ % std::ssize(journalModes)]);
    const qint64 waiting = programs.waiting(switches, range);
    const qint64 givingUp = programs.givingUp(range);
    if (isFullRun()) std::cout << first.name << " and " << second.name << ": " << waiting << ", " << givingUp << '\n';
    sum.waiting += waiting;
    sum.givingUp += givingUp;
}

} // namespace

TEST(TwoPrograms, EveryOrderEqualsASerialRun) {
    Sum sum;
    QElapsedTimer time;
    time.start();
    const QList<BrowserCommand> commands = browserCommands(4);
    for (const qsizetype distance : distances())
        for (qsizetype i = 0; i < commands.size(); ++i)
            runBoth(commands[i], commands[(i + distance) % commands.size()], sum);
    std::cout << sum.pairs << " pairs of commands, " << sum.waiting << " orders, " << sum.givingUp
              << " more in which whoever would wait gives up, " << time.elapsed() << " ms\n";
    if (isFullRun()) {
        EXPECT_GE(sum.waiting + sum.givingUp, 500);
    }
}
