#pragma once
// A catalogue of its own file, drawn as a text picture:
//
//     41 Schrauben: 1 A, 2 B
//         42 Holzschrauben {inaktiv}
//     50 Werkzeug {Absender 7}
//
// A line is a category's key and name, behind a colon the keys and names of its articles in their positions. A line
// further in than the one above it is its child. Positions count from 1 within a level; markers in braces change
// a category: "inaktiv", "Absender N", "Position N".
#include "dao/Workspace.h"
#include "support/PreparedDatabases.h"
#include "support/TempDatabase.h"

#include <QSet>

namespace mkl {

struct CategoryRow {
    Variant key = {};
    Variant name = {};
    Variant parent = {}; ///< Null for a root
    Variant order = 1;
    Variant active = true;
    Variant sender = 1;
};

class CatalogueFixture {
public:
    explicit CatalogueFixture(const QString& picture = {});

    const Ref<dao::Workspace>& workspace() const { return workspace_; }
    const Ref<dao::Database>& database() const { return database_; }

    QString file() const { return file_.path(); }

    void addCategory(const CategoryRow& row) const;
    void addArticle(Long key, const QString& name) const;
    void addSender(Long key) const;
    void assign(Long article, Long category, Long position) const;

    /// Lets the table of categories hold what no undamaged one does: keys twice, or without a value.
    void allowBadKeys() const;
    /// Runs statements in the language of files, as nativeText() gives them to the engine.
    void run(const QString& nativeSql) const { database_->executeNative(nativeText(nativeSql)); }
    /// A chain of categories, each the child of the one before it; keys from 1.
    void addChain(Long length) const;

private:
    struct DrawnCategory;
    static DrawnCategory drawnCategory(const QString& line);
    void draw(const QString& picture) const;
    void addArticlesOf(const DrawnCategory& category, QSet<Long>& known) const;

    TempDatabase file_;
    Ref<dao::Workspace> workspace_;
    Ref<dao::Database> database_;
};

} // namespace mkl
