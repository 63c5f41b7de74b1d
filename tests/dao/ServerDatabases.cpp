// Which tests run on a server, and what a database there gets before a test makes its tables.
#include "support/LeftOutTests.h"
#include "support/PreparedDatabases.h"

namespace dao {

namespace {

constexpr mkl::LeftOut leftToFiles[] = {
    {"Authorizer.*", "what statements may do in a file; a server has rights of its own"},
    {"ChangedByOthers.*", "a server tells it a moment later; see PostgresNotices"},
    {"ChangedByOthersInAFile.*", "locks, journals and damage of a file"},
    {"CreateDatabase.*", "files are made; databases of a server are made by its owner"},
    {"SqliteSchema.*", "reads the tables of a file"},
    {"OpenDatabase.*", "files that are missing, damaged, of another program or read-only"},
    {"LostFile.*", "files that vanish while they are open"},
    {"Triggers.*", "triggers written in the words of a file"},
    {"DynasetEdit.BothTablesOfAJoinOrNeither", "the failure comes from a trigger written in the words of a file"},
    {"SearchCopy.WhatADeletionTakesAlongIsSeen", "the deletion comes from a trigger written in the words of a file"},
    {"DynasetPlan.*", "compares the native texts for a file"},
    {"ExclusivePeriod.*", "only a file can be locked against all others"},
    {"SearchCopy.ManySearchesReadTheRowsOnce", "only a file can be locked against all others"},
    {"Locks.A*", "a single action meets the locks of rows alone; see PostgresLock"},
    {"Locks.TheErrorSaysWhatToDo", "a single action meets the locks of rows alone; see PostgresLock"},
    {"Transaction.ALockOfAnotherProgramShowsAtTheBegin", "a single action meets the locks of rows alone"},
    {"Workspace.TheBusyTimeoutCanBeChanged", "a single action meets the locks of rows alone"},
    {"LargeSnapshot.LeavesNoReadLockBehind", "a file is locked as a whole, a server locks rows"},
    {"LocalNumber.OthersSeeItAtOnceOrWithTheCommit", "needs a file whose readers do not wait"},
    {"FindInATable.*", "counts the steps of the engine for files"},
    {"Limits.WhatIsTooLargeIsAnError", "limits of the engine for files"},
    {"Execute.ATableThatKeepsHalfAStatementIsUndoneToo", "conflict clauses exist in files alone"},
    {"Execute.AConflictClauseOfTheFileBreaksNoTransaction", "conflict clauses exist in files alone"},
    {"LocalNumber.IsNotSetInADoomedTransaction", "conflict clauses exist in files alone"},
    {"DoomedTransaction.*", "the limits by which a file fails in the middle; see PostgresConnection"},
    {"Workspace.DoomedUntilRollback", "the limits by which a file fails in the middle; see PostgresConnection"},
    {"EngineErrors.DamageThatShowsLater", "writes into the file"},
    {"Database.ARecordsetOutlivesTheVariableOfItsDatabase", "the database of the test is gone with its variable"},
    {"PlanCache.ARowTooManyIsNotReadTwice", "an index changes no statement on a server"},
    {"LargeSnapshot.ARowThatAnotherProgramDeletedBeforeItWasReadIsDeleted", "a server sends all rows at the opening"},
    {"LargeSnapshot.AnErrorOfARowNeededLater", "a server sends all rows at the opening"},
    {"Seek.FindsItsWayInMixedAndBrokenValues", "a column of a server holds values of its type alone"},
    {"Values.WholeNumbersOfForeignFilesAreNeverWrapped", "a column of a server holds values of its type alone"},
    {"Values.AFileInUtf16ReadsLikeAnyOther", "a server sends UTF-8 whatever it stores"},
    {"Values.BrokenTexts", "a server stores no broken texts"},
    {"TableEditing.ATableWithoutAnyKey", "expects the order in which a file keeps rows"},
    {"TextOrder.AnIndexInThisOrderServesTheStatements", "names the order of texts as files do"},
};

constexpr mkl::LeftOut leftToServers[] = {
    {"Postgres*.*", "about a server"},
    {"ReadAhead.*", "about a server"},
};

const bool leftOut = mkl::leaveToFiles(leftToFiles) || mkl::leaveToServers(leftToServers);

} // namespace

} // namespace dao
