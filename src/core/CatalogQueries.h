#pragma once
#include <QString>

namespace mkl {

/// The texts of the catalogue's standing statements. Those that take criteria have no WHERE of their own and no
/// table aliases, so that criteria can name the tables.
class CatalogQueries {
public:
    /// One row per assignment, joined to its article, by position. Updatable and deletable on ARTKAT;
    /// [Artikel-Schlüssel] and [Aktiv] are output once, so that their bare names are clear in a find.
    QString ArticlesOfCategory() const;
    /// One row per article, ARTKAT left-joined: "(ARTKAT.[Artikel-Schlüssel] Is Null)" finds the unassigned ones.
    QString ArticlePool() const;
    /// The highest position in a category as MaxOrder, Null for an empty one. "##" stands for the category's key.
    QString MaxOrderOfCategory() const;
    /// One row per category, by position. Updatable.
    QString CategoryList() const;
};

/// The one service of the process.
const CatalogQueries& catalogQueries();

} // namespace mkl
