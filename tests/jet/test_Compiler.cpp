#include "jet/FakeCatalogue.h"

#include "support/Printing.h"

using namespace jet;
using namespace Qt::StringLiterals;
using mkl::errorOf;
using mkl::Variant;

namespace {

QByteArray native(QStringView text) {
    return planOf(text).native;
}

// What becomes of a criterion on the table of all types, its column names bare.
QByteArray criterion(QStringView text) {
    QByteArray written = native(u"SELECT lng FROM TYPEN WHERE "_s + text.toString());
    return written.mid(written.indexOf(" WHERE ") + 7).replace("\"TYPEN\".", "").replace("\"", "");
}

QByteArray fromClause(QStringView text) {
    QByteArray written = native(u"SELECT 1 FROM "_s + text.toString());
    return written.mid(written.indexOf(" FROM ") + 6).replace("\"", "");
}

} // namespace

TEST(Compiler, SimpleCriteriaStayNative) {
    const Plan plan = planOf(u"SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent]=17 ORDER BY [Order];");
    EXPECT_EQ(plan.native, "SELECT \"ARTIKEL/KATEGORIEN\".\"Kategorie-Schlüssel\", \"ARTIKEL/KATEGORIEN\".\"Parent\", "
                           "\"ARTIKEL/KATEGORIEN\".\"Order\", \"ARTIKEL/KATEGORIEN\".\"Kategoriename\", "
                           "\"ARTIKEL/KATEGORIEN\".\"Aktiv\", \"ARTIKEL/KATEGORIEN\".\"Absender-Schlüssel\" FROM "
                           "\"ARTIKEL/KATEGORIEN\" WHERE (\"ARTIKEL/KATEGORIEN\".\"Parent\" = ?1) ORDER BY "
                           "\"ARTIKEL/KATEGORIEN\".\"Order\" up");
    ASSERT_EQ(plan.parameters.size(), 1);
    EXPECT_EQ(plan.parameters[0].literal, 0);
    EXPECT_FALSE(plan.parameters[0].negated);
    EXPECT_EQ(criterion(u"lng Is Null"), "(lng IS NULL)");
    EXPECT_EQ(criterion(u"lng In (3,7)"), "(lng IN (?1, ?2))");
    EXPECT_EQ(criterion(u"lng Not In (3)"), "(NOT (lng IN (?1)))");
    EXPECT_EQ(criterion(u"yn=True And Not yn"), "((yn = -1) AND (NOT yn is true))");
    EXPECT_EQ(criterion(u"dat>=#2001-01-01#"), "(dat >= ?1)");
    EXPECT_EQ(criterion(u"lng "), "lng is true");
}

TEST(Compiler, SignsOfLiterals) {
    const Plan plan = planOf(u"SELECT lng FROM TYPEN WHERE lng=-5 Or dbl=5");
    ASSERT_EQ(plan.parameters.size(), 2);
    EXPECT_TRUE(plan.parameters[0].negated);
    EXPECT_FALSE(plan.parameters[1].negated);
    EXPECT_EQ(criterion(u"lng=5--3"), "(lng = mkl_subtract(?1, ?2))");
}

TEST(Compiler, TextsAreCollated) {
    EXPECT_EQ(criterion(u"txt='a'"), "(key:txt = key:?1)");
    EXPECT_EQ(criterion(u"txt In ('a','b')"), "(key:txt IN (key:?1, key:?2))");
    EXPECT_EQ(criterion(u"txt Between 'b' And 'a'"),
              "((key:txt >= key:?1 AND key:txt <= key:?2) OR (key:txt >= key:?2 AND key:txt <= key:?1))");
    EXPECT_EQ(native(u"SELECT DISTINCT txt FROM TYPEN"), "SELECT DISTINCT key:\"TYPEN\".\"txt\" FROM \"TYPEN\"");
    // The key of a row tells already which ones repeat each other.
    EXPECT_EQ(native(u"SELECT DISTINCT Kategoriename, [Kategorie-Schlüssel] FROM [ARTIKEL/KATEGORIEN]"),
              "SELECT DISTINCT \"ARTIKEL/KATEGORIEN\".\"Kategoriename\", "
              "\"ARTIKEL/KATEGORIEN\".\"Kategorie-Schlüssel\" FROM \"ARTIKEL/KATEGORIEN\"");
    EXPECT_EQ(native(u"SELECT Max(txt) FROM TYPEN"), "SELECT max(key:\"TYPEN\".\"txt\") FROM \"TYPEN\"");
    EXPECT_EQ(native(u"SELECT txt FROM TYPEN GROUP BY txt ORDER BY txt DESC"),
              "SELECT \"TYPEN\".\"txt\" FROM \"TYPEN\" GROUP BY key:\"TYPEN\".\"txt\" ORDER BY key:\"TYPEN\".\"txt\" "
              "down");
}

