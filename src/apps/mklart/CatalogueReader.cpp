#include "apps/mklart/CatalogueReader.h"

#include "catalogue/CatalogueFile.h"

namespace mkl {

CatalogueReader::CatalogueReader(const QString& file)
    : workspace_(dao::DBEngine::CreateWorkspace())
    , database_(openCatalogue(*workspace_, file)) {}

} // namespace mkl
