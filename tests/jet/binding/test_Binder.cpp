#include "jet/FakeCatalogue.h"

#include "support/Printing.h"

using namespace jet;
using namespace Qt::StringLiterals;
using mkl::errorOf;

namespace {

QString errorText(QStringView text) {
    try {
        planOf(text);
    } catch (const mkl::RunTimeError& error) {
        return QString::number(error.number()) + u' ' + error.description();
    }
    return u"0"_s;
}

ColumnType typeOfExpression(QStringView expression) {
    return planOf(u"SELECT "_s + expression.toString() + u" FROM TYPEN"_s).columns[0].type;
}

mkl::Long criterionError(QStringView criterion) {
    return errorOf([&] { planOf(u"SELECT lng FROM TYPEN WHERE "_s + criterion.toString()); });
}

QStringList columnNames(QStringView text) {
    QStringList names;
    for (const OutputColumn& column : planOf(text).columns)
        names.append(column.name);
    return names;
}

} // namespace

TEST(Binder, NamesDisregardCase) {
    const Plan plan = planOf(u"select ARTIKEL.[artikel-schlüssel], LETZTEÄNDERUNG from artikel");
    EXPECT_EQ(plan.native, "SELECT \"ARTIKEL\".\"Artikel-Schlüssel\", \"ARTIKEL\".\"LetzteÄnderung\" FROM \"ARTIKEL\"");
    EXPECT_EQ(plan.columns[0].name, u"Artikel-Schlüssel"_s);
    EXPECT_EQ(plan.columns[1].sourceTable, u"ARTIKEL"_s);
    EXPECT_EQ(plan.columns[1].type, ColumnType::Date);
    EXPECT_EQ(plan.targetTable, u"ARTIKEL"_s);
}

TEST(Binder, UnknownNamesAreCountedOnce) {
    const QString text = errorText(u"SELECT Foo, foo, T.x, rowid FROM ARTIKEL WHERE Foo=1 ORDER BY \"a\" & Bar");
    EXPECT_TRUE(text.startsWith(u"3061"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"Erwartet: 4"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"Foo, T.x, rowid, Bar"_s)) << text.toStdString();
}

TEST(Binder, QualifiersAreAliases) {
    EXPECT_EQ(errorText(u"SELECT a.Aktiv FROM ARTIKEL AS a"), u"0"_s);
    EXPECT_TRUE(errorText(u"SELECT ARTIKEL.Aktiv FROM ARTIKEL AS a").startsWith(u"3061"_s));
    EXPECT_TRUE(errorText(u"SELECT [ARTIKEL.Aktiv] FROM ARTIKEL").startsWith(u"3126"_s));
    EXPECT_EQ(errorText(u"SELECT a.Aktiv, b.Aktiv FROM ARTIKEL a, ARTIKEL b"), u"0"_s);
}

TEST(Binder, RepeatedNamesAreQualified) {
    const QString text = u"SELECT ARTKAT.LetzteÄnderung, ARTIKEL.LetzteÄnderung, Artikelname FROM ARTIKEL "
                         u"INNER JOIN ARTKAT ON ARTIKEL.[Artikel-Schlüssel]=ARTKAT.[Artikel-Schlüssel]"_s;
    EXPECT_EQ(columnNames(text),
              QStringList({u"ARTKAT.LetzteÄnderung"_s, u"ARTIKEL.LetzteÄnderung"_s, u"Artikelname"_s}));
    EXPECT_EQ(columnNames(u"SELECT a.Aktiv, b.Aktiv, b.Aktiv AS x FROM ARTIKEL a, ARTIKEL b"),
              QStringList({u"a.Aktiv"_s, u"b.Aktiv"_s, u"x"_s}));
}