TEST(Compiler, MixedTypesGoThroughFunctions) {
    EXPECT_EQ(criterion(u"Right(lng,1)=3"), "mkl_equal(mkl_right(lng, ?1), ?2) is true");
    EXPECT_EQ(criterion(u"any<5"), "mkl_less(any, ?1) is true");
    EXPECT_EQ(criterion(u"any In (5,'a')"), "(mkl_equal(any, ?1) is true OR mkl_equal(any, ?2) is true)");
    EXPECT_EQ(criterion(u"lng+1 Between 1 And 2"), "mkl_between(mkl_add(lng, ?1), ?2, ?3) is true");
    EXPECT_EQ(criterion(u"txt Like 'a*'"),
              "(CASE WHEN ?1 = '*' THEN txt IS NOT NULL OR NULL ELSE mkl_like(txt, ?1) is true END)");
    EXPECT_EQ(criterion(u"txt"), "mkl_truth(txt) is true");
    EXPECT_EQ(criterion(u"dat & cur"), "mkl_truth(mkl_concat(date:dat, currency:cur)) is true");
    EXPECT_EQ(criterion(u"lng=1 Xor yn"), "mkl_xor(yesno(lng = ?1), yn) is true");
}

TEST(Compiler, ConditionsAsValues) {
    EXPECT_EQ(native(u"SELECT lng=1, Not yn FROM TYPEN"),
              "SELECT yesno(\"TYPEN\".\"lng\" = ?1), yesno(NOT \"TYPEN\".\"yn\" is true) FROM \"TYPEN\"");
    EXPECT_EQ(native(u"SELECT True, False, Null"), "SELECT -1, 0, NULL");
}

TEST(Compiler, ChosenArgumentsAreLazy) {
    EXPECT_EQ(criterion(u"IIf(yn,1,1/0)=1"),
              "mkl_equal(CASE WHEN yn is true THEN ?1 ELSE mkl_divide(?2, ?3) END, ?4) is true");
    EXPECT_EQ(criterion(u"Choose(lng,'a','b')='a'"),
              "(key:CASE mkl_clng(lng) WHEN 1 THEN ?1 WHEN 2 THEN ?2 END = key:?3)");
    EXPECT_EQ(criterion(u"Switch(lng=1,dat,True,5)=1"),
              "mkl_equal(CASE WHEN (lng = ?1) THEN date:dat WHEN -1 is true THEN ?2 END, ?3) is true");
}

TEST(Compiler, Joins) {
    EXPECT_EQ(fromClause(u"ARTIKEL AS a INNER JOIN ARTKAT ON a.[Artikel-Schlüssel]=ARTKAT.[Artikel-Schlüssel]"),
              "ARTIKEL AS a INNER JOIN ARTKAT ON (a.Artikel-Schlüssel = ARTKAT.Artikel-Schlüssel)");
    EXPECT_EQ(fromClause(u"TYPEN a RIGHT JOIN TYPEN b ON a.lng=b.lng"),
              "TYPEN AS b LEFT JOIN TYPEN AS a ON (a.lng = b.lng)");
    EXPECT_EQ(
        fromClause(u"TYPEN a INNER JOIN (TYPEN b INNER JOIN TYPEN c ON b.lng=c.lng) ON a.lng=b.lng"),
        "TYPEN AS a INNER JOIN TYPEN AS b ON 0 = 0 INNER JOIN TYPEN AS c ON ((b.lng = c.lng) AND (a.lng = b.lng))");
    EXPECT_EQ(fromClause(u"(TYPEN a INNER JOIN TYPEN b ON a.lng=b.lng) LEFT JOIN TYPEN c ON a.lng=c.lng"),
              "TYPEN AS a INNER JOIN TYPEN AS b ON (a.lng = b.lng) LEFT JOIN TYPEN AS c ON (a.lng = c.lng)");
    EXPECT_EQ(fromClause(u"TYPEN a LEFT JOIN (TYPEN b INNER JOIN TYPEN c ON b.lng=c.lng) ON a.lng=b.lng"),
              "TYPEN AS a LEFT JOIN ((rows of TYPEN) AS b INNER JOIN (rows of TYPEN) AS c ON (b.lng = c.lng)) ON "
              "(a.lng = b.lng)");
    EXPECT_EQ(fromClause(u"TYPEN a, TYPEN b"), "TYPEN AS a, TYPEN AS b");
}

