// A command while another program holds the file: it waits as long as the busy timeout, then it says so.
#include "TwoPrograms.h"
#include "controls/ListView.h"
#include "support/CatalogueFixture.h"
#include "support/Printing.h"

#include <QElapsedTimer>

using namespace mkl;

namespace {

constexpr int timeout = 40; // milliseconds

/// All commands of the table that store something.
QList<BrowserCommand> storingCommands() {
    QList<BrowserCommand> commands = browserCommands(4);
    commands.removeIf([](const BrowserCommand& command) { return !command.changes; });
    return commands;
}

} // namespace

TEST(LockWait, ACommandWaitsThenReports) {
    for (const JournalMode mode : journalModes)
        for (const BrowserCommand& command : storingCommands()) {
            const testing::ScopedTrace trace(__FILE__, __LINE__, command.name);
            const FaultFile file(FaultFile::CopyOf{CatalogueFixture(command.picture).file()}, mode);
            const QByteArray before = file.content();
            ScriptedWorld world;
            CommandHost host(world, file.path(), {.busyTimeoutMilliseconds = timeout});
            command.screen(host);
            const QStringList list = host.listRows();
            const auto other = dao::DBEngine::CreateWorkspace();
            const auto database = other->OpenDatabase(file.path());
            other->BeginTrans();
            writeProbe(*database);

            QElapsedTimer time;
            time.start();
            command.run(host);
            EXPECT_GE(time.elapsed(), timeout);
            ASSERT_EQ(host.reports().size(), 1);
            EXPECT_EQ(host.reports().first().number, 3260);
            EXPECT_TRUE(command.failures.contains(host.reports().first().procName));
            EXPECT_FALSE(host.browser().Edited());
            EXPECT_EQ(host.listRows(), list);
            EXPECT_EQ(host.workspace().transactionDepth(), 0);
            other->Rollback();
            EXPECT_EQ(file.content(), before);
        }
}

TEST(LockWait, ACommandThatWaitsGoesOnWhenTheLockIsGone) {
    const QList<BrowserCommand> commands = storingCommands();
    for (qsizetype i = 0; i < commands.size(); ++i) {
        // One that stores every row by itself lets the lock go in between, and then it would wait for the second one.
        if (!commands[i].oneTransaction) continue;
        TwoPrograms(commands[i], commands[(i + 1) % commands.size()], journalModes[i % 2]).expectRealWait();
    }
}
