#include "dao/OpenedDatabase.h"
#include "dao/PlanCache.h"

#include <random>

namespace dao {

namespace {

QByteArray fiveRows() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Art INTEGER, Name TEXT, Preis CURRENCY, Am DATETIME, Aktiv YESNO);"
           "INSERT INTO T VALUES (1, 7, 'Äpfel', 1.5, '2001-05-01 00:00:00', -1), (2, 8, 'Birne', NULL, NULL, 0),"
           "(3, 7, 'öl', 2, '2002-05-01 00:00:00', -1), (4, 8, NULL, 9, NULL, NULL), (5, 7, 'Straße', 0, NULL, 0);";
}

QByteArray largeTable() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Art INTEGER, Name TEXT);"
           "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 2000)"
           " INSERT INTO T SELECT i, i % 7, CASE WHEN i % 5 <> 0 THEN 'n' || (i % 100) END FROM n;"
           "CREATE INDEX Art ON T (Art);";
}

} // namespace

TEST(Find, FirstAndLastIgnoreThePosition) {
    const OpenedDatabase o(fiveRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MoveLast();
    rows->FindFirst(u"Art=7");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    rows->FindLast(u"Art=8");
    EXPECT_EQ(rows->value(u"Nr"), Variant(4));
    EXPECT_EQ(rows->AbsolutePosition(), 3);
}

TEST(Find, NextAndPreviousStartBesideThePosition) {
    const OpenedDatabase o(fiveRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->FindNext(u"Art=7");
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    rows->FindNext(u"Art=7");
    EXPECT_EQ(rows->value(u"Nr"), Variant(5));
    rows->FindPrevious(u"Art=7");
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    rows->FindPrevious(u"Art=7 Or Art=8");
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
    EXPECT_FALSE(rows->NoMatch());
}

TEST(Find, FromBeyondTheEnds) {
    const OpenedDatabase o(fiveRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MovePrevious();
    rows->FindPrevious(u"Art=7");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_TRUE(rows->Bof());
    rows->FindNext(u"Art=7");
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    rows->MoveLast();
    rows->MoveNext();
    rows->FindNext(u"Art=7");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_TRUE(rows->Eof());
    rows->FindPrevious(u"Art=8");
    EXPECT_EQ(rows->value(u"Nr"), Variant(4));
}

TEST(Find, ASnapshotStaysWhereItWas) {
    const OpenedDatabase o(fiveRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MoveNext();
    for (int mode = 0; mode < 4; ++mode) {
        if (mode == 0) rows->FindFirst(u"Nr=99");
        if (mode == 1) rows->FindNext(u"Nr=1");
        if (mode == 2) rows->FindPrevious(u"Nr=5");
        if (mode == 3) rows->FindLast(u"Nr=99");
        EXPECT_TRUE(rows->NoMatch());
        EXPECT_EQ(rows->value(u"Nr"), Variant(2));
    }
}

TEST(Find, MovesDoNotChangeNoMatch) {
    const OpenedDatabase o(fiveRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    EXPECT_FALSE(rows->NoMatch());
    rows->FindFirst(u"Nr=99");
    rows->MoveNext();
    EXPECT_TRUE(rows->NoMatch());
    rows->FindFirst(u"Nr=5");
    rows->MoveFirst();
    EXPECT_FALSE(rows->NoMatch());
}

TEST(Find, InAnEmptySet) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY);");
    for (const QString& source : {u"T"_s, u"SELECT Nr FROM T"_s}) {
        const Ref<Recordset> rows = o.open(source);
        const auto expectNoMatch = [&](auto find) {
            ((*rows).*find)(u"Nr=1");
            EXPECT_TRUE(rows->NoMatch());
            EXPECT_TRUE(rows->Eof());
            EXPECT_TRUE(rows->Bof());
        };
        expectNoMatch(&Recordset::FindFirst);
        expectNoMatch(&Recordset::FindNext);
        expectNoMatch(&Recordset::FindPrevious);
        expectNoMatch(&Recordset::FindLast);
    }
}

TEST(Find, CriteriaMeanWhatTheyMeanInAStatement) {
    const OpenedDatabase o(fiveRows());
    const QStringList criteria{u"Name Like 'Ö*'"_s,
                               u"Name='ÄPFEL'"_s,
                               u"Name='STRASSE'"_s,
                               u"[Name] Is Null"_s,
                               u"Preis>1 And Preis<2"_s,
                               u"Aktiv"_s,
                               u"Aktiv=True"_s,
                               u"Aktiv=1"_s,
                               u"Am=#5/1/2002#"_s,
                               u"T.Nr=3"_s,
                               u"Nr Between 4 And 2"_s,
                               u"Nr In (9,5)"_s,
                               u"Right(Nr, 1) = 4"_s,
                               u"Nz(Preis, 0)=0 And Nr>1"_s,
                               u"Nr*2=10"_s,
                               u"Year(Am)=2001"_s};
    for (const QString& criterion : criteria) {
        const QStringList expected = o.all(u"SELECT Nr FROM T WHERE "_s + criterion + u" ORDER BY Nr"_s);
        const Ref<Recordset> rows = o.open(u"T"_s);
        QStringList found;
        for (rows->FindFirst(criterion); !rows->NoMatch(); rows->FindNext(criterion))
            found.append(rows->value(u"Nr").toText());
        EXPECT_EQ(found, expected) << criterion.toStdString();
    }
}

TEST(Find, Errors) {
    const OpenedDatabase o(fiveRows());
    for (const QString& source : {u"T"_s, u"SELECT * FROM T WHERE Nr > 9"_s}) {
        const Ref<Recordset> rows = o.open(source);
        const auto errorOfFind = [&](QStringView criterion) { return errorOf([&] { rows->FindFirst(criterion); }); };
        EXPECT_EQ(errorOfFind(u"Nr="), 3077);
        EXPECT_EQ(errorOfFind(u""), 3077);
        EXPECT_EQ(errorOfFind(u"Nr=1; DELETE FROM T"), 3077);
        EXPECT_EQ(errorOfFind(u"Farbe=1"), 3070);
        EXPECT_EQ(errorOfFind(u"U.Nr=1"), 3070);
        EXPECT_EQ(errorOfFind(u"Nr='1'"), 3464);
    }
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MoveNext();
    EXPECT_EQ(errorOf([&] { rows->FindFirst(u"1/(Nr-3)=5"); }), 11);
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
}

TEST(Find, OnlyWhereItIsOffered) {
    const OpenedDatabase o(fiveRows());
    for (const Long type : {dbOpenTable, dbOpenForwardOnly}) {
        const Ref<Recordset> rows = o.open(u"T"_s, type);
        EXPECT_EQ(errorOf([&] { rows->FindFirst(u"Nr=1"); }), 3251);
        EXPECT_EQ(errorOf([&] { rows->FindNext(u"Nr=1"); }), 3251);
        EXPECT_EQ(errorOf([&] { rows->FindPrevious(u"Nr=1"); }), 3251);
        EXPECT_EQ(errorOf([&] { rows->FindLast(u"Nr=1"); }), 3251);
    }
}

TEST(Find, ABrokenPatternMatchesNothing) {
    const OpenedDatabase o(largeTable());
    for (const QString& source : {u"T"_s, u"SELECT * FROM T WHERE Nr < 9"_s}) {
        const Ref<Recordset> rows = o.open(source);
        rows->FindFirst(u"Name Like '[a'");
        EXPECT_TRUE(rows->NoMatch());
    }
}

// Found without reading the rows, the answers are those of a walk over them.
TEST(Find, AsFirstUseOfALargeTable) {
    const OpenedDatabase o(largeTable());
    const quint32 seed = 20260;
    std::mt19937 random(seed);
    const auto number = [&](int limit) { return QString::number(random() % static_cast<quint32>(limit)); };
    for (int round = 0; round < 300; ++round) {
        const QStringList forms{u"Art=%1 And Nr>%2"_s, u"Name='n%1' Or Nr=%2"_s, u"Name Like '*%1*' And Art=%2"_s,
                                u"Art In (%1,%2)"_s,   u"Nr*2=%1%2"_s,           u"T.[Nr]=%1 Or Nr>19%2"_s};
        const QString criterion = forms[qsizetype(random()) % forms.size()].arg(number(9), number(2500));
        const Ref<Recordset> fast = o.open(u"T"_s);
        const Ref<Recordset> read = o.open(u"T"_s);
        read->MoveLast();
        read->value(0);
        read->MoveFirst();
        for (const auto& rows : {fast, read}) {
            if (round % 2 == 0)
                rows->FindFirst(criterion);
            else
                rows->FindLast(criterion);
        }
        SCOPED_TRACE(u"seed %1, %2"_s.arg(seed).arg(criterion).toStdString());
        ASSERT_EQ(fast->NoMatch(), read->NoMatch());
        ASSERT_EQ(fast->RecordCount(), fast->AbsolutePosition() + 1);
        ASSERT_EQ(fast->AbsolutePosition(), read->AbsolutePosition());
        ASSERT_EQ(fast->value(u"Nr"), read->value(u"Nr"));
        fast->FindNext(criterion);
        read->FindNext(criterion);
        ASSERT_EQ(fast->NoMatch(), read->NoMatch());
        ASSERT_EQ(fast->value(u"Nr"), read->value(u"Nr"));
    }
}

TEST(Find, AMatchIsThatOfTheOpening) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->FindFirst(u"Nr=1500");
    o.database->Execute(u"DELETE FROM T WHERE Nr > 1000"_s, dbFailOnError);
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->value(u"Nr"), Variant(1500));
    rows->FindFirst(u"Nr=1800");
    EXPECT_FALSE(rows->NoMatch());
}

TEST(Find, AMatchThatAnotherProgramTakesAwayAtOnce) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->FindFirst(u"Nr=1500");
    o.file.run("DELETE FROM T WHERE Nr > 1000");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(errorOf([&] { rows->value(u"Nr"); }), 3021);
}