TEST(Compiler, HavingWithoutGroups) {
    EXPECT_EQ(native(u"SELECT Max([ARTIKEL/KATEGORIEN].[Kategorie-Schlüssel]) AS [TempSchlüssel] FROM "
                     u"[ARTIKEL/KATEGORIEN] HAVING ((Right([Kategorie-Schlüssel],1) = 3)) ORDER BY "
                     u"Last([ARTIKEL/KATEGORIEN].[Kategorie-Schlüssel]);")
                  .replace("\"ARTIKEL/KATEGORIEN\"", "K")
                  .replace("\"Kategorie-Schlüssel\"", "s"),
              "SELECT max(K.s) FROM K WHERE mkl_equal(mkl_right(K.s, ?1), ?2) is true");
    EXPECT_EQ(native(u"SELECT Max(lng) FROM TYPEN HAVING lng=1 And Max(lng)>2").replace("\"TYPEN\".", ""),
              "SELECT max(\"lng\") FROM \"TYPEN\" WHERE (\"lng\" = ?1) HAVING (max(\"lng\") > ?2)");
    EXPECT_EQ(native(u"SELECT lng FROM TYPEN GROUP BY lng HAVING lng=1").replace("\"TYPEN\".", ""),
              "SELECT \"lng\" FROM \"TYPEN\" GROUP BY \"lng\" HAVING (\"lng\" = ?1)");
}

TEST(Compiler, Aggregates) {
    EXPECT_EQ(native(u"SELECT Max(ARTIKEL.[Artikel-Schlüssel]) AS MaxKey FROM ARTIKEL;"),
              "SELECT max(\"ARTIKEL\".\"Artikel-Schlüssel\") FROM \"ARTIKEL\"");
    EXPECT_EQ(native(u"SELECT Count(*), Count(txt), Sum(yn), StDev(dbl), Sum(any), First(dat) FROM TYPEN")
                  .replace("\"TYPEN\".", ""),
              "SELECT count(*), count(key:\"txt\"), sum(\"yn\"), mkl_stdev(\"dbl\"), sum(mkl_to_double(\"any\")), "
              "mkl_first(date:\"dat\", row) FROM \"TYPEN\"");
}

TEST(Compiler, OrderByPosition) {
    const Plan plan = planOf(u"SELECT txt, lng+1 FROM TYPEN ORDER BY 2 DESC, 1");
    EXPECT_EQ(plan.native.mid(plan.native.indexOf("ORDER")),
              "ORDER BY mkl_add(\"TYPEN\".\"lng\", ?1) down, key:\"TYPEN\".\"txt\" up");
    ASSERT_EQ(plan.fixedLiterals.size(), 2);
    EXPECT_EQ(plan.fixedLiterals[0].literal, 1);
    EXPECT_EQ(plan.fixedLiterals[0].value, Variant(2));
    EXPECT_EQ(native(u"SELECT lng FROM TYPEN ORDER BY True"),
              "SELECT \"TYPEN\".\"lng\" FROM \"TYPEN\" ORDER BY NULL up");
}

