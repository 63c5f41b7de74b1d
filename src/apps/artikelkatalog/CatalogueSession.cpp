#include "apps/artikelkatalog/CatalogueSession.h"

#include "catalogue/CatalogueFile.h"

namespace mkl {

CatalogueSession::CatalogueSession()
    : workspace_(dao::DBEngine::CreateWorkspace()) {}

void CatalogueSession::open(const QString& file) {
    const Ref<dao::Database> opened = openCatalogue(*workspace_, file);
    close();
    database_ = opened;
}

void CatalogueSession::close() {
    if (database_) database_->Close();
    database_.reset();
}

} // namespace mkl