// Thousand times the whole table, for one question each: none of them copies it.
TEST(Find, ManyWholeTablesForOneQuestionEach) {
    const OpenedDatabase o("CREATE TABLE ARTKAT (ArtKatID INTEGER PRIMARY KEY, \"Artikel-Schlüssel\" INTEGER,"
                           " \"Kategorie-Schlüssel\" INTEGER);"
                           "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 100000)"
                           " INSERT INTO ARTKAT SELECT i, i / 2, i % 11 FROM n;"
                           "CREATE INDEX Artikel ON ARTKAT (\"Artikel-Schlüssel\");");
    int found = 0;
    for (int article = 1; article <= 1000; ++article) {
        const Ref<Recordset> rows = o.open(u"ArtKat"_s);
        rows->FindFirst(u"[Artikel-Schlüssel]=%1 AND [Kategorie-Schlüssel]=%2"_s.arg(article).arg(3));
        if (!rows->NoMatch()) ++found;
        rows->Close();
    }
    EXPECT_EQ(found, o.one(u"SELECT Count(*) FROM ARTKAT WHERE [Artikel-Schlüssel] BETWEEN 1 AND 1000"
                           " AND [Kategorie-Schlüssel] = 3"_s)
                         .toLong());
    EXPECT_LE(o.database->planCache().compilations(), 3);
}

} // namespace dao
