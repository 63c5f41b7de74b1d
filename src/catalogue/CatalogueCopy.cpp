#include "catalogue/CatalogueCopy.h"

#include "catalogue/DatabaseSource.h"

namespace mkl {

ImportReport copyCatalogue(dao::Workspace& workspace, dao::Database& source, const QString& target,
                           const ImportOptions& options) {
    DatabaseSource rows(workspace, source);
    return storeRows(rows, target, options);
}

} // namespace mkl
