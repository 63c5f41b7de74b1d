// Type 2: which rows there are, and what they show.
#include "dao/CatalogueTables.h"

namespace dao {

namespace {

Ref<Recordset> dynaset(const OpenedDatabase& o, const QString& source = u"T"_s) {
    return o.open(source, dbOpenDynaset);
}

} // namespace

TEST(Dynaset, OpensOnItsFirstRow) {
    const OpenedDatabase o(threeRows());
    for (const Ref<Recordset>& rows :
         {dynaset(o), dynaset(o, u"SELECT Nr, Name FROM T"_s), o.open(u"SELECT * FROM T"_s, 0)}) {
        EXPECT_EQ(rows->Type(), dbOpenDynaset);
        EXPECT_TRUE(rows->Updatable());
        EXPECT_EQ(rows->RecordCount(), 1);
        EXPECT_EQ(rows->AbsolutePosition(), 0);
        EXPECT_EQ(rows->value(u"Name"), Variant(u"eins"_s));
        EXPECT_EQ(rows->Fields(u"Name").SourceTable(), u"T"_s);
        rows->MoveLast();
        EXPECT_EQ(rows->RecordCount(), 3);
    }
}

TEST(Dynaset, Empty) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY);");
    const Ref<Recordset> rows = dynaset(o);
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3021);
    rows->FindFirst(u"Nr=1");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_TRUE(rows->Eof());
}

TEST(Dynaset, ErrorsOfTheOpening) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(errorOf([&] { dynaset(o, u"SELECT Nr FROM U"_s); }), 3078);
    EXPECT_EQ(errorOf([&] { dynaset(o, u"SELECT Farbe FROM T"_s); }), 3061);
    EXPECT_EQ(errorOf([&] { dynaset(o, u"DELETE FROM T"_s); }), 3219);
    EXPECT_EQ(errorOf([&] { dynaset(o, u"SELECT Nr FROM T WHERE 1/(Nr-2)=1"_s); }), 11);
}

// What other programs change shows when a row is visited; rows and their sequence stay those of the opening.
TEST(Dynaset, ShowsChangesOfItsRowsButNoNewRows) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o, u"SELECT Nr, Name FROM T WHERE Nr < 9 ORDER BY Name"_s);
    o.file.run("UPDATE T SET Name = 'aaa' WHERE Nr = 2; INSERT INTO T VALUES (4, 'bbb')");
    EXPECT_EQ(OpenedDatabase::walk(rows), (QStringList{u"3"_s, u"1"_s, u"2"_s}));
    rows->MoveLast();
    EXPECT_EQ(rows->value(u"Name"), Variant(u"aaa"_s));
    o.database->Execute(u"UPDATE T SET Name='zzz' WHERE Nr=2"_s, dbFailOnError);
    EXPECT_EQ(rows->value(u"Name"), Variant(u"zzz"_s));
    rows->Requery();
    EXPECT_EQ(OpenedDatabase::walk(rows), (QStringList{u"4"_s, u"3"_s, u"1"_s, u"2"_s}));
}

TEST(Dynaset, KeepsARowThatItsConditionNoLongerSelects) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o, u"SELECT Nr, Name FROM T WHERE Name='zwei'"_s);
    o.file.run("UPDATE T SET Name = 'anders'");
    EXPECT_EQ(rows->value(u"Name"), Variant(u"anders"_s));
}

TEST(Dynaset, ARowDeletedByAnotherProgramIsDeleted) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    o.file.run("DELETE FROM T WHERE Nr = 2");
    rows->MoveNext();
    EXPECT_EQ(errorOf([&] { rows->value(u"Name"); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3167);
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->FindFirst(u"Nr<3");
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    rows->FindNext(u"Nr<3");
    EXPECT_TRUE(rows->NoMatch());
}

TEST(Dynaset, FindSeesCurrentValues) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    o.file.run("UPDATE T SET Name = 'neu' WHERE Nr = 3");
    rows->FindFirst(u"Name='neu'");
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    rows->FindFirst(u"Name='drei'");
    EXPECT_TRUE(rows->NoMatch());
}

