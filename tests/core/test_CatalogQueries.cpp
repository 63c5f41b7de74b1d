// The standing statements, run against a catalogue.
#include "core/CatalogQueries.h"

#include "core/Catalogue.h"
#include "core/SqlTools.h"
#include "support/Printing.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace mkl;
using testing::ElementsAre;

namespace {

class CatalogQueriesTest : public testing::Test {
protected:
    Ref<dao::Recordset> open(const QString& statement, const QString& criteria = {}) {
        return catalogue.database->OpenRecordset(SqlTools().InsertCriteria(statement, criteria), dao::dbOpenSnapshot);
    }
    QList<Variant> column(const QString& statement, const QString& criteria = {}) {
        return catalogue.column(SqlTools().InsertCriteria(statement, criteria));
    }
    QStringList missing(dao::Recordset& rows, const QStringList& columns) {
        QStringList absent;
        for (const QString& name : columns)
            if (rows.ordinal(name) < 0) absent.append(name);
        return absent;
    }

    Catalogue catalogue;
    const CatalogQueries& queries = catalogQueries();
};

} // namespace

TEST_F(CatalogQueriesTest, ArticlesOfCategoryComeByPosition) {
    const QString ofCategory1 = u"[ARTKAT].[Kategorie-Schlüssel]=1"_s;
    EXPECT_THAT(column(queries.ArticlesOfCategory(), ofCategory1), ElementsAre(Variant(2), Variant(1)));
    const auto rows = open(queries.ArticlesOfCategory(), ofCategory1);
    EXPECT_THAT(missing(*rows.get(), {u"ArtKatID"_s, u"Order"_s, u"Artikel-Schlüssel"_s, u"Artikelname"_s, u"Aktiv"_s,
                                      u"ARTKAT.LetzteÄnderung"_s}),
                testing::IsEmpty());
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Artikelname"), Variant(u"Bolzen"_s));
    EXPECT_EQ(rows->value(u"Aktiv"), Variant(true));
    EXPECT_EQ(rows->value(u"ARTKAT.LetzteÄnderung").type(), Variant::Type::Date);
}

TEST_F(CatalogQueriesTest, ArticlePoolHasEachArticleOnce) {
    EXPECT_THAT(column(queries.ArticlePool()), ElementsAre(Variant(10), Variant(11), Variant(12), Variant(13)));
    const auto rows = open(queries.ArticlePool(), u"(ARTKAT.[Artikel-Schlüssel] Is Null) AND "
                                                  "(ARTIKEL.[Absender-Schlüssel] Like '*') AND [Aktiv]=-1"_s);
    ASSERT_FALSE(rows->Eof());
    EXPECT_EQ(rows->value(u"Artikel-Schlüssel"), Variant(13));
    EXPECT_THAT(missing(*rows.get(), {u"Artikelname"_s, u"Aktiv"_s}), testing::IsEmpty());
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
}

TEST_F(CatalogQueriesTest, MaxOrderOfCategoryIsNullForAnEmptyOne) {
    const auto maxOrder = [&](const QString& key) {
        QString statement = queries.MaxOrderOfCategory();
        return open(statement.replace(u"##"_s, key))->value(u"MaxOrder");
    };
    EXPECT_EQ(maxOrder(u"2"_s), Variant(2));
    EXPECT_EQ(maxOrder(u"3"_s), Variant());
}

TEST_F(CatalogQueriesTest, CategoryListComesByPosition) {
    const QString roots = u"[Parent] Is Null"_s;
    EXPECT_THAT(column(queries.CategoryList(), roots), ElementsAre(Variant(3), Variant(1)));
    EXPECT_THAT(column(queries.CategoryList(), roots + u" AND [ARTIKEL/KATEGORIEN].[Absender-Schlüssel] IN(3)"_s),
                ElementsAre(Variant(1)));
    EXPECT_THAT(column(queries.CategoryList(), roots + u" AND [ARTIKEL/KATEGORIEN].[Absender-Schlüssel] Like '*'"_s),
                ElementsAre(Variant(3), Variant(1)));
    EXPECT_THAT(missing(*open(queries.CategoryList()).get(), {u"Kategorie-Schlüssel"_s, u"Order"_s, u"Kategoriename"_s,
                                                              u"Aktiv"_s, u"Parent"_s, u"LetzteÄnderung"_s}),
                testing::IsEmpty());
}
