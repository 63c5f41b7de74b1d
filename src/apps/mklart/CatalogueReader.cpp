#include "apps/mklart/CatalogueReader.h"

#include "apps/mklart/ServerAccess.h"
#include "catalogue/CatalogueFile.h"

namespace mkl {

CatalogueReader::CatalogueReader(const QString& file, const dao::OpenOptions& options)
    : workspace_(dao::DBEngine::CreateWorkspace())
    , database_(openCatalogue(*workspace_, file, accessTo(file, options))) {}

} // namespace mkl