TEST(Binder, ExpressionsAreNumbered) {
    EXPECT_EQ(columnNames(u"SELECT 1+1, lng, Now(), lng AS x, -lng FROM TYPEN"),
              QStringList({u"Expr1000"_s, u"lng"_s, u"Expr1001"_s, u"x"_s, u"Expr1002"_s}));
    EXPECT_TRUE(errorText(u"SELECT lng AS x, dbl AS X FROM TYPEN").startsWith(u"3141"_s));
}

TEST(Binder, AliasesServeOtherOutputColumns) {
    EXPECT_EQ(planOf(u"SELECT y+1 AS x, lng*2 AS y FROM TYPEN").native,
              "SELECT mkl_add(mkl_multiply(\"TYPEN\".\"lng\", ?1), ?2), mkl_multiply(\"TYPEN\".\"lng\", ?1) FROM "
              "\"TYPEN\"");
    EXPECT_TRUE(errorText(u"SELECT lng AS x FROM TYPEN WHERE x=1").startsWith(u"3061"_s));
    EXPECT_TRUE(errorText(u"SELECT lng AS x FROM TYPEN ORDER BY x").startsWith(u"3061"_s));
    EXPECT_TRUE(errorText(u"SELECT x+1 AS x FROM TYPEN").startsWith(u"3061"_s));
    EXPECT_TRUE(errorText(u"SELECT y AS x, x AS y FROM TYPEN").startsWith(u"3061"_s));
    EXPECT_TRUE(errorText(u"SELECT Max(lng) AS m, Sum(m) AS s FROM TYPEN").startsWith(u"3095"_s));
}

TEST(Binder, AliasesDoNotEndTheStack) {
    QStringList outputs;
    for (int i = 0; i < 3000; ++i)
        outputs.append(u"-a%1 AS a%2"_s.arg(i + 1).arg(i));
    EXPECT_EQ(errorOf([&] { planOf(u"SELECT "_s + outputs.join(u',') + u", lng AS a3000 FROM TYPEN"_s); }), 3360);
    QStringList doubled;
    for (int i = 0; i < 60; ++i)
        doubled.append(u"a%1 & a%1 AS a%2"_s.arg(i + 1).arg(i));
    EXPECT_EQ(errorOf([&] { planOf(u"SELECT "_s + doubled.join(u',') + u", lng AS a60 FROM TYPEN"_s); }), 3360);
}

TEST(Binder, TypesOfExpressions) {
    using enum ColumnType;
    const QList<std::pair<QString, ColumnType>> cases = {{u"lng+1"_s, Int},
                                                         {u"yn+1"_s, Int},
                                                         {u"lng/2"_s, Double},
                                                         {u"lng\\2"_s, Int},
                                                         {u"dbl Mod 2"_s, Int},
                                                         {u"cur*2"_s, Currency},
                                                         {u"cur*1.5"_s, Double},
                                                         {u"dat+1"_s, Date},
                                                         {u"dat-1"_s, Date},
                                                         {u"dat-dat"_s, Double},
                                                         {u"txt & 1"_s, Text},
                                                         {u"txt+txt"_s, Text},
                                                         {u"any+1"_s, Unknown},
                                                         {u"lng=1"_s, Boolean},
                                                         {u"Not lng"_s, Boolean},
                                                         {u"True"_s, Boolean},
                                                         {u"Null"_s, Unknown},
                                                         {u"-cur"_s, Currency},
                                                         {u"-yn"_s, Int},
                                                         {u"Now()"_s, Date},
                                                         {u"Left(txt,1)"_s, Text},
                                                         {u"IIf(yn,dat,Null)"_s, Date},
                                                         {u"IIf(yn,dat,1)"_s, Unknown},
                                                         {u"Switch(yn,1,True,2)"_s, Int},
                                                         {u"Choose(lng,'a','b')"_s, Text},
                                                         {u"lng In (1)"_s, Boolean},
                                                         {u"#2001-01-01#"_s, Date},
                                                         {u"'x'"_s, Text},
                                                         {u"1.5"_s, Double}};
    for (const auto& [expression, type] : cases)
        EXPECT_EQ(int(typeOfExpression(expression)), int(type)) << expression.toStdString();
    EXPECT_EQ(int(planOf(u"SELECT Count(*) FROM TYPEN").columns[0].type), int(Int));
    EXPECT_EQ(int(planOf(u"SELECT Sum(cur) FROM TYPEN").columns[0].type), int(Currency));
    EXPECT_EQ(int(planOf(u"SELECT Max(dat) FROM TYPEN").columns[0].type), int(Date));
}

