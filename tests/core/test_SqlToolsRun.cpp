// What the statement tools make, run against a catalogue: a filter narrows the rows or fails, and never does more.
#include "core/SqlTools.h"

#include "core/CatalogQueries.h"
#include "core/Catalogue.h"
#include "jet/Compiler.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <random>

using namespace Qt::StringLiterals;
using namespace mkl;
using testing::ElementsAre;

namespace {

constexpr QStringView roots = u"[Parent] Is Null";

const QStringList hostileCriteria = {
    u"1=1) OR (1=1"_s,
    u"1=1; DELETE FROM ARTIKEL"_s,
    u"1=1); DELETE FROM ARTIKEL"_s,
    u"1=1 UNION SELECT * FROM ARTIKEL"_s,
    u"1=1) UNION SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE (1=1"_s,
    u"1=1 ORDER BY [Order]"_s,
    u"[Kategoriename]='x"_s,
    u"[Kategoriename]=\"x"_s,
    u"[Kategoriename"_s,
    u"[Kategoriename]='O'Neill'"_s,
    u"1=1 --"_s,
    u"1=1 /* x */"_s,
    u"[Absender-Schlüssel] #WGFILTER#"_s,
    u"("_s,
    u")"_s,
    u"="_s,
};

// Criteria put together at random from pieces that mean something to the dialect.
class RandomCriteria {
public:
    QString next() {
        static const QStringList pieces = {
            u"1=1"_s,
            u"[Order]"_s,
            u"("_s,
            u")"_s,
            u"'"_s,
            u"\""_s,
            u"["_s,
            u"]"_s,
            u"#"_s,
            u","_s,
            u";"_s,
            u"="_s,
            u" OR "_s,
            u" AND "_s,
            u" NOT "_s,
            u" True "_s,
            u"''"_s,
            u" WHERE "_s,
            u" ORDER BY [Order]"_s,
            u" UNION SELECT * FROM [ARTIKEL/KATEGORIEN]"_s,
            u" "_s,
            u"IN(1)"_s,
            u"a"_s,
        };
        QString criteria;
        for (auto count = 1 + random_() % 7; count > 0; --count)
            criteria += pieces[static_cast<qsizetype>(random_() % static_cast<size_t>(pieces.size()))];
        return criteria;
    }

private:
    std::mt19937 random_{1};
};

class SqlToolsRun : public testing::Test {
protected:
    QList<Variant> filteredRoots(const QString& criteria) {
        const QString filtered = tools.InsertCriteria(catalogQueries().CategoryList(), roots.toString());
        return catalogue.column(tools.InsertCriteria(filtered, criteria));
    }
    QList<Variant> selected(const QString& criteria, const QString& orderBy = u"Order"_s) {
        return catalogue.column(tools.BuildSelect(u"ARTIKEL/KATEGORIEN"_s, criteria, orderBy));
    }
    QByteArray rowCount() const {
        return catalogue.file.one("SELECT (SELECT Count(*) FROM ARTIKEL) || (SELECT Count(*) FROM ARTKAT) || "
                                  "(SELECT Count(*) FROM \"ARTIKEL/KATEGORIEN\")");
    }

    SqlTools tools;
    Catalogue catalogue;
};

} // namespace

TEST_F(SqlToolsRun, AChangedFilterReplacesTheFormerOne) {
    QString statement = catalogQueries().CategoryList();
    for (int round = 0; round < 100; ++round) {
        statement = tools.InsertCriteria(statement, u"[Kategoriename]='a OR b ) WHERE'"_s);
        EXPECT_TRUE(catalogue.column(statement).isEmpty());
        statement = tools.InsertCriteria(statement, u"[Parent]=1 OR [Parent]=2"_s);
        EXPECT_THAT(catalogue.column(statement), ElementsAre(Variant(2)));
    }
}

TEST_F(SqlToolsRun, AnOrCannotLeaveItsParentheses) {
    const QString own = u"SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent] Is Null OR [Parent]=1;"_s;
    EXPECT_THAT(catalogue.column(tools.InsertCriteria(own, u"[Aktiv]=0 OR [Kategoriename]='Muttern'"_s)),
                testing::UnorderedElementsAre(Variant(2), Variant(3)));
}

