#include "apps/artikelkatalog/CatalogueSession.h"

#include "catalogue/CatalogueFile.h"

namespace mkl {

CatalogueSession::CatalogueSession()
    : workspace_(dao::DBEngine::CreateWorkspace()) {}

void CatalogueSession::open(const QString& name, const dao::OpenOptions& options) {
    const Ref<dao::Database> opened = openCatalogue(*workspace_, name, options);
    close();
    database_ = opened;
}

void CatalogueSession::close() {
    if (database_) database_->Close();
    database_.reset();
}

} // namespace mkl
