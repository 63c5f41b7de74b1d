#include "catalogue/CatalogueFile.h"

#include "catalogue/CatalogueSchema.h"
#include "catalogue/Refusal.h"

#include <QFile>
#include <QUuid>

namespace mkl {

using namespace Qt::StringLiterals;

Ref<dao::Database> openCatalogue(dao::Workspace& workspace, const QString& name, const dao::OpenOptions& options) {
    Ref<dao::Database> database = workspace.OpenDatabase(name, options);
    CatalogueSchema::verify(*database);
    return database;
}

bool catalogueExists(const QString& name, const dao::OpenOptions& options) {
    if (!dao::DBEngine::isServer(name)) return QFile::exists(name);
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    return CatalogueSchema::hasTables(*workspace->OpenDatabase(name, options));
}

void createCatalogue(const QString& name, const dao::OpenOptions& options) {
    CatalogueDraft(name, options).publish();
}

/// Where a draft grows.
class CatalogueDraft::Place {
public:
    Place() = default;
    virtual ~Place() = default;
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    virtual Ref<dao::Database> begin(dao::Workspace& workspace) = 0;
    /// What is settled when all is stored.
    virtual void finish(dao::Database& database) = 0;
    /// Gives the closed draft its name.
    virtual void publish() = 0;
    /// Takes away what a closed draft left.
    virtual void remove() = 0;
};

// Nobody else sees a draft, and where it fails it is thrown away: neither a journal nor waiting for the disk is needed.
class CatalogueDraft::FilePlace final : public Place {
public:
    explicit FilePlace(const QString& file)
        : file_(file)
        , draftName_(file + u'.' + QUuid::createUuid().toString(QUuid::Id128).left(12) + u".tmp"_s) {
        if (QFile::exists(file)) throwError(refusal::Exists, {file});
    }

    Ref<dao::Database> begin(dao::Workspace& workspace) override {
        Ref<dao::Database> database = workspace.CreateDatabase(draftName_);
        database->executeNative(u"PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; "
                                "PRAGMA locking_mode = EXCLUSIVE; PRAGMA cache_size = -65536;"_s);
        workspace.BeginTrans();
        return database;
    }

    // Readers must not wait for a writer of another program. The change of mode also carries everything to the disk.
    void finish(dao::Database& database) override {
        database.executeNative(
            u"PRAGMA synchronous = FULL; PRAGMA locking_mode = NORMAL; PRAGMA journal_mode = WAL;"_s);
    }

    void publish() override {
        if (QFile::rename(draftName_, file_)) return;
        remove();
        throwError(refusal::Exists, {file_});
    }

    void remove() override {
        for (const QString& suffix : {u""_s, u"-wal"_s, u"-shm"_s, u"-journal"_s})
            QFile::remove(draftName_ + suffix);
    }

private:
    QString file_;
    QString draftName_;
};

class CatalogueDraft::ServerPlace final : public Place {
public:
    ServerPlace(const QString& url, const dao::OpenOptions& options)
        : url_(url)
        , options_(options) {}

    // The lock of the transaction keeps two drafts of one catalogue apart.
    Ref<dao::Database> begin(dao::Workspace& workspace) override {
        Ref<dao::Database> database = workspace.OpenDatabase(url_, options_);
        workspace.BeginTrans();
        if (!CatalogueSchema::hasTables(*database)) return database;
        workspace.Rollback();
        refuse(refusal::Exists, TextId::CatalogueOnServer, {url_});
    }

    void finish(dao::Database& /*database*/) override {}
    void publish() override {}
    void remove() override {}

private:
    QString url_;
    dao::OpenOptions options_;
};

CatalogueDraft::CatalogueDraft()
    : workspace_(dao::DBEngine::CreateWorkspace()) {}

// What fails here is taken back by the destructor, since the other constructor is through.
CatalogueDraft::CatalogueDraft(const QString& name, const dao::OpenOptions& options)
    : CatalogueDraft() {
    if (dao::DBEngine::isServer(name))
        place_ = std::make_unique<ServerPlace>(name, options);
    else
        place_ = std::make_unique<FilePlace>(name);
    database_ = place_->begin(*workspace_);
    CatalogueSchema::createTables(*database_);
}

CatalogueDraft::~CatalogueDraft() {
    if (!database_) return;
    try {
        if (workspace_->transactionDepth() > 0) workspace_->Rollback();
    } catch (const RunTimeError&) {
        // The draft goes anyway.
    }
    close();
    place_->remove();
}

void CatalogueDraft::publish() {
    CatalogueSchema::createIndexes(*database_);
    workspace_->CommitTrans();
    place_->finish(*database_);
    close();
    place_->publish();
}

void CatalogueDraft::close() {
    database_->Close();
    database_.reset();
    workspace_.reset();
}

} // namespace mkl
