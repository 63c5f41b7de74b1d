// UNION, TOP and DISTINCTROW, and values whose types no column tells.
#include "dao/SelectTables.h"

namespace dao {

TEST(SelectUnion, RepeatsAreRemovedByOurOrder) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT Name FROM T UNION SELECT 'EINS' FROM G ORDER BY Name"_s).toLower(),
              u"null|drei|eins|zwei");
    EXPECT_EQ(o.rows(u"SELECT Text FROM G UNION ALL SELECT Text FROM G ORDER BY Text"_s), u"a|a|b|b|c|c");
    EXPECT_EQ(o.open(u"SELECT Nr FROM T UNION SELECT GNr FROM G"_s)->Fields(0).Name(), u"Nr");
    EXPECT_EQ(o.rows(u"SELECT 1 UNION ALL SELECT 1 UNION SELECT 2 UNION ALL SELECT 2 ORDER BY 1"_s), u"1|2|2");
}

TEST(SelectUnion, OrderAtTheEnd) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT Nr, Name FROM T WHERE Nr<3 UNION ALL SELECT GNr, Text FROM G ORDER BY 1 DESC, 2"_s),
              u"3 c|2 b|2 ZWEI|1 a|1 eins");
    EXPECT_EQ(o.rows(u"SELECT Nr AS k FROM T WHERE Nr<3 UNION SELECT 9 ORDER BY k DESC"_s), u"9|2|1");
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T UNION SELECT GNr FROM G ORDER BY GNr"_s), 3351);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T UNION SELECT GNr FROM G ORDER BY Nr+1"_s), 3351);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T UNION SELECT GNr FROM G ORDER BY 2"_s), 3138);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T ORDER BY Nr UNION SELECT 1"_s), 3319);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T UNION"_s), 3319);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM T UNION SELECT Nr, Name FROM T"_s), 3307);
}

TEST(SelectUnion, TypesMeet) {
    const SelectTables o;
    const auto types = [&](const QString& sql) {
        QStringList result;
        for (const auto rows = o.open(sql); !rows->Eof(); rows->MoveNext())
            result.append(QString::number(int(rows->value(0).type())));
        result.removeDuplicates();
        return result;
    };
    const auto type = [](Variant::Type t) { return QStringList{QString::number(int(t))}; };
    EXPECT_EQ(types(u"SELECT Nr FROM T UNION SELECT 1.5"_s), type(Variant::Type::Double));
    EXPECT_EQ(types(u"SELECT Nr FROM T UNION SELECT Preis FROM T WHERE Nr=1"_s), type(Variant::Type::Currency));
    EXPECT_EQ(types(u"SELECT Dat FROM T WHERE Nr=1 UNION SELECT Nr FROM T"_s), type(Variant::Type::Text));
    EXPECT_EQ(o.rows(u"SELECT Nr FROM T WHERE Nr=1 UNION ALL SELECT Aktiv FROM T WHERE Nr=1"_s), u"1|-1");
    EXPECT_EQ(types(u"SELECT Null FROM G WHERE GNr=9 UNION SELECT Dat FROM T WHERE Nr=1"_s), type(Variant::Type::Date));
}

TEST(SelectUnion, Length) {
    const SelectTables o;
    const auto chain = [](int length) { return QStringList(length, u"SELECT 1"_s).join(u" UNION ALL "_s); };
    EXPECT_EQ(o.open(chain(400))->value(0), Variant(1));
    EXPECT_EQ(o.errorOfQuery(chain(1000)), 3360);
}

TEST(SelectTop, TiesOfTheLastRow) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT TOP 1 Nr FROM T WHERE Not Dat Is Null ORDER BY Dat"_s), u"1|4");
    EXPECT_EQ(o.rows(u"SELECT DISTINCT TOP 1 Dat FROM T WHERE Not Dat Is Null ORDER BY Dat DESC"_s), u"01.01.2002");
    EXPECT_EQ(o.rows(u"SELECT DISTINCT TOP 2 Gruppe FROM T ORDER BY Gruppe"_s), u"Null|1");
    EXPECT_EQ(o.rows(u"SELECT DISTINCT TOP 1 Name FROM T ORDER BY Name DESC"_s).toLower(), u"zwei");
    QStringList largest =
        o.rows(u"SELECT TOP 1 Gruppe, Count(*) FROM T GROUP BY Gruppe ORDER BY Count(*) DESC"_s).split(u'|');
    largest.sort(); // groups of the same size come in any order
    EXPECT_EQ(largest, (QStringList{u"1 2"_s, u"2 2"_s}));
    EXPECT_EQ(o.all(u"SELECT TOP 2 Nr FROM T"_s).size(), 2);
    EXPECT_EQ(o.all(u"SELECT TOP 9 Nr FROM T"_s).size(), 5);
}

