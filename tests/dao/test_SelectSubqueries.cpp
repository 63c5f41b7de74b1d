// Queries inside of expressions, and derived tables.
#include "dao/PlanCache.h"
#include "dao/SelectTables.h"

namespace dao {

TEST(SelectSubqueries, OneValue) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT Nr, (SELECT Text FROM G WHERE GNr=T.Gruppe) AS g FROM T ORDER BY Nr"_s),
              u"1 a|2 a|3 b|4 b|5 Null");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Preis=(SELECT Max(Preis) FROM T)"_s), u"5");
    EXPECT_EQ(o.rows(u"SELECT a.Nr FROM T AS a WHERE a.Nr=(SELECT Max(b.Nr) FROM T AS b WHERE b.Gruppe=a.Gruppe) "
                     "ORDER BY a.Nr"_s),
              u"2|4");
    EXPECT_EQ(o.rows(u"SELECT (SELECT Count(*) FROM G) + 1"_s), u"4");
    EXPECT_EQ(o.one(u"SELECT (SELECT Dat FROM T WHERE Nr=1)"_s).type(), Variant::Type::Date);
    EXPECT_EQ(o.one(u"SELECT (SELECT Aktiv FROM T WHERE Nr=1)"_s), Variant(true));
}

TEST(SelectSubqueries, OneRowAndOneColumn) {
    const SelectTables o;
    EXPECT_EQ(o.errorOfQuery(u"SELECT (SELECT Nr FROM T) FROM G"_s), 3354);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE Nr=(SELECT GNr FROM G WHERE GNr>1)"_s), 3354);
    EXPECT_EQ(o.rows(u"SELECT (SELECT GNr FROM G WHERE GNr>2)"_s), u"3");
    EXPECT_EQ(o.rows(u"SELECT (SELECT GNr FROM G WHERE GNr>3)"_s), u"Null");
    EXPECT_EQ(o.rows(u"SELECT (SELECT TOP 1 GNr FROM G ORDER BY GNr DESC)"_s), u"3");
    EXPECT_EQ(o.errorOfQuery(u"SELECT (SELECT GNr, Text FROM G)"_s), 3306);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE Nr IN (SELECT * FROM G)"_s), 3306);
    EXPECT_EQ(o.rows(u"SELECT 1 WHERE EXISTS (SELECT * FROM G)"_s), u"1");
}

TEST(SelectSubqueries, In) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT Name FROM T WHERE Nr IN (SELECT GNr FROM G WHERE GNr>1) ORDER BY Nr"_s), u"ZWEI|drei");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Name IN (SELECT 'zwei' FROM G) ORDER BY Nr"_s), u"2|4");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr NOT IN (SELECT Gruppe FROM T WHERE Not Gruppe Is Null) ORDER BY Nr"_s),
              u"3|4|5");
    // A Null among the rows leaves open whether the value is there.
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr NOT IN (SELECT Gruppe FROM T)"_s), u"");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Gruppe IN (SELECT GNr FROM G) ORDER BY Nr"_s), u"1|2|3|4");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Right(Nr,1) IN (SELECT GNr FROM G) ORDER BY Nr"_s), u"1|2|3");
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE Name IN (SELECT GNr FROM G)"_s), 3464);
}

TEST(SelectSubqueries, AnyAndAll) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr > ALL (SELECT GNr FROM G) ORDER BY Nr"_s), u"4|5");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr > ANY (SELECT GNr FROM G) ORDER BY Nr"_s), u"2|3|4|5");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr = SOME (SELECT GNr FROM G) ORDER BY Nr"_s), u"1|2|3");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr <> ALL (SELECT GNr FROM G) ORDER BY Nr"_s), u"4|5");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr > ALL (SELECT GNr FROM G WHERE GNr>9) ORDER BY Nr"_s), u"1|2|3|4|5");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr > ANY (SELECT GNr FROM G WHERE GNr>9)"_s), u"");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Not Nr > ALL (SELECT Gruppe FROM T) ORDER BY Nr"_s), u"1|2");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Name >= ALL (SELECT Name FROM T WHERE Not Name Is Null) ORDER BY Nr"_s),
              u"2|4");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Right(Nr,1) > ALL (SELECT GNr FROM G) ORDER BY Nr"_s), u"4|5");
}

