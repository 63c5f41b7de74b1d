#pragma once
#include "bench/RawDatabase.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/DemoCatalogue.h"
#include "dao/Workspace.h"

#include <QTemporaryDir>

namespace bench {

inline constexpr int Articles = 1'000'000;

/// A demo catalogue with a million articles or as many as told, open twice: through the data layer and raw.
class Pool {
public:
    explicit Pool(int articles = Articles) {
        mkl::DemoCatalogue demo;
        demo.articles = articles;
        demo.categories = 10;
        demo.create(file());
        database = mkl::openCatalogue(*workspace_, file());
        raw = std::make_unique<RawDatabase>(file());
    }

    mkl::Ref<dao::Recordset> open() const {
        return database->OpenRecordset(
            QStringLiteral("SELECT * FROM ARTIKEL WHERE [Absender-Schlüssel] Like '*' ORDER BY [Artikel-Schlüssel]"),
            dao::dbOpenSnapshot);
    }

    mkl::Ref<dao::Database> database;
    std::unique_ptr<RawDatabase> raw;

    const mkl::Ref<dao::Workspace>& workspace() const { return workspace_; }
    QString file() const { return folder_.filePath(QStringLiteral("pool.sqlite")); }

private:
    QTemporaryDir folder_;
    mkl::Ref<dao::Workspace> workspace_ = dao::DBEngine::CreateWorkspace();
};

} // namespace bench
