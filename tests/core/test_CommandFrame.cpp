// Commands with a transaction: report, rollback, what follows, and a transaction left open.
#include "core/ErrorFrame.h"

#include "dao/WorkspaceNotifier.h"
#include "support/Printing.h"
#include "support/RecordingErrorHandler.h"
#include "support/TempDatabase.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace mkl;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CommandFrame : public testing::Test {
protected:
    CommandFrame() {
        handler->ErrorContext().fill({}, ErrorContext::ControlMode, currentError(), u"Control"_s);
        QObject::connect(&workspace->notifier(), &dao::WorkspaceNotifier::transactionLeftOpen, &workspace->notifier(),
                         [this](int depth) { leftOpen.append(depth); });
    }

    void insert(int nr) const { database->Execute(u"INSERT INTO T (Nr) VALUES (%1)"_s.arg(nr), dao::dbFailOnError); }
    QByteArray stored() const { return file.one("SELECT ifnull(group_concat(Nr), '') FROM T"); }

    TempDatabase file{"CREATE TABLE T (Nr INTEGER PRIMARY KEY);"};
    Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    Ref<dao::Database> database = workspace->OpenDatabase(file.path());
    Ref<RecordingErrorHandler> handler = makeRef<RecordingErrorHandler>();
    ErrorFrame frame{handler};
    TransMark mark{workspace};
    QList<int> leftOpen;
};

} // namespace

TEST_F(CommandFrame, ACommandThatSucceeds) {
    bool hasFollowed = false;
    frame.command(
        u"NewCategory"_s, mark,
        [&] {
            mark.begin();
            insert(1);
            mark.commit();
        },
        [&] { hasFollowed = true; });
    EXPECT_THAT(handler->reports, IsEmpty());
    EXPECT_FALSE(hasFollowed);
    EXPECT_EQ(stored(), "1");
    EXPECT_THAT(leftOpen, IsEmpty());
}

TEST_F(CommandFrame, AFailureIsReportedThenRolledBackThenPutRight) {
    QStringList order;
    frame.command(
        u"NewCategory"_s, mark,
        [&] {
            mark.begin();
            insert(1);
            insert(1);
        },
        [&] {
            order.append(
                u"after %1 reports at depth %2"_s.arg(handler->reports.size()).arg(workspace->transactionDepth()));
        });
    EXPECT_THAT(handler->reports, ElementsAre(ErrorReport{0, 3022, {}, u"NewCategory"_s}));
    EXPECT_THAT(order, ElementsAre(u"after 1 reports at depth 0"_s));
    EXPECT_EQ(stored(), "");
    EXPECT_THAT(leftOpen, IsEmpty());
    EXPECT_FALSE(mark.isOpen());
}

TEST_F(CommandFrame, AFailureBeforeTheBeginRollsNothingBack) {
    workspace->BeginTrans();
    insert(7);
    frame.command(u"NewCategory"_s, mark, [] { throwError(3021); });
    EXPECT_EQ(workspace->transactionDepth(), 1);
    EXPECT_THAT(leftOpen, IsEmpty()); // it was open before
    workspace->CommitTrans();
    EXPECT_EQ(stored(), "7");
}

TEST_F(CommandFrame, ATransactionLeftOpenIsTold) {
    frame.command(u"Renumber"_s, mark, [&] { mark.begin(); });
    EXPECT_THAT(leftOpen, ElementsAre(1));
    TransMark second(workspace);
    frame.command(u"Renumber"_s, second, [&] {
        second.begin();
        insert(1);
        second.commit();
    });
    EXPECT_THAT(leftOpen, ElementsAre(1)); // the second one leaves what it found
    EXPECT_EQ(stored(), "");               // and all that it stored hangs on the first
    workspace->CommitTrans();
    EXPECT_EQ(stored(), "1");
}

TEST_F(CommandFrame, OfCommandsWithinCommandsTheOutermostCounts) {
    frame.command(u"Outer"_s, mark, [&] {
        TransMark inner(workspace);
        frame.command(u"Inner"_s, inner, [&] { inner.begin(); });
        EXPECT_THAT(leftOpen, IsEmpty());
    });
    EXPECT_THAT(leftOpen, ElementsAre(1));
    frame.command(u"Outer"_s, mark, [&] {
        TransMark inner(workspace);
        frame.command(u"Inner"_s, inner, [&] { inner.begin(); });
        workspace->Rollback();
    });
    EXPECT_THAT(leftOpen, ElementsAre(1));
    workspace->Rollback();
}

TEST_F(CommandFrame, AFailedCommitKeepsTheMark) {
    frame.command(u"Move"_s, mark, [&] {
        mark.begin();
        insert(1);
        workspace->Rollback(); // somebody took the level away
        mark.commit();
    });
    EXPECT_THAT(handler->reports, ElementsAre(ErrorReport{0, 3034, {}, u"Move"_s}));
    EXPECT_EQ(workspace->transactionDepth(), 0);
}
