#include "jet/evaluation/Criterion.h"

#include "base/RunTimeError.h"
#include "jet/RowsInMemory.h"
#include "support/Printing.h"

using namespace Qt::StringLiterals;
using jet::ColumnType;
using jet::Criterion;
using jet::OutputColumn;
using mkl::Variant;

namespace {

// A join of articles and assignments, as its statement names the columns.
const QList<OutputColumn> columns = {
    {u"Nr"_s, ColumnType::Int, u"ARTIKEL"_s, u"Artikel-Schlüssel"_s},
    {u"Artikelname"_s, ColumnType::Text, u"ARTIKEL"_s, u"Artikelname"_s, u"A"_s},
    {u"ARTIKEL.LetzteÄnderung"_s, ColumnType::Date, u"ARTIKEL"_s, u"LetzteÄnderung"_s},
    {u"ARTKAT.LetzteÄnderung"_s, ColumnType::Date, u"ARTKAT"_s, u"LetzteÄnderung"_s},
    {u"Aktiv"_s, ColumnType::Boolean, u"ARTIKEL"_s, u"Aktiv"_s},
    {u"Expr1000"_s, ColumnType::Double, {}, {}},
    {u"Preis"_s, ColumnType::Currency, u"ARTKAT"_s, u"Preis"_s},
    {u"Any"_s, ColumnType::Unknown, {}, {}},
};

const std::vector<Variant> row = {
    17, u"Straßenschraube M8"_s, Variant::date(36526.75), Variant(), true, 2.5, Variant::currency(12500), u"12"_s};

Criterion criterion(const QString& text) {
    return Criterion::parse(text, columns);
}

bool holds(const QString& text) {
    jet::RowsInMemory rows({row});
    rows.moveTo(0);
    return criterion(text).holds(rows);
}

mkl::Long errorOf(const QString& text) {
    try {
        holds(text);
    } catch (const mkl::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

} // namespace

TEST(Criterion, bareNameIsAnOutputColumnFirst) {
    EXPECT_TRUE(holds(u"nr = 17"_s));
    EXPECT_TRUE(holds(u"[expr1000] = 2.5"_s));
    EXPECT_TRUE(holds(u"[ARTIKEL.LetzteÄnderung] > #1/1/2000#"_s));
    EXPECT_TRUE(holds(u"[artikel-schlüssel] = 17"_s)); // not shown under its own name
    EXPECT_EQ(errorOf(u"LetzteÄnderung > #1/1/2000#"_s), 3079);
    EXPECT_EQ(errorOf(u"Nirgends = 1"_s), 3070);
}

TEST(Criterion, qualifiedNameIsAColumnOfASource) {
    EXPECT_TRUE(holds(u"ARTIKEL.[Artikel-Schlüssel] = 17"_s));
    EXPECT_TRUE(holds(u"artikel!letzteÄNDERUNG = #2000-01-01 18:00#"_s));
    EXPECT_TRUE(holds(u"ARTKAT.LetzteÄnderung Is Null"_s));
    EXPECT_TRUE(holds(u"A.Artikelname Like 'str*'"_s));
    EXPECT_EQ(errorOf(u"ARTKAT.Artikelname = ''"_s), 3070);
    EXPECT_EQ(errorOf(u"ARTIKEL.Nr = 17"_s), 3070);
}

TEST(Criterion, columnShownTwiceIsOne) {
    const QList<OutputColumn> twice = {{u"T.a"_s, ColumnType::Int, u"T"_s, u"a"_s},
                                       {u"b"_s, ColumnType::Int, u"T"_s, u"a"_s}};
    EXPECT_EQ(Criterion::parse(u"a = 1", twice).columns(), QList<int>{0});
    const QList<OutputColumn> selfJoin = {{u"T.a"_s, ColumnType::Int, u"T"_s, u"a"_s, u"x"_s},
                                          {u"c"_s, ColumnType::Int, u"T"_s, u"a"_s, u"y"_s}};
    EXPECT_EQ(Criterion::parse(u"y.a = 1", selfJoin).columns(), QList<int>{1});
    EXPECT_THROW(Criterion::parse(u"T.a & '' = a", selfJoin), mkl::RunTimeError);
}

TEST(Criterion, columnsReadAreListedOnce) {
    EXPECT_EQ(criterion(u"Aktiv And (nr = 1 Or nr = 2) And Left(Artikelname, 1) = 'x'"_s).columns(),
              (QList<int>{0, 1, 4}));
    EXPECT_TRUE(criterion(u"1 = 1"_s).columns().isEmpty());
}

TEST(Criterion, errorsOfTheText) {
    EXPECT_EQ(errorOf(u""_s), 3077);
    EXPECT_EQ(errorOf(u"nr ="_s), 3077);
    EXPECT_EQ(errorOf(u"nr = 1) Or (1 = 1"_s), 3077);
    EXPECT_EQ(errorOf(u"nr = 1; DELETE FROM ARTIKEL"_s), 3077);
    EXPECT_EQ(errorOf(u"[nr = 1"_s), 3077);
    EXPECT_EQ(errorOf(u"nr = #WGFILTER#"_s), 3077);
    EXPECT_EQ(errorOf(u"Left('a') = ''"_s), 3077);
    EXPECT_EQ(errorOf(u"WHERE nr = 1"_s), 3077);
    EXPECT_EQ(errorOf(u"sqlite_version() = ''"_s), 3085);
    EXPECT_EQ(errorOf(u"Max(nr) = 17"_s), 3096);
    EXPECT_EQ(errorOf(u"nr = 'x'"_s), 3464);
    EXPECT_EQ(errorOf(QString(300, u'(') + u"1"_s + QString(300, u')')), 3360);
}

TEST(Criterion, functionsOfAnEngineAreUnknown) {
    for (const QString& call :
         {u"sqlite_version()"_s, u"load_extension('x')"_s, u"pg_sleep(1)"_s, u"mkl_like('a', 'a')"_s, u"as_date(1)"_s,
          u"coalesce(1, 2)"_s, u"DLookup('a', 'b')"_s, u"Shell('x')"_s})
        EXPECT_EQ(errorOf(call + u" = 1"_s), 3085) << qPrintable(call);
}

TEST(Criterion, errorNamesTokenAndPlace) {
    try {
        criterion(u"nr = 1 Und Aktiv"_s);
        FAIL();
    } catch (const mkl::RunTimeError& error) {
        ASSERT_TRUE(error.place());
        EXPECT_EQ(error.place()->token, u"Und"_s);
        EXPECT_EQ(error.place()->position, 7);
    }
}

TEST(Criterion, emptyRightSideIsTheValueItself) {
    EXPECT_TRUE(holds(u"[Nr] "_s));
    EXPECT_TRUE(holds(u"Aktiv"_s));
    EXPECT_FALSE(holds(u"Not Aktiv"_s));
    EXPECT_FALSE(holds(u"Aktiv = 1"_s));
    EXPECT_TRUE(holds(u"Aktiv = True And Aktiv = -1"_s));
}

TEST(Criterion, brokenClassMatchesNothing) {
    EXPECT_FALSE(holds(u"Artikelname Like '*[*'"_s));
    EXPECT_FALSE(holds(u"Artikelname Like '[z-a]*'"_s));
    EXPECT_FALSE(holds(u"Artikelname Like '[' & 'a'"_s));
    EXPECT_TRUE(holds(u"Not Artikelname Like '['"_s));
    EXPECT_FALSE(holds(u"Nr Like Any & '['"_s));
}

TEST(Criterion, threeValuedLogic) {
    const QString unknown = u"(ARTKAT.LetzteÄnderung = #1/1/2000#)"_s;
    EXPECT_FALSE(holds(unknown));
    EXPECT_FALSE(holds(u"Not "_s + unknown));
    EXPECT_TRUE(holds(unknown + u" Is Null"_s));
    EXPECT_TRUE(holds(u"True Or "_s + unknown));
    EXPECT_FALSE(holds(u"True And "_s + unknown));
    EXPECT_TRUE(holds(u"Not (False And "_s + unknown + u")"_s));
    EXPECT_TRUE(holds(u"(True Xor "_s + unknown + u") Is Null"_s));
    EXPECT_TRUE(holds(u"False Imp "_s + unknown));
    EXPECT_TRUE(holds(unknown + u" Imp True"_s));
    EXPECT_FALSE(holds(u"Nr In (1, Null)"_s));
    EXPECT_FALSE(holds(u"Not Nr In (1, Null)"_s));
    EXPECT_TRUE(holds(u"Not Nr In (1, 2)"_s));
    EXPECT_TRUE(holds(u"Nr In (Null, 17)"_s));
}

TEST(Criterion, comparisonsFollowTheTypes) {
    EXPECT_TRUE(holds(u"Artikelname = 'STRASSENSCHRAUBE m8 '"_s));
    EXPECT_TRUE(holds(u"Right(Nr, 1) = 7"_s)); // a computed text against a number
    EXPECT_TRUE(holds(u"Any = 12"_s));
    EXPECT_TRUE(holds(u"Preis = 1.25 And Preis Between 2 And 1"_s));
    EXPECT_TRUE(holds(u"ARTIKEL.LetzteÄnderung Between #1/2/2000# And #1/1/2000#"_s));
    EXPECT_FALSE(holds(u"ARTIKEL.LetzteÄnderung Between #12/31/1999# And #1/1/2000#"_s));
    EXPECT_TRUE(holds(u"ARTIKEL.LetzteÄnderung + 1 = #1/2/2000 18:00#"_s));
    EXPECT_TRUE(holds(u"Expr1000 * 2 = 5"_s));
}

TEST(Criterion, longListsAnswerLikeShortOnes) {
    const auto list = [](const QString& value, const QString& items) {
        return holds(value + u" In ("_s + items + u')');
    };
    const QString numbers = u"9, 8, 7, 6, 5, 4, 3, 2, 1"_s, texts = u"'i', 'h', 'g', 'f', 'e', 'd', 'c', 'b', 'a'"_s;
    EXPECT_FALSE(list(u"Nr"_s, numbers));
    EXPECT_TRUE(list(u"Nr"_s, numbers + u", 17.0"_s));
    EXPECT_TRUE(list(u"Not Nr"_s, numbers));
    EXPECT_FALSE(list(u"Not Nr"_s, numbers + u", Null"_s));
    EXPECT_TRUE(list(u"Nr"_s, numbers + u", Null, 17"_s));
    EXPECT_TRUE(list(u"Aktiv"_s, numbers + u", True"_s));
    EXPECT_TRUE(list(u"Artikelname"_s, texts + u", 'STRASSENSCHRAUBE m8'"_s));
    EXPECT_FALSE(list(u"Artikelname"_s, texts));
    EXPECT_TRUE(list(u"Right(Nr, 1)"_s, numbers)); // a computed text against numbers
    EXPECT_FALSE(list(u"ARTKAT.LetzteÄnderung"_s, u"#1/1/2000#, "_s.repeated(9) + u"#1/2/2000#"_s));
    EXPECT_TRUE(list(u"ARTIKEL.LetzteÄnderung"_s, u"#1/1/2000#, "_s.repeated(9) + u"#1/1/2000 18:00#"_s));
    EXPECT_EQ(errorOf(u"Nr In ("_s + numbers + u", 'x')"_s), 3464);
}

TEST(Criterion, datesBeforeTheZeroDayCompareByTime) {
    const QList<OutputColumn> dates = {{u"d"_s, ColumnType::Date, {}, {}}};
    jet::RowsInMemory rows({{Variant::date(-1.75)}}); // 1899-12-29 18:00
    rows.moveTo(0);
    EXPECT_TRUE(Criterion::parse(u"d > #1899-12-29 06:00#", dates).holds(rows));
}

TEST(Criterion, computesNoMoreThanItNeeds) {
    EXPECT_TRUE(holds(u"Nr = 17 Or 1 / 0 = 1"_s));
    EXPECT_FALSE(holds(u"Nr = 16 And 1 / (Nr - 17) = 1"_s));
    EXPECT_TRUE(holds(u"IIf(Nr = 17, 1, 1 / 0) = 1"_s));
    EXPECT_TRUE(holds(u"Choose(2, 1 / 0, 'b') = 'b'"_s));
    EXPECT_TRUE(holds(u"Switch(Nr = 17, 'a', True, 1 / 0) = 'a'"_s));
    EXPECT_EQ(errorOf(u"1 / (Nr - 17) = 1 And Nr = 16"_s), 11);
    EXPECT_EQ(errorOf(u"Nr = 16 And 1 / 0 = 1"_s), 11); // what is the same for all rows comes first
    EXPECT_EQ(errorOf(u"(Nr = 17 Or 1 / 0 = 1) Xor False"_s), 11);
}

TEST(Criterion, errorsOfARow) {
    EXPECT_EQ(errorOf(u"Artikelname * 1 = 1"_s), 3464);
    EXPECT_EQ(errorOf(u"CLng(Artikelname) = 1"_s), 13);
    EXPECT_EQ(errorOf(u"Nr * 2147483647 = 1"_s), 6);
    EXPECT_EQ(errorOf(u"Nr Mod 0 = 1"_s), 11);
    EXPECT_EQ(errorOf(u"Left(Artikelname, -1) = ''"_s), 5);
    EXPECT_EQ(errorOf(u"CStr(ARTKAT.LetzteÄnderung) = ''"_s), 94);
    EXPECT_EQ(errorOf(u"Artikelname"_s), 3464);
}
