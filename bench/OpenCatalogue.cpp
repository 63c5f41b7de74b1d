#include "bench/OpenCatalogue.h"

#include "catalogue/CatalogueFile.h"
#include "tests/support/PostgresServer.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

QString newDatabase() {
    mkl::PostgresServer::preparation() = [](const QString& url) {
        dao::DBEngine::CreateWorkspace()->OpenDatabase(url);
    };
    return mkl::PostgresServer::instance().takeDatabase();
}

} // namespace

OpenCatalogue::OpenCatalogue(Engine engine)
    : engine_(engine)
    , name_(engine == Engine::Server ? newDatabase() : folder_.filePath(u"catalogue.sqlite"_s)) {
    mkl::createCatalogue(name_);
    database = mkl::openCatalogue(*workspace, name_);
    raw = rawClient(engine, name_);
}

OpenCatalogue::~OpenCatalogue() {
    if (engine_ == Engine::File) return;
    database->Close();
    raw.reset();
    mkl::PostgresServer::instance().returnDatabase(name_);
}

QString OpenCatalogue::missing(Engine engine) {
    const bool isThere = engine == Engine::File || QFile::exists(u"/usr/lib/postgresql/15/bin/postgres"_s);
    return isThere ? QString() : u"no PostgreSQL server is installed"_s;
}

void OpenCatalogue::settle() const {
    if (engine_ == Engine::Server) raw->exec(u"VACUUM ANALYZE"_s);
}

} // namespace bench