TEST_F(SqlToolsRun, HostileFiltersAreErrorsAndChangeNothing) {
    const QByteArray before = rowCount();
    for (const QString& criteria : hostileCriteria) {
        EXPECT_NE(errorOf([&] { filteredRoots(criteria); }), 0) << criteria.toStdString();
        EXPECT_NE(errorOf([&] { selected(criteria); }), 0) << criteria.toStdString();
        EXPECT_NE(errorOf([&] { selected(criteria, {}); }), 0) << criteria.toStdString();
    }
    EXPECT_EQ(rowCount(), before);
}

TEST_F(SqlToolsRun, AnUnknownColumnIsAMissingParameter) {
    EXPECT_EQ(errorOf([&] { filteredRoots(u"[Farbe]=1"_s); }), 3061);
    EXPECT_EQ(errorOf([&] { selected(u"[Farbe]=1"_s); }), 3061);
}

TEST_F(SqlToolsRun, BuildSelectSelectsAndSorts) {
    EXPECT_EQ(selected({}).size(), 3);
    EXPECT_THAT(selected(u"[Parent] Is Null"_s), ElementsAre(Variant(3), Variant(1)));
    EXPECT_THAT(selected({}, u"Aktiv DESC, Kategoriename"_s), ElementsAre(Variant(3), Variant(2), Variant(1)));
    EXPECT_THAT(selected({}, u"Kategorie-Schlüssel DESC"_s), ElementsAre(Variant(3), Variant(2), Variant(1)));
    EXPECT_EQ(catalogue.column(tools.BuildSelect(u"ARTIKEL"_s, u"[Artikelname] Like 'ö*'"_s, {}, true)).size(), 1);
}

TEST_F(SqlToolsRun, AnOrderMayChangeAndAnEmptyOneFails) {
    QString statement = tools.BuildSelect(u"ARTIKEL"_s, u"[Aktiv]=-1"_s, u"Artikelname"_s);
    EXPECT_THAT(catalogue.column(statement), ElementsAre(Variant(11), Variant(10), Variant(13)));
    statement = tools.InsertOrderBy(statement, u"ORDER BY "_s);
    EXPECT_EQ(errorOf([&] { catalogue.column(statement); }), 3138);
    statement = tools.InsertOrderBy(statement, u"ORDER BY [Artikel-Schlüssel]"_s);
    EXPECT_THAT(catalogue.column(statement), ElementsAre(Variant(10), Variant(11), Variant(13)));
}

TEST_F(SqlToolsRun, AnExternalStatementIsOrderedToo) {
    const QString external = u"SELECT [Artikel-Schlüssel], Artikelname FROM ARTIKEL WHERE [Aktiv]=-1 "
                             "ORDER BY [Artikel-Schlüssel];"_s;
    EXPECT_THAT(catalogue.column(tools.InsertOrderBy(external, u"ORDER BY [Artikelname]"_s)),
                ElementsAre(Variant(11), Variant(10), Variant(13)));
}

TEST_F(SqlToolsRun, NoCriteriaBreakOutOfTheirPlace) {
    const QString noRows = u"SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent]=-1 ORDER BY [Order];"_s;
    RandomCriteria random;
    int accepted = 0;
    for (int round = 0; round < 3000; ++round) {
        const QString criteria = random.next();
        const bool isExpression = errorOf([&] { jet::checkCriterion(criteria); }) == 0;
        QList<Variant> rows;
        const Long error = errorOf([&] { rows = catalogue.column(tools.InsertCriteria(noRows, criteria)); });
        EXPECT_TRUE(rows.isEmpty()) << criteria.toStdString();
        EXPECT_TRUE(isExpression || error != 0) << criteria.toStdString();
        EXPECT_TRUE(isExpression || errorOf([&] { selected(criteria); }) != 0) << criteria.toStdString();
        if (error != 0) continue;
        const QString once = tools.InsertCriteria(noRows, criteria);
        EXPECT_EQ(tools.InsertCriteria(once, criteria), once);
        ++accepted;
    }
    EXPECT_GT(accepted, 50);
}