TEST(SelectTop, PercentIsRoundedUp) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT TOP 50 PERCENT Nr FROM T ORDER BY Nr"_s), u"1|2|3");
    EXPECT_EQ(o.rows(u"SELECT TOP 40 PERCENT Nr FROM T ORDER BY Nr"_s), u"1|2");
    EXPECT_EQ(o.rows(u"SELECT TOP 1 PERCENT Nr FROM T ORDER BY Nr DESC"_s), u"5");
    EXPECT_EQ(o.all(u"SELECT TOP 41 PERCENT Nr FROM T"_s).size(), 3);
    EXPECT_EQ(o.all(u"SELECT TOP 100 PERCENT Nr FROM T"_s).size(), 5);
    EXPECT_EQ(o.rows(u"SELECT TOP 20 PERCENT Nr FROM T WHERE Not Dat Is Null ORDER BY Dat"_s), u"1|4");
    EXPECT_EQ(o.rows(u"SELECT DISTINCT TOP 50 PERCENT Gruppe FROM T ORDER BY Gruppe DESC"_s), u"2|1");
    EXPECT_EQ(o.rows(u"SELECT TOP 5 PERCENT Nr FROM T WHERE Nr>9"_s), u"");
    for (const QString& wrong : {u"0"_s, u"-1"_s, u"2.5"_s, u"'a'"_s, u"0 PERCENT"_s, u"101 PERCENT"_s})
        EXPECT_EQ(o.errorOfQuery(u"SELECT TOP %1 Nr FROM T"_s.arg(wrong)), 3308) << wrong.toStdString();
}

TEST(SelectDistinctRow, RowsOfTheTablesWithOutput) {
    const SelectTables o;
    EXPECT_EQ(o.rows(u"SELECT DISTINCTROW G.Text FROM G INNER JOIN T ON G.GNr=T.Gruppe ORDER BY G.Text"_s), u"a|b");
    EXPECT_EQ(o.rows(u"SELECT DISTINCTROW F.y FROM F INNER JOIN G ON F.x<=G.GNr ORDER BY y"_s), u"p|p|q");
    EXPECT_EQ(o.rows(u"SELECT DISTINCTROW F.y FROM F ORDER BY y"_s), u"p|p|q");
    EXPECT_EQ(o.rows(u"SELECT DISTINCTROW G.Text, T.Nr FROM G INNER JOIN T ON G.GNr=T.Gruppe ORDER BY Nr"_s),
              u"a 1|a 2|b 3|b 4");
    EXPECT_EQ(o.rows(u"SELECT DISTINCTROW Sum(GNr) FROM G INNER JOIN T ON G.GNr=T.Gruppe"_s), u"6");
}