TEST(Dynaset, HasNoCurrentRowAfterAFailedFind) {
    const OpenedDatabase o(threeRows());
    for (int mode = 0; mode < 4; ++mode) {
        const Ref<Recordset> rows = dynaset(o);
        rows->MoveNext();
        if (mode == 0) rows->FindFirst(u"Nr=9");
        if (mode == 1) rows->FindNext(u"Nr=9");
        if (mode == 2) rows->FindPrevious(u"Nr=9");
        if (mode == 3) rows->FindLast(u"Nr=9");
        EXPECT_TRUE(rows->NoMatch());
        EXPECT_FALSE(rows->Eof());
        EXPECT_FALSE(rows->Bof());
        EXPECT_EQ(rows->AbsolutePosition(), -1);
        EXPECT_EQ(errorOf([&] { rows->value(0); }), 3021);
        EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3021);
        EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3021);
        EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
        EXPECT_EQ(errorOf([&] { rows->FindNext(u"Nr=1"); }), 3021);
        rows->FindFirst(u"Nr=2");
        EXPECT_EQ(rows->value(0), Variant(2));
        EXPECT_FALSE(rows->NoMatch());
        rows->MoveFirst();
        EXPECT_EQ(rows->value(0), Variant(1));
    }
}

TEST(Dynaset, ItsCloneKeepsItsPlaceAfterAFailedFind) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    const Ref<Recordset> clone = rows->Clone();
    EXPECT_EQ(clone->Type(), dbOpenDynaset);
    EXPECT_EQ(errorOf([&] { clone->value(0); }), 3021);
    clone->FindFirst(u"Nr=2");
    clone->FindFirst(u"Nr=9");
    EXPECT_TRUE(clone->NoMatch());
    EXPECT_EQ(clone->value(0), Variant(2));
    rows->setBookmark(clone->Bookmark());
    EXPECT_EQ(rows->value(0), Variant(2));
}

TEST(Dynaset, BookmarksDieWithARequery) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    const Variant first = rows->Bookmark();
    EXPECT_EQ(errorOf([&] { dynaset(o)->setBookmark(first); }), 3159);
    rows->Requery();
    EXPECT_EQ(errorOf([&] { rows->setBookmark(first); }), 3159);
}

TEST(Dynaset, WithoutAPrimaryKey) {
    const OpenedDatabase o("CREATE TABLE T (x INTEGER, y TEXT); INSERT INTO T VALUES (5, 'a'), (5, 'a'), (6, 'b');");
    const Ref<Recordset> rows = dynaset(o);
    rows->MoveNext();
    rows->Edit();
    rows->setValue(u"y", u"zweite"_s);
    rows->Update();
    EXPECT_EQ(o.all(u"SELECT y FROM T ORDER BY y"_s), (QStringList{u"a"_s, u"b"_s, u"zweite"_s}));
    EXPECT_EQ(rows->value(u"y"), Variant(u"zweite"_s));
}

TEST(Dynaset, QueriesThatCannotBeEdited) {
    const OpenedDatabase o(catalogueTables());
    const QStringList queries{
        u"SELECT DISTINCT Aktiv FROM ARTIKEL"_s, u"SELECT Aktiv, Count(*) AS Anzahl FROM ARTIKEL GROUP BY Aktiv"_s,
        u"SELECT Max(Artikelname) AS M FROM ARTIKEL"_s, u"SELECT Artikelname FROM ARTIKEL, KATEGORIEN"_s};
    for (const QString& query : queries) {
        SCOPED_TRACE(query.toStdString());
        const Ref<Recordset> rows = dynaset(o, query);
        EXPECT_EQ(rows->Type(), dbOpenDynaset);
        EXPECT_FALSE(rows->Updatable());
        const Variant before = rows->value(0);
        EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3326);
        EXPECT_EQ(errorOf([&] { rows->AddNew(); }), 3326);
        EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3326);
        EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
        rows->MoveLast();
        rows->FindFirst(u"1=2");
        EXPECT_TRUE(rows->NoMatch());
        EXPECT_EQ(errorOf([&] { rows->value(0); }), 3021);
        rows->MoveFirst();
        EXPECT_EQ(rows->value(0), before);
        EXPECT_EQ(rows->OpenRecordset()->Type(), dbOpenDynaset);
    }
}

TEST(Dynaset, OfAReadOnlyDatabase) {
    const OpenedDatabase o(threeRows(), {.readOnly = true});
    const Ref<Recordset> rows = dynaset(o);
    EXPECT_FALSE(rows->Updatable());
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3027);
    EXPECT_EQ(errorOf([&] { rows->AddNew(); }), 3027);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3027);
}

