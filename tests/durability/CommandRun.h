#pragma once
// Runs one command through faults and checks what is left.
#include "BrowserCommand.h"
#include "support/FaultFile.h"

#include <QSet>

namespace mkl {

/// Checks after each point:
/// - the reports, each once: the procedure, and the number of what the engine was made to say;
/// - the rows, Edited, the list on screen and the open transaction, as the command's table tells them for the procedure
///   that reported;
/// - the file: it opens, is sound, can be written at once, and the check of the catalogue finds nothing new.
class CommandRun {
public:
    CommandRun(const BrowserCommand& command, JournalMode mode);

    /// Of a run without a failure.
    qint64 points() const { return points_; }
    qint64 statements() const { return statements_; }

    /// Both give the number of points that were taken.
    qint64 fileFaults(FileFault fault, PointRange range);
    qint64 statementFaults(dao::StatementFault fault, PointRange range);

private:
    struct Ended;
    enum class Kind : quint8 { None, File, Statement };

    FaultCommand faultCommand(Kind kind, FileFault fileFault, dao::StatementFault statementFault);
    Ended runOnce(FaultReport& report, Kind kind, FileFault fileFault, dao::StatementFault statementFault) const;
    void judge(FaultReport& report, const Ended& ended) const;
    bool isStored(Stored stored, const Ended& ended) const;
    /// What the failed procedure may have left; of one whose rows are stored one by one, any.
    bool isPart(const QByteArray& content, const QString& procedure) const;
    static bool isShown(ListShows list, const Ended& ended);
    void check(const FaultReport& report) const;

    const BrowserCommand& command_;
    FaultFile file_;
    QByteArray before_, after_; ///< all rows
    CatalogueRows rowsBefore_;
    QSet<QString> findings_; ///< before and after
    qint64 points_ = 0, statements_ = 0;
};

} // namespace mkl
