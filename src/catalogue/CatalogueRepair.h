#pragma once
// Mends what CatalogueCheck calls damage.
#include "catalogue/CatalogueCheck.h"
#include "dao/Workspace.h"

#include <QList>

namespace mkl {

struct RepairOptions {
    bool dense = false;                ///< number every level and every category from 1 without gaps
    bool deleteWithoutArticle = false; ///< delete assignments of articles that do not exist
    bool dryRun = false;               ///< work everything out and store nothing
};

/// One row that a repair changed, or would change.
struct RepairChange {
    /// In the order of the steps.
    enum class Kind {
        ParentMissing,    ///< category became a root since its parent does not exist
        RingOpened,       ///< category became a root since it was the smallest key of a ring
        CategoryMissing,  ///< assignment deleted, its category does not exist
        PairDoubled,      ///< assignment deleted, another one of the same article and category stays
        ArticleMissing,   ///< assignment deleted, its article does not exist
        CategoryPosition, ///< category has another position among its siblings
        ArticlePosition,  ///< assignment has another position in its category
    };
    Kind kind = Kind::ParentMissing;
    Long key = 0;           ///< of the category, or ArtKatID
    Variant article;        ///< of an assignment
    Variant owner;          ///< parent of a category or category of an assignment, as they were
    Variant formerPosition; ///< Null where it had none
    Variant position;       ///< Null for a deleted row
};

struct RepairReport {
    QList<RepairChange> changes;
    CatalogueCheck remaining; ///< what a check finds afterwards; of a dry run what one found before
};

/// Mends all damage in one transaction, in this order: 1. a category whose parent does not exist becomes a root, behind
/// the last one; 2. of each ring the category with the smallest key likewise; 3. assignments whose category does not
/// exist are deleted, of several assignments of one article to one category all but the one with the smallest key, and
/// where it is asked for those of missing articles; 4. where positions are doubled or missing, as few rows as possible
/// get another one, without changing their order (by position, time of change, key). Then the catalogue is checked
/// again. Errors: 3027 read-only, 3197 another program changes the same rows, 3049 damage remained; nothing is stored
/// then.
RepairReport repairCatalogue(dao::Workspace& workspace, dao::Database& database, const RepairOptions& options = {});

} // namespace mkl
