#pragma once
#include "dao/Database.h"

#include <QList>

namespace mkl {

/// Figures of a catalogue.
struct CatalogueInfo {
    struct TableRows {
        QString table;
        qint64 rows = 0;
    };
    QString file;
    qint64 fileBytes = 0; ///< 0 on a server
    bool updatable = false;
    Variant replicaDigit; ///< Null where the file holds a number that is none

    QList<TableRows> rows;
    QList<Long> roots; ///< in the order of position
    QList<qint64> categoriesPerLevel;
    qint64 unreachableCategories = 0;
    qint64 leaves = 0;
    qint64 largestSiblingGroup = 0;
    qint64 activeCategories = 0;
    qint64 activeArticles = 0;
    Variant highestCategoryKey; ///< Null without a row, as the two below
    Variant highestArticleKey;
    Variant highestAssignmentKey;

    static CatalogueInfo of(dao::Database& database);
};

} // namespace mkl
