#pragma once
// Files for commands that are made to fail, and which of their points a test takes.
#include "dao/Database.h"
#include "support/FaultRun.h"
#include "support/TempDatabase.h"

namespace mkl {

enum class JournalMode : quint8 { Rollback, WriteAhead };

constexpr JournalMode journalModes[] = {JournalMode::Rollback, JournalMode::WriteAhead};
constexpr FileFault fileFaults[] = {FileFault::Kill, FileFault::TornWrite, FileFault::IoError, FileFault::DiskFull};
constexpr dao::StatementFault statementFaults[] = {dao::StatementFault::Constraint, dao::StatementFault::Busy,
                                                   dao::StatementFault::DiskFull, dao::StatementFault::Interrupt,
                                                   dao::StatementFault::LostConnection};

/// Whether MKL_FULL is set: every point and every round of the long tests.
bool isFullRun();
/// Every point of a full run; else one of step, for each fault beginning at another one.
PointRange rangeFor(qint64 fault, qint64 step = 4);

/// A file of small pages, so that little data makes many points, with a table Probe that no command touches.
class FaultFile {
public:
    FaultFile(const QByteArray& tables, JournalMode mode);
    struct CopyOf {
        QString file;
    };
    FaultFile(const CopyOf& original, JournalMode mode);

    QString path() const { return file_.path(); }
    /// The state that it was made in.
    void restore() const;
    /// All rows of all tables, as native literals.
    QByteArray content() const;
    /// Fails the test unless the file is sound and can be written at once.
    void expectSound() const;

private:
    void keep();

    TempDatabase file_;
    QByteArray before_;
};

/// Changes the table Probe.
void writeProbe(dao::Database& database);

} // namespace mkl