TEST(SelectSubqueries, SeeTheStatementAroundThem) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE EXISTS (SELECT * FROM G WHERE GNr=Nr And Text='b')"_s), u"2");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE NOT EXISTS (SELECT * FROM G WHERE GNr=T.Nr) ORDER BY Nr"_s), u"4|5");
    EXPECT_EQ(o.rows(u"SELECT Text FROM G WHERE EXISTS (SELECT 1 FROM T WHERE Gruppe=GNr And EXISTS (SELECT 1 FROM F "
                     "WHERE x=GNr And x=Gruppe)) ORDER BY Text"_s),
              u"a|b");
    // The nearest table wins.
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE EXISTS (SELECT 1 FROM T WHERE Nr=5) And Nr<2"_s), u"1");
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE EXISTS (SELECT 1 FROM G WHERE Nirgends=1)"_s), 3061);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE EXISTS (SELECT 1 FROM G) And GNr=1"_s), 3061);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE EXISTS (SELECT 1 FROM Weg)"_s), 3078);
}

TEST(SelectSubqueries, AggregatesAndGroups) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT Gruppe, (SELECT Count(*) FROM G WHERE GNr<=T.Gruppe) FROM T GROUP BY Gruppe ORDER BY "
                     "Gruppe"_s),
              u"Null 0|1 1|2 2");
    EXPECT_EQ(o.errorOfQuery(u"SELECT Gruppe, (SELECT Count(*) FROM G WHERE GNr<=T.Nr) FROM T GROUP BY Gruppe"_s),
              3122);
    EXPECT_EQ(o.rows(u"SELECT Text FROM G WHERE 2=(SELECT Count(*) FROM T GROUP BY Gruppe HAVING Gruppe=GNr) ORDER BY "
                     "Text"_s),
              u"a|b");
    // An aggregate belongs to the query that it stands in, whatever its columns are.
    EXPECT_EQ(o.rows(u"SELECT Nr, (SELECT Max(T.Nr) FROM G), (SELECT Count(T.Name) FROM G) FROM T ORDER BY Nr"_s),
              u"1 1 3|2 2 3|3 3 3|4 4 3|5 5 0");
    EXPECT_EQ(o.rows(u"SELECT Nr, (SELECT Sum(T.Nr)) FROM T WHERE Nr<3 ORDER BY Nr"_s), u"1 1|2 2");
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T WHERE Max(Nr)=1"_s), 3096);
}

TEST(SelectSubqueries, LiteralsAreLifted) {
    const SelectTables o;
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr IN (SELECT GNr FROM G WHERE GNr=%1)"_s.arg(i)),
                  QString::number(i));
    EXPECT_EQ(o.database->planCache().compilations(), 1);
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr IN (SELECT TOP 1 GNr FROM G ORDER BY GNr) ORDER BY Nr"_s), u"1");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr IN (SELECT TOP 2 GNr FROM G ORDER BY GNr) ORDER BY Nr"_s), u"1|2");
}

TEST(SelectDerived, Tables) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT x.n*2 AS d FROM (SELECT Nr AS n FROM T WHERE Nr<3) AS x ORDER BY x.n DESC"_s), u"4|2");
    EXPECT_EQ(o.rows(u"SELECT x.n FROM [SELECT Nr AS n FROM T WHERE Name='eins']. AS x"_s), u"1");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM (SELECT Nr FROM T WHERE Nr>4)"_s), u"5");
    EXPECT_EQ(o.rows(u"SELECT G.Text, x.n FROM G LEFT JOIN (SELECT Gruppe, Count(*) AS n FROM T GROUP BY Gruppe) AS x "
                     "ON G.GNr=x.Gruppe ORDER BY 1"_s),
              u"a 2|b 2|c Null");
    EXPECT_EQ(o.rows(u"SELECT * FROM (SELECT * FROM G UNION ALL SELECT * FROM G) AS x, F WHERE x.GNr=F.x And y='q'"_s),
              u"2 b 2 q|2 b 2 q");
    EXPECT_EQ(o.rows(u"SELECT z.m FROM (SELECT Max(y.n) AS m FROM (SELECT Nr AS n FROM T) AS y) AS z"_s), u"5");
    EXPECT_EQ(o.rows(u"SELECT First(n) FROM (SELECT Nr AS n FROM T WHERE Nr=3) AS x"_s), u"3");
    EXPECT_EQ(o.errorOfQuery(u"SELECT x.rowid FROM (SELECT Nr FROM T) AS x"_s), 3061);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Name FROM (SELECT Nr FROM T) AS x"_s), 3061);
    EXPECT_EQ(o.errorOfQuery(u"SELECT 1 FROM (SELECT Nr FROM T) AS x, G AS x"_s), 3081);
}

