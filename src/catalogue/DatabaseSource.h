#pragma once
#include "catalogue/RowSource.h"
#include "dao/Workspace.h"

namespace mkl {

/// An open catalogue as a source of rows, keys included, as it is at one moment: others who want to write into a file
/// wait until all is read; on a server they write on, unseen, and only commands of this program wait where the database
/// was not opened for reading only.
class DatabaseSource final : public RowSource {
public:
    /// No transaction may be open in the workspace.
    DatabaseSource(dao::Workspace& workspace, dao::Database& database);

    void readInto(RowSink& sink) override;

private:
    void readTable(int table, const QString& name, RowSink& sink) const;

    dao::Workspace& workspace_;
    dao::Database& database_;
};

} // namespace mkl