TEST(SelectTypes, BranchesKeepTheirs) {
    const SelectTables o;
    const auto rows = o.open(u"SELECT IIf(Nr=1, #2001-05-01#, IIf(Nr=2, 'text', IIf(Nr=3, True, Preis))) AS v FROM T "
                             "ORDER BY Nr"_s);
    QList<Variant::Type> types;
    for (; !rows->Eof(); rows->MoveNext())
        types.append(rows->value(0).type());
    using enum Variant::Type;
    EXPECT_EQ(types, (QList<Variant::Type>{Date, Text, Boolean, Currency, Currency}));
    EXPECT_EQ(o.one(u"SELECT Switch(1=2, 1, 1=1, #2001-05-01#)"_s).type(), Date);
    EXPECT_EQ(o.one(u"SELECT Choose(2, 1, #2001-05-01#)"_s).type(), Date);
    EXPECT_EQ(o.one(u"SELECT x.v FROM (SELECT IIf(Nr=1, Dat, 'a') AS v FROM T WHERE Nr=1) AS x"_s).type(), Date);
    EXPECT_EQ(o.one(u"SELECT x.v+1 FROM (SELECT IIf(Nr=1, Dat, 'a') AS v FROM T WHERE Nr=1) AS x"_s).type(), Date);
    EXPECT_EQ(o.one(u"SELECT (SELECT IIf(Nr=1, Dat, 'a') FROM T WHERE Nr=1)"_s).type(), Date);
    EXPECT_EQ(o.one(u"SELECT IIf(Nr=1, Dat, 0) FROM T WHERE Nr=1 UNION SELECT Dat FROM T WHERE Nr=1"_s).type(), Date);
    EXPECT_EQ(o.one(u"SELECT DISTINCT IIf(Nr=1, Dat, 0) FROM T WHERE Nr=1"_s).type(), Date);
    EXPECT_EQ(o.one(u"SELECT IIf(1=1, '\uFDD0D1', 0)"_s), Variant(u"\uFDD0D1"_s));
    EXPECT_EQ(o.one(u"SELECT x.v & '' FROM (SELECT IIf(1=1, '\uFDD0D1', 0) AS v) AS x"_s), Variant(u"\uFDD0D1"_s));
}

TEST(SelectTypes, MixedValuesAreStoredAsTheColumnSays) {
    const SelectTables o;
    o.database->Execute(u"INSERT INTO T (Nr, Dat) SELECT DISTINCT Nr+10, IIf(Nr=1, Dat, 5) FROM T WHERE Nr=1"_s,
                        dbFailOnError);
    EXPECT_EQ(o.rows(u"SELECT Dat FROM T WHERE Nr=11"_s), u"01.05.2001");
    o.database->Execute(u"SELECT IIf(Nr=1, Dat, 'x') AS v INTO NEU FROM T WHERE Nr=1"_s, dbFailOnError);
    EXPECT_EQ(o.file.one("SELECT v FROM NEU"), "2001-05-01 00:00:00");
}

TEST(SelectGroups, HavingWithoutGroups) {
    const OpenedDatabase o("CREATE TABLE K (k INTEGER PRIMARY KEY); INSERT INTO K VALUES (13), (23), (35);");
    EXPECT_EQ(o.all(u"SELECT Max(k) FROM K HAVING Right(k,1)=3 ORDER BY Last(k)"_s), QStringList{u"23"_s});
    EXPECT_EQ(o.all(u"SELECT Max(k) FROM K HAVING Right(k,1)=9"_s), QStringList{u"Null"_s});
    EXPECT_EQ(o.errorOfQuery(u"SELECT k FROM K HAVING k=13"_s), 3091);
}

TEST(SelectJoins, NestedInParentheses) {
    const SelectTables o;
    EXPECT_EQ(
        o.rows(u"SELECT G.GNr, F.x, T.Nr FROM G LEFT JOIN (F INNER JOIN T ON F.x=T.Nr) ON G.GNr=F.x ORDER BY 1"_s),
        u"1 1 1|1 1 1|2 2 2|3 Null Null");
    EXPECT_EQ(
        o.rows(u"SELECT G.GNr, T.Nr, F.x FROM (T LEFT JOIN F ON T.Nr=F.x+1) RIGHT JOIN G ON G.GNr=T.Gruppe ORDER BY "
               "1, 2"_s),
        u"1 1 Null|1 2 1|1 2 1|2 3 2|2 4 Null|3 Null Null");
    EXPECT_EQ(o.rows(u"SELECT G.GNr, T.Nr FROM G INNER JOIN (T RIGHT JOIN F ON T.Nr=F.x) ON G.GNr=F.x ORDER BY 1"_s),
              u"1 1|1 1|2 2");
    EXPECT_EQ(o.rows(u"SELECT G.GNr, a.Nr, b.Nr FROM G LEFT JOIN (T AS a LEFT JOIN T AS b ON a.Nr=b.Nr-3) ON "
                     "G.GNr=a.Nr ORDER BY 1"_s),
              u"1 1 4|2 2 5|3 3 Null");
    EXPECT_EQ(o.rows(u"SELECT First(F.y) FROM G LEFT JOIN (F INNER JOIN T ON F.x=T.Nr) ON G.GNr=F.x WHERE GNr=2"_s),
              u"q");
}

} // namespace dao
