#pragma once
#include "dao/Database.h"

#include <QList>

namespace mkl {

/// Damage that nothing in the database prevents, and the legal gaps in positions.
struct CatalogueCheck {
    /// A position that several rows share: of a group of siblings (owner = parent) or of a category.
    struct DoubledPosition {
        Variant owner;    ///< category key; Null for the roots
        Variant position; ///< Null where several have none
        QList<Long> keys; ///< category keys, or ArtKatID of assignments
    };
    struct DoubledPair {
        Long article = 0;
        Long category = 0;
        QList<Long> keys; ///< ArtKatID
    };
    struct Orphan {
        Long key = 0;    ///< ArtKatID, or the key of the category with the dangling parent
        Variant missing; ///< key of the row that does not exist
    };

    QList<Orphan> danglingParents;
    QList<QList<Long>> rings;         ///< keys along the ring, the smallest first
    qint64 unreachableCategories = 0; ///< in or below rings and dangling parents
    QList<DoubledPosition> siblingPositions;
    QList<DoubledPosition> articlePositions;
    QList<DoubledPair> pairs;
    QList<Orphan> missingCategories; ///< assignments to a category that does not exist
    QList<Orphan> missingArticles;   ///< assignments of an article that does not exist

    // Remarks, no damage: positions that are not 1 to n.
    QList<Variant> siblingGaps; ///< parent keys, Null for the roots
    QList<Long> articleGaps;    ///< category keys

    bool isDamaged() const;

    static CatalogueCheck of(dao::Database& database);
};

} // namespace mkl
