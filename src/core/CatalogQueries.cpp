#include "core/CatalogQueries.h"

using namespace Qt::StringLiterals;

namespace mkl {

QString CatalogQueries::ArticlesOfCategory() const {
    // Both columns named LetzteÄnderung are output, so that each bears the name of its table.
    return u"SELECT ARTKAT.ArtKatID, ARTKAT.[Order], ARTKAT.[Artikel-Schlüssel], ARTKAT.[Kategorie-Schlüssel], "
           "ARTKAT.LetzteÄnderung, ARTIKEL.Artikelname, ARTIKEL.Aktiv, ARTIKEL.LetzteÄnderung "
           "FROM ARTKAT INNER JOIN ARTIKEL ON ARTKAT.[Artikel-Schlüssel] = ARTIKEL.[Artikel-Schlüssel] "
           "ORDER BY ARTKAT.[Order];"_s;
}

QString CatalogQueries::ArticlePool() const {
    // DISTINCT: an article in two categories is one row all the same.
    return u"SELECT DISTINCT ARTIKEL.[Artikel-Schlüssel], ARTIKEL.Artikelname, ARTIKEL.Aktiv "
           "FROM ARTIKEL LEFT JOIN ARTKAT ON ARTIKEL.[Artikel-Schlüssel] = ARTKAT.[Artikel-Schlüssel] "
           "ORDER BY ARTIKEL.[Artikel-Schlüssel];"_s;
}

QString CatalogQueries::MaxOrderOfCategory() const {
    return u"SELECT Max(ARTKAT.[Order]) AS MaxOrder FROM ARTKAT WHERE ARTKAT.[Kategorie-Schlüssel]=##;"_s;
}

QString CatalogQueries::CategoryList() const {
    return u"SELECT [Kategorie-Schlüssel], [Order], Kategoriename, Aktiv, Parent, [Absender-Schlüssel], "
           "LetzteÄnderung FROM [ARTIKEL/KATEGORIEN] ORDER BY [Order];"_s;
}

const CatalogQueries& catalogQueries() {
    static const CatalogQueries instance;
    return instance;
}

} // namespace mkl