TEST(Compiler, TopTakesTiesIn) {
    EXPECT_EQ(native(u"SELECT TOP 3 lng FROM TYPEN"), "SELECT \"TYPEN\".\"lng\" FROM \"TYPEN\" LIMIT 3");
    const Plan plan = planOf(u"SELECT TOP 3 lng, txt FROM TYPEN ORDER BY dbl");
    EXPECT_EQ(plan.native, "SELECT c0, c1 FROM (SELECT \"TYPEN\".\"lng\" AS c0, \"TYPEN\".\"txt\" AS c1, rank() OVER "
                           "(ORDER BY \"TYPEN\".\"dbl\" up) AS place FROM \"TYPEN\") AS ranked WHERE place <= 3 ORDER "
                           "BY place");
    ASSERT_EQ(plan.fixedLiterals.size(), 1);
    EXPECT_EQ(plan.fixedLiterals[0].value, Variant(3));
}

TEST(Compiler, Inserts) {
    const Plan plan =
        planOf(u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order], LetzteÄnderung) "
               u"SELECT [Artikel-Schlüssel], 5 AS CatID, Order, Now() AS Edit FROM ARTKAT WHERE "
               u"[Kategorie-Schlüssel]=4;");
    EXPECT_EQ(plan.native,
              "INSERT INTO \"ARTKAT\" (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", \"Order\", \"LetzteÄnderung\") "
              "SELECT \"ARTKAT\".\"Artikel-Schlüssel\", ?1, \"ARTKAT\".\"Order\", mkl_now() FROM \"ARTKAT\" WHERE "
              "(\"ARTKAT\".\"Kategorie-Schlüssel\" = ?2)");
    EXPECT_EQ(int(plan.kind), int(StatementKind::Insert));
    EXPECT_EQ(plan.targetTable, u"ARTKAT"_s);
    EXPECT_TRUE(plan.lenient.isEmpty()); // nothing can be wrong with these values
    const Plan values = planOf(u"INSERT INTO TYPEN (lng, txt, yn, dat) VALUES ('5', 7, 1, #2001-01-01#)");
    EXPECT_EQ(values.native, "INSERT INTO \"TYPEN\" (\"lng\", \"txt\", \"yn\", \"dat\") VALUES "
                             "(mkl_store_long(?1, 'lng'), mkl_store_text(?2, 'txt'), mkl_store_boolean(?3, 'yn'), ?4)");
    EXPECT_EQ(values.lenient, "INSERT INTO \"TYPEN\" (\"lng\", \"txt\", \"yn\", \"dat\") SELECT "
                              "mkl_store_long(?1, 'lng'), mkl_store_text(?2, 'txt'), mkl_store_boolean(?3, 'yn'), ?4 "
                              "WHERE mkl_storable(?1, 2) is true AND mkl_storable(?2, 6) is true AND "
                              "mkl_storable(?3, 1) is true");
    EXPECT_EQ(native(u"INSERT INTO TYPEN (lng) SELECT DISTINCT txt FROM TYPEN"),
              "INSERT INTO \"TYPEN\" (\"lng\") SELECT mkl_store_long(c0, 'lng') FROM (SELECT DISTINCT "
              "key:\"TYPEN\".\"txt\" AS c0 FROM \"TYPEN\") AS chosen");
}

TEST(Compiler, AKeyIsNotMadeUp) {
    EXPECT_EQ(native(u"INSERT INTO [ARTIKEL/KATEGORIEN] (Parent) VALUES (1)"),
              "INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Parent\", \"Kategorie-Schlüssel\") VALUES (?1, "
              "mkl_store_key(NULL))");
    EXPECT_EQ(native(u"INSERT INTO ARTIKEL (Artikelname) VALUES ('x')"),
              "INSERT INTO \"ARTIKEL\" (\"Artikelname\") VALUES (?1)");
    EXPECT_EQ(native(u"UPDATE [ARTIKEL/KATEGORIEN] SET [Kategorie-Schlüssel]=Parent"),
              "UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Kategorie-Schlüssel\" = "
              "mkl_store_key(\"ARTIKEL/KATEGORIEN\".\"Parent\")");
}

