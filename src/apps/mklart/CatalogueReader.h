#pragma once
#include "dao/Workspace.h"

namespace mkl {

/// The catalogue of one command.
class CatalogueReader {
public:
    explicit CatalogueReader(const QString& file, const dao::OpenOptions& options = {});

    dao::Workspace& workspace() { return *workspace_; }
    dao::Database& database() { return *database_; }

private:
    Ref<dao::Workspace> workspace_;
    Ref<dao::Database> database_;
};

} // namespace mkl