TEST(Binder, TypesThatClash) {
    for (const QStringView clash : {u"lng='20'", u"txt=5", u"yn='x'", u"dat='1.1.2001'", u"txt Between 1 And 2",
                                    u"lng In ('1')", u"txt<>True", u"bin='x'", u"'5'=5", u"txt In ('a', 5)"})
        EXPECT_EQ(criterionError(clash), 3464) << clash.toString().toStdString();
    for (const QStringView fits : {u"Right(lng,1)=3", u"lng=1.5", u"yn=True", u"yn=-1", u"dat>5", u"any='x'", u"any=5",
                                   u"txt=Null", u"lng=Null", u"txt & ''=5", u"lng In (1, Null, 2.5)", u"dbl=cur"})
        EXPECT_EQ(criterionError(fits), 0) << fits.toString().toStdString();
}

TEST(Binder, FunctionsAndTheirArguments) {
    EXPECT_TRUE(errorText(u"SELECT sqlite_version()").startsWith(u"3085"_s));
    EXPECT_TRUE(errorText(u"SELECT load_extension('x')").contains(u"load_extension"_s));
    EXPECT_EQ(criterionError(u"DLookup('a','b')=1"), 3085);
    EXPECT_EQ(criterionError(u"mkl_add(1,2)=3"), 3085);
    EXPECT_EQ(criterionError(u"Left(txt)='a'"), 3075);
    EXPECT_EQ(criterionError(u"Now(1)=1"), 3075);
    EXPECT_EQ(criterionError(u"IIf(yn,1)=1"), 3075);
    EXPECT_EQ(criterionError(u"Switch(yn,1,yn)=1"), 3075);
    EXPECT_EQ(criterionError(u"Left(*)='a'"), 3075);
    EXPECT_EQ(errorOf([] { planOf(u"SELECT Max(*) FROM TYPEN"); }), 3075);
    EXPECT_EQ(errorOf([] { planOf(u"SELECT Max(lng,dbl) FROM TYPEN"); }), 3075);
    EXPECT_EQ(errorOf([] { planOf(u"SELECT Sum(txt) FROM TYPEN"); }), 3464);
}

TEST(Binder, TheMessageNamesTheExpression) {
    EXPECT_TRUE(errorText(u"SELECT lng, Max(dbl) FROM TYPEN").contains(u"'lng'"_s));
    EXPECT_TRUE(errorText(u"SELECT * FROM TYPEN WHERE Max(lng)>1").contains(u"Max(lng)"_s));
    EXPECT_TRUE(errorText(u"SELECT * FROM FEHLT").contains(u"FEHLT"_s));
    EXPECT_TRUE(errorText(u"SELECT Aktiv FROM ARTIKEL, [ARTIKEL/KATEGORIEN]").contains(u"Aktiv"_s));
}

TEST(Binder, GroupedExpressionsMayRestOnLiterals) {
    const Plan plan = planOf(u"SELECT lng+1, Count(*) FROM TYPEN GROUP BY lng+1");
    ASSERT_EQ(plan.fixedLiterals.size(), 2);
    EXPECT_EQ(plan.fixedLiterals[0].value, mkl::Variant(1));
    EXPECT_EQ(errorOf([] { planOf(u"SELECT lng+2, Count(*) FROM TYPEN GROUP BY lng+1"); }), 3122);
    EXPECT_TRUE(planOf(u"SELECT lng, Count(*) FROM TYPEN WHERE dbl=1 GROUP BY lng").fixedLiterals.isEmpty());
}
