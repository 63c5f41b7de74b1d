#pragma once
// A catalogue from one place to another, also from a file to a server and back.
#include "catalogue/CatalogueImport.h"
#include "dao/Workspace.h"

namespace mkl {

/// Takes all rows of an open catalogue over into a new file or an existing catalogue without rows; it holds everything
/// afterwards or is as before. Keys stay as they are, and the target counts on from them; its replica digit stays its
/// own. Nothing may be open in the workspace. Errors as of importCatalogue().
ImportReport copyCatalogue(dao::Workspace& workspace, dao::Database& source, const QString& target,
                           const ImportOptions& options = {});

} // namespace mkl