TEST(SelectDerived, RepeatedNames) {
    const SelectTables o;
    const auto rows = o.open(u"SELECT * FROM (SELECT a.Nr, b.Nr FROM T AS a, T AS b WHERE a.Nr=b.Nr-1) AS x "
                             "WHERE x.[a.Nr]=2"_s);
    EXPECT_EQ(rows->value(u"a.Nr"_s), Variant(2));
    EXPECT_EQ(rows->value(u"b.Nr"_s), Variant(3));
}

TEST(SelectDerived, InActions) {
    const SelectTables o;
    o.database->Execute(
        u"INSERT INTO G (GNr, Text) SELECT x.n, 'neu' FROM (SELECT Nr+10 AS n FROM T WHERE Nr<3) AS x"_s,
        dbFailOnError);
    EXPECT_EQ(o.rows(u"SELECT GNr FROM G WHERE Text='neu' ORDER BY GNr"_s), u"11|12");
    o.database->Execute(
        u"INSERT INTO G (GNr, Text) SELECT Nr+20, Name FROM T WHERE Nr=1 UNION SELECT Nr+20, 'x' FROM T "
        "WHERE Nr=2"_s,
        dbFailOnError);
    EXPECT_EQ(o.rows(u"SELECT * FROM G WHERE GNr>20 ORDER BY GNr"_s), u"21 eins|22 x");
    o.database->Execute(u"DELETE FROM G WHERE GNr NOT IN (SELECT Nr FROM T)"_s, dbFailOnError);
    EXPECT_EQ(o.rows(u"SELECT GNr FROM G ORDER BY GNr"_s), u"1|2|3");
    o.database->Execute(u"UPDATE T SET Name='leer' WHERE NOT EXISTS (SELECT 1 FROM G WHERE GNr=T.Nr)"_s, dbFailOnError);
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Name='leer' ORDER BY Nr"_s), u"4|5");
    EXPECT_EQ(o.errorOfExecute(u"UPDATE (SELECT Nr, Name FROM T) AS x SET Name='a'"_s), 3073);
}

TEST(SelectSubqueries, DepthHasALimit) {
    const SelectTables o;
    const auto nested = [](int depth) {
        QString text = u"SELECT 1 FROM G"_s;
        for (int i = 0; i < depth; ++i)
            text = u"SELECT GNr FROM G WHERE GNr IN (%1)"_s.arg(text);
        return text;
    };
    EXPECT_EQ(o.rows(nested(3)), u"1");
    for (const int depth : {50, 300, 600}) {
        EXPECT_EQ(o.errorOfQuery(nested(depth)), 3360) << depth;
        EXPECT_EQ(
            o.errorOfQuery(u"SELECT * FROM "_s + u"(SELECT * FROM "_s.repeated(depth) + u'G' + u")"_s.repeated(depth)),
            3360)
            << depth;
    }
    QStringList items, terms;
    for (int i = 0; i < 10'000; ++i)
        items.append(QString::number(i));
    for (int i = 0; i < 5'000; ++i)
        terms.append(u"Nr=%1"_s.arg(i));
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr IN (%1) ORDER BY Nr"_s.arg(items.join(u','))), u"1|2|3|4|5");
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE %1 ORDER BY Nr"_s.arg(terms.join(u" Or "_s))), u"1|2|3|4|5");
}

} // namespace dao
