#include "catalogue/CatalogueFile.h"

#include "catalogue/CatalogueSchema.h"
#include "catalogue/Refusal.h"

#include <QFile>
#include <QUuid>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Nobody else sees a draft, and where it fails it is thrown away: neither a journal nor waiting for the disk is needed.
const QString draftSettings = u"PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA locking_mode = EXCLUSIVE;"
                              " PRAGMA cache_size = -65536;"_s;

// Readers must not wait for a writer of another program. The change of mode also carries everything to the disk.
const QString finalSettings = u"PRAGMA synchronous = FULL; PRAGMA locking_mode = NORMAL; PRAGMA journal_mode = WAL;"_s;

} // namespace

Ref<dao::Database> openCatalogue(dao::Workspace& workspace, const QString& file, const dao::OpenOptions& options) {
    Ref<dao::Database> database = workspace.OpenDatabase(file, options);
    CatalogueSchema::verify(*database);
    return database;
}

void createCatalogue(const QString& file) {
    CatalogueDraft(file).publish();
}

CatalogueDraft::CatalogueDraft(const QString& file)
    : file_(file)
    , draftName_(file + u'.' + QUuid::createUuid().toString(QUuid::Id128).left(12) + u".tmp"_s) {
    if (QFile::exists(file)) throwError(refusal::Exists, {file});
    workspace_ = dao::DBEngine::CreateWorkspace();
    database_ = workspace_->CreateDatabase(draftName_);
    database_->executeNative(draftSettings);
    workspace_->BeginTrans();
    CatalogueSchema::createTables(*database_);
}

CatalogueDraft::~CatalogueDraft() {
    if (!database_) return;
    try {
        if (workspace_->transactionDepth() > 0) workspace_->Rollback();
    } catch (const RunTimeError&) {
        // The file goes anyway.
    }
    close();
    removeFiles();
}

void CatalogueDraft::publish() {
    CatalogueSchema::createIndexes(*database_);
    workspace_->CommitTrans();
    database_->executeNative(finalSettings);
    close();
    if (QFile::rename(draftName_, file_)) return;
    removeFiles();
    throwError(refusal::Exists, {file_});
}

void CatalogueDraft::close() {
    database_->Close();
    database_.reset();
    workspace_.reset();
}

void CatalogueDraft::removeFiles() {
    for (const QString& suffix : {u""_s, u"-wal"_s, u"-shm"_s, u"-journal"_s})
        QFile::remove(draftName_ + suffix);
}

} // namespace mkl
