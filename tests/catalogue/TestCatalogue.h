#pragma once
// A catalogue of its own, open, with native statements for what no program would write.
#include "catalogue/CatalogueFile.h"
#include "support/PreparedDatabases.h"
#include "support/TempDatabase.h"

namespace mkl {

class TestCatalogue {
public:
    explicit TestCatalogue(const QString& native = {})
        : workspace_(dao::DBEngine::CreateWorkspace()) {
        createCatalogue(path());
        database_ = openCatalogue(*workspace_, path());
        if (!native.isEmpty()) run(native);
    }

    QString path() const { return place_.path(); }
    /// Runs statements in the language of files, as nativeText() gives them to the engine.
    void run(const QString& native) const { database_->executeNative(nativeText(native)); }
    dao::Database& database() const { return *database_; }
    dao::Workspace& workspace() const { return *workspace_; }

    /// One category: key, parent ("NULL" for a root) and position.
    void addCategory(int key, const char* parent, int order) {
        run(QStringLiteral("INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", "
                           "\"Kategoriename\", \"Parent\", \"Order\", \"Aktiv\") "
                           "VALUES (%1, 'K%1', %2, %3, -1);")
                .arg(key)
                .arg(QLatin1String(parent))
                .arg(order));
    }
    void addArticle(int key) {
        run(QStringLiteral("INSERT INTO ARTIKEL (\"Artikel-Schlüssel\", \"Artikelname\", \"Aktiv\") "
                           "VALUES (%1, 'A%1', -1);")
                .arg(key));
    }
    void assign(int id, int article, int category, int order) {
        run(QStringLiteral("INSERT INTO ARTKAT (ArtKatID, \"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", \"Order\") "
                           "VALUES (%1, %2, %3, %4);")
                .arg(id)
                .arg(article)
                .arg(category)
                .arg(order));
    }

private:
    TempDatabase place_;
    Ref<dao::Workspace> workspace_;
    Ref<dao::Database> database_;
};

} // namespace mkl