TEST(Compiler, ActionsOnJoins) {
    const Plan update = planOf(u"UPDATE ARTKAT INNER JOIN ARTIKEL ON ARTKAT.[Artikel-Schlüssel]=ARTIKEL."
                               u"[Artikel-Schlüssel] SET ARTKAT.Order=7 WHERE Aktiv");
    EXPECT_EQ(update.native,
              "UPDATE \"ARTKAT\" SET \"Order\" = chosen.c0 FROM (SELECT ?1 AS c0, \"ARTKAT\".\"ArtKatID\" AS k0 FROM "
              "\"ARTKAT\" INNER JOIN \"ARTIKEL\" ON (\"ARTKAT\".\"Artikel-Schlüssel\" = "
              "\"ARTIKEL\".\"Artikel-Schlüssel\") WHERE \"ARTIKEL\".\"Aktiv\" is true) AS chosen WHERE "
              "\"ARTKAT\".\"ArtKatID\" = chosen.k0");
    EXPECT_EQ(update.targetTable, u"ARTKAT"_s);
    EXPECT_EQ(native(u"DELETE t.* FROM TYPEN AS t, ARTIKEL WHERE lng=[Artikel-Schlüssel]"),
              "DELETE FROM \"TYPEN\" WHERE (\"TYPEN\".row) IN (SELECT \"t\".row FROM \"TYPEN\" AS \"t\", \"ARTIKEL\" "
              "WHERE (\"t\".\"lng\" = \"ARTIKEL\".\"Artikel-Schlüssel\"))");
}

TEST(Compiler, MakesTables) {
    const Plan plan = planOf(u"SELECT lng AS Zahl, dat INTO [Neue Tabelle] FROM TYPEN WHERE lng=5");
    EXPECT_EQ(int(plan.kind), int(StatementKind::MakeTable));
    EXPECT_EQ(plan.native, "CREATE TABLE \"Neue Tabelle\" (\"Zahl\" TYPE2, \"dat\" TYPE5)");
    EXPECT_EQ(plan.followUp, "INSERT INTO \"Neue Tabelle\" (\"Zahl\", \"dat\") SELECT \"TYPEN\".\"lng\", "
                             "\"TYPEN\".\"dat\" FROM \"TYPEN\" WHERE (\"TYPEN\".\"lng\" = ?1)");
    EXPECT_EQ(errorOf([] { planOf(u"SELECT a.lng, b.lng INTO N FROM TYPEN AS a, TYPEN AS b"); }), 3141);
}

TEST(Compiler, UpdatesAndDeletes) {
    const Plan update = planOf(u"UPDATE ARTKAT SET Order = [Order]+1, ARTKAT.LetzteÄnderung=Null WHERE Order>=3");
    EXPECT_EQ(update.native,
              "UPDATE \"ARTKAT\" SET \"Order\" = mkl_add(\"ARTKAT\".\"Order\", ?1), \"LetzteÄnderung\" = "
              "NULL WHERE (\"ARTKAT\".\"Order\" >= ?2)");
    EXPECT_EQ(int(update.kind), int(StatementKind::Update));
    EXPECT_EQ(native(u"DELETE * FROM ARTKAT WHERE Order=1"),
              "DELETE FROM \"ARTKAT\" WHERE (\"ARTKAT\".\"Order\" = ?1)");
    EXPECT_EQ(native(u"DELETE a.* FROM ARTKAT AS a"), "DELETE FROM \"ARTKAT\" AS \"a\"");
    EXPECT_EQ(int(planOf(u"DELETE FROM ARTKAT").kind), int(StatementKind::Delete));
}

TEST(Compiler, NativeTextsDoNotExplode) {
    QString expression = u"lng"_s;
    for (int i = 0; i < 200; ++i)
        expression = u"IIf((%1) In ('a',1),1,2)"_s.arg(expression);
    EXPECT_EQ(errorOf([&] { planOf(u"SELECT "_s + expression + u" FROM TYPEN"_s); }), 3360);
}

TEST(Compiler, LongFiltersStayShallow) {
    QString filter = u"lng=0"_s;
    for (int i = 1; i < 1024; ++i)
        filter += u" Or lng=%1"_s.arg(i);
    int depth = 0, deepest = 0;
    for (const char c : native(u"SELECT lng FROM TYPEN WHERE "_s + filter)) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        deepest = qMax(deepest, depth);
    }
    EXPECT_EQ(deepest, 11);
}
