#pragma once
#include "dao/Workspace.h"

#include <QString>

namespace mkl {

/// The one catalogue that the program has open, and the workspace of its transactions.
class CatalogueSession {
public:
    CatalogueSession();

    /// Opens the catalogue, a file or one on a server, in place of the former one, which stays open when the new one
    /// cannot be opened. Errors of openCatalogue().
    void open(const QString& name, const dao::OpenOptions& options = {});
    void close();

    /// Empty while nothing is open.
    const Ref<dao::Database>& database() const { return database_; }
    const Ref<dao::Workspace>& workspace() const { return workspace_; }

private:
    Ref<dao::Workspace> workspace_;
    Ref<dao::Database> database_;
};

} // namespace mkl