TEST(Dynaset, ComputedColumns) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o, u"SELECT Nr, Name & '!' AS Ruf, Nr * 2 AS Doppelt FROM T WHERE Nr > 1"_s);
    EXPECT_EQ(rows->value(u"Ruf"), Variant(u"zwei!"_s));
    EXPECT_EQ(rows->value(u"Doppelt"), Variant(4));
    rows->Edit();
    EXPECT_EQ(errorOf([&] { rows->setValue(u"Ruf", u"x"_s); }), 3164);
    rows->FindFirst(u"Doppelt=6");
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
}

TEST(Dynaset, LiteralsOfOneShapeDoNotMix) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> one = dynaset(o, u"SELECT Nr, Nr + 100 AS Plus FROM T WHERE Nr = 1"_s);
    const Ref<Recordset> two = dynaset(o, u"SELECT Nr, Nr + 200 AS Plus FROM T WHERE Nr = 2"_s);
    EXPECT_EQ(one->value(u"Plus"), Variant(101));
    EXPECT_EQ(two->value(u"Plus"), Variant(202));
}

TEST(Dynaset, AfterTheTableChangedItsForm) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(dynaset(o)->FieldCount(), 2);
    o.file.run("ALTER TABLE T ADD COLUMN Farbe TEXT DEFAULT 'rot'");
    EXPECT_EQ(dynaset(o)->value(u"Farbe"), Variant(u"rot"_s));
}

// A row that is left out of a join later on stays; a filter and a sort see the rows as they are.
TEST(Dynaset, DerivedSets) {
    const OpenedDatabase o(catalogueTables());
    const Ref<Recordset> rows = dynaset(o, listStatement());
    o.file.run("UPDATE ARTIKEL SET Artikelname = 'Ananas' WHERE \"Artikel-Schlüssel\" = 4;"
               "DELETE FROM ARTKAT WHERE ArtKatID = 12");
    rows->setSort(u"Artikelname"_s);
    const Ref<Recordset> derived = rows->OpenRecordset();
    EXPECT_EQ(derived->Type(), dbOpenDynaset);
    QStringList names;
    for (; !derived->Eof(); derived->MoveNext())
        names.append(derived->value(u"Artikelname").toText());
    EXPECT_EQ(names, (QStringList{u"Ananas"_s, u"Äpfel"_s, u"Zange"_s}));
    rows->setSort({});
    rows->setFilter(u"[ARTKAT].[Artikel-Schlüssel] > 1"_s);
    EXPECT_EQ(OpenedDatabase::walk(rows->OpenRecordset(dbOpenSnapshot)), (QStringList{u"11"_s, u"13"_s}));
    EXPECT_EQ(OpenedDatabase::walk(rows->OpenRecordset(dbOpenForwardOnly)), (QStringList{u"11"_s, u"13"_s}));
    EXPECT_EQ(errorOf([&] { rows->OpenRecordset(dbOpenTable); }), 3219);
}

TEST(Dynaset, RequeryOfADerivedSetKeepsFilterAndSort) {
    const OpenedDatabase o(catalogueTables());
    const Ref<Recordset> rows = dynaset(o, listStatement());
    rows->setSort(u"Artikelname DESC"_s);
    rows->setFilter(u"Order>1"_s);
    const Ref<Recordset> derived = rows->OpenRecordset();
    EXPECT_EQ(OpenedDatabase::walk(derived), (QStringList{u"13"_s, u"12"_s, u"11"_s}));
    o.file.run("INSERT INTO ARTKAT VALUES (20, 1, 7, 9, NULL); INSERT INTO ARTKAT VALUES (21, 1, 7, 0, NULL)");
    derived->Requery();
    EXPECT_EQ(OpenedDatabase::walk(derived), (QStringList{u"20"_s, u"13"_s, u"12"_s, u"11"_s}));
    derived->MoveFirst();
    derived->Edit();
    derived->setValue(u"Order", 99);
    derived->Update();
    EXPECT_EQ(o.one(u"SELECT Order FROM ARTKAT WHERE ArtKatID=20"_s), Variant(99));
}

} // namespace dao
