// Editing through a dynaset.
#include "dao/CatalogueTables.h"

namespace dao {

namespace {

Ref<Recordset> dynaset(const OpenedDatabase& o, const QString& source = u"T"_s) {
    return o.open(source, dbOpenDynaset);
}

void set(const Ref<Recordset>& rows, const QString& name, const Variant& value) {
    rows->Edit();
    rows->setValue(name, value);
    rows->Update();
}

} // namespace

TEST(DynasetEdit, StoresAndStaysOnTheRow) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    rows->MoveNext();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    rows->Edit();
    EXPECT_EQ(rows->EditMode(), EditMode::InProgress);
    rows->Fields(u"Name").setValue(u"neu"_s);
    EXPECT_EQ(rows->value(u"Name"), Variant(u"neu"_s));
    EXPECT_EQ(o.one(u"SELECT Name FROM T WHERE Nr=2"_s), Variant(u"zwei"_s));
    rows->Update();
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(o.one(u"SELECT Name FROM T WHERE Nr=2"_s), Variant(u"neu"_s));
    EXPECT_EQ(rows->value(u"Name"), Variant(u"neu"_s));
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    EXPECT_EQ(rows->LastModified(), rows->Bookmark());
}

TEST(DynasetEdit, RowsAndSequenceStayWhenTheOrderingColumnIsRewritten) {
    const OpenedDatabase o(catalogueTables());
    const Ref<Recordset> rows = dynaset(o, listStatement());
    Long number = 10;
    QStringList visited;
    for (; !rows->Eof(); rows->MoveNext()) {
        visited.append(rows->value(0).toText());
        set(rows, u"Order"_s, number--);
    }
    EXPECT_EQ(visited, (QStringList{u"10"_s, u"11"_s, u"12"_s, u"13"_s}));
    EXPECT_EQ(rows->RecordCount(), 4);
    EXPECT_EQ(OpenedDatabase::walk(dynaset(o, listStatement())), (QStringList{u"13"_s, u"12"_s, u"11"_s, u"10"_s}));
}

TEST(DynasetEdit, WithoutEditOrAddNew) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    EXPECT_EQ(errorOf([&] { rows->setValue(u"Name", u"x"_s); }), 3020);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
    EXPECT_EQ(errorOf([&] { rows->CancelUpdate(); }), 3020);
    EXPECT_EQ(errorOf([&] { rows->LastModified(); }), 3021);
    rows->MoveLast();
    rows->MoveNext();
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3021);
}

TEST(DynasetEdit, WhatIsPendingIsLostWithTheRow) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    const Variant bookmark = rows->Bookmark();
    const std::vector<std::function<void()>> moves{[&] { rows->MoveNext(); },
                                                   [&] { rows->MoveFirst(); },
                                                   [&] { rows->MoveLast(); },
                                                   [&] { rows->MovePrevious(); },
                                                   [&] { rows->Move(-1); },
                                                   [&] { rows->FindFirst(u"Nr=2"); },
                                                   [&] { rows->Edit(); },
                                                   [&] { rows->AddNew(); },
                                                   [&] { rows->setBookmark(bookmark); },
                                                   [&] { rows->CancelUpdate(); },
                                                   [&] { rows->setAbsolutePosition(1); },
                                                   [&] { rows->Requery(); }};
    for (const auto& move : moves) {
        rows->MoveLast();
        rows->Edit();
        rows->setValue(u"Name", u"verloren"_s);
        move();
        if (rows->EditMode() != EditMode::None) rows->CancelUpdate();
        EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
    }
    rows->Edit();
    rows->setValue(u"Name", u"verloren"_s);
    rows->Close();
    EXPECT_EQ(o.all(u"SELECT Name FROM T ORDER BY Nr"_s), (QStringList{u"eins"_s, u"zwei"_s, u"drei"_s}));
}

TEST(DynasetEdit, AddNewKeepsTheFormerRow) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->AddNew();
    EXPECT_EQ(rows->EditMode(), EditMode::Add);
    EXPECT_TRUE(rows->value(u"Name").isNull());
    rows->setValue(u"Nr", 9);
    rows->setValue(u"Name", u"neun"_s);
    rows->Update();
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->setBookmark(rows->LastModified());
    EXPECT_EQ(rows->value(u"Name"), Variant(u"neun"_s));
    EXPECT_EQ(rows->AbsolutePosition(), 3);
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    rows->MoveFirst();
    EXPECT_EQ(OpenedDatabase::walk(rows), (QStringList{u"1"_s, u"2"_s, u"3"_s, u"9"_s}));
}

TEST(DynasetEdit, AddNewToAnEmptySet) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT DEFAULT 'leer');");
    const Ref<Recordset> rows = dynaset(o);
    rows->AddNew();
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    EXPECT_EQ(rows->value(u"Name"), Variant(u"leer"_s));
    EXPECT_EQ(errorOf([&] { rows->setValue(u"Nr", 5); }), 3164);
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 1);
    rows->MoveFirst();
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
}

TEST(DynasetEdit, AddNewFillsColumnsThatAreNotShown) {
    const OpenedDatabase o(
        "CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT, Farbe TEXT DEFAULT 'rot');");
    const Ref<Recordset> rows = dynaset(o, u"SELECT Name FROM T"_s);
    rows->AddNew();
    rows->setValue(u"Name", u"eins"_s);
    rows->Update();
    EXPECT_EQ(o.all(u"SELECT Nr & Name & Farbe FROM T"_s), (QStringList{u"1einsrot"_s}));
    rows->MoveFirst();
    EXPECT_EQ(rows->value(u"Name"), Variant(u"eins"_s));
}

TEST(DynasetEdit, DeleteKeepsThePlace) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    rows->MoveLast();
    rows->MovePrevious();
    const Variant second = rows->Bookmark();
    rows->Delete();
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(errorOf([&] { rows->value(u"Nr"); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->setBookmark(second); }), 3167);
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    rows->MovePrevious();
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    EXPECT_EQ(o.all(u"SELECT Nr FROM T"_s), (QStringList{u"1"_s, u"3"_s}));
}

TEST(DynasetEdit, DeleteOfAllRows) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    for (; !rows->Eof(); rows->MoveNext())
        rows->Delete();
    EXPECT_TRUE(rows->Bof());
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MovePrevious(); }), 3021);
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM T"_s), Variant(0));
}

TEST(DynasetEdit, ClonesSeeDeletedAndAddedRows) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    const Ref<Recordset> clone = rows->Clone();
    clone->MoveFirst();
    rows->Delete();
    EXPECT_EQ(errorOf([&] { clone->value(0); }), 3167);
    clone->MoveNext();
    EXPECT_EQ(clone->value(0), Variant(2));
    rows->AddNew();
    rows->setValue(u"Nr", 4);
    rows->Update();
    clone->MoveLast();
    EXPECT_EQ(clone->value(0), Variant(4));
    set(clone, u"Name"_s, u"vier"_s);
    rows->MoveLast();
    EXPECT_EQ(rows->value(u"Name"), Variant(u"vier"_s));
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST(DynasetEdit, AChangedKeyIsFollowed) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    set(rows, u"Nr"_s, 77);
    EXPECT_EQ(rows->value(u"Nr"), Variant(77));
    rows->MoveNext();
    rows->MovePrevious();
    EXPECT_EQ(rows->value(u"Name"), Variant(u"eins"_s));
}

TEST(DynasetEdit, AFailedUpdateStaysPending) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    rows->Edit();
    rows->setValue(u"Nr", 2);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    EXPECT_EQ(rows->EditMode(), EditMode::InProgress);
    rows->setValue(u"Nr", 5);
    rows->Update();
    EXPECT_EQ(o.all(u"SELECT Nr FROM T ORDER BY Nr"_s), (QStringList{u"2"_s, u"3"_s, u"5"_s}));
    rows->AddNew();
    rows->setValue(u"Nr", 5);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    EXPECT_EQ(rows->EditMode(), EditMode::Add);
    rows->CancelUpdate();
    EXPECT_EQ(rows->RecordCount(), 1);
}

TEST(DynasetEdit, AnotherProgramComesInBetween) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    rows->Edit();
    rows->setValue(u"Name", u"meins"_s);
    o.file.run("UPDATE T SET Name = 'seins' WHERE Nr = 1");
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3197);
    rows->CancelUpdate();
    EXPECT_EQ(rows->value(u"Name"), Variant(u"seins"_s));
    rows->Edit();
    rows->setValue(u"Name", u"meins"_s);
    o.file.run("DELETE FROM T WHERE Nr = 1");
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3167);
}

TEST(DynasetEdit, WhateverAnotherProgramChangesInBetweenIsNoticed) {
    for (const QByteArray change :
         {"Name = 'EINS'", "Name = 'eins '", "Name = ''", "Name = NULL", "Zahl = 8", "Zahl = NULL", "Leer = 0",
          "Leer = 5", "Aktiv = 0", "Aktiv = NULL", "Wann = '2001-05-01 00:00:01'", "Wann = NULL", "Preis = 1.5001"}) {
        const OpenedDatabase o(
            "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT, Zahl INTEGER, Leer INTEGER, Aktiv YESNO, Wann DATETIME,"
            "Preis CURRENCY, Ort TEXT); INSERT INTO T VALUES (1, 'eins', 7, NULL, -1, '2001-05-01 00:00:00', 1.5, "
            "'A');");
        const Ref<Recordset> rows = dynaset(o);
        rows->Edit();
        rows->setValue(u"Ort", u"B"_s);
        o.file.run("UPDATE T SET " + change);
        EXPECT_EQ(errorOf([&] { rows->Update(); }), 3197) << change.constData();
        EXPECT_EQ(o.file.one("SELECT Ort FROM T"), "A") << change.constData();
        rows->CancelUpdate();
        rows->Edit(); // as it is now
        rows->setValue(u"Ort", u"B"_s);
        o.file.run("UPDATE T SET Nr = Nr"); // a change of nothing
        EXPECT_EQ(errorOf([&] { rows->Update(); }), 0) << change.constData();
        EXPECT_EQ(o.file.one("SELECT Ort FROM T"), "B") << change.constData();
    }
}

TEST(DynasetEdit, AJoinTouchesOnlyTheTableOfTheColumn) {
    const OpenedDatabase o(catalogueTables());
    const Ref<Recordset> rows = dynaset(o, listStatement());
    rows->FindFirst(u"[Artikel-Schlüssel]=1");
    rows->Edit();
    rows->setValue(u"Order", 42);
    rows->setValue(u"ARTKAT.LetzteÄnderung", Variant::date(37000));
    o.file.run("UPDATE ARTIKEL SET Artikelname = 'Kneifzange' WHERE \"Artikel-Schlüssel\" = 1");
    rows->Update();
    EXPECT_EQ(rows->value(u"Artikelname"), Variant(u"Kneifzange"_s));
    EXPECT_EQ(o.all(u"SELECT Order FROM ARTKAT ORDER BY ArtKatID"_s),
              (QStringList{u"42"_s, u"2"_s, u"3"_s, u"4"_s, u"1"_s}));
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM ARTIKEL WHERE LetzteÄnderung Is Null"_s), Variant(4));
    EXPECT_EQ(rows->value(u"ARTKAT.LetzteÄnderung"), Variant::date(37000));
    EXPECT_TRUE(rows->value(u"ARTIKEL.LetzteÄnderung").isNull());
}

TEST(DynasetEdit, TheOneSideOfAJoinCanBeWrittenToo) {
    const OpenedDatabase o(catalogueTables());
    const Ref<Recordset> rows = dynaset(o, listStatement());
    rows->Edit();
    rows->setValue(u"Artikelname", u"Neu"_s);
    rows->setValue(u"ARTIKEL.LetzteÄnderung", Variant::date(37000));
    rows->setValue(u"Order", 5);
    rows->Update();
    EXPECT_EQ(o.one(u"SELECT Artikelname FROM ARTIKEL WHERE [Artikel-Schlüssel]=1"_s), Variant(u"Neu"_s));
    EXPECT_EQ(o.one(u"SELECT Order FROM ARTKAT WHERE ArtKatID=10"_s), Variant(5));
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM ARTKAT WHERE LetzteÄnderung Is Null"_s), Variant(5));
}

TEST(DynasetEdit, BothTablesOfAJoinOrNeither) {
    const OpenedDatabase o(catalogueTables() + "CREATE TRIGGER Nein BEFORE UPDATE ON ARTKAT WHEN NEW.\"Order\" = 99"
                                               " BEGIN SELECT RAISE(ABORT, 'nein'); END;");
    const Ref<Recordset> rows = dynaset(o, listStatement());
    rows->Edit();
    rows->setValue(u"Artikelname", u"Neu"_s);
    rows->setValue(u"Order", 99);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3317);
    EXPECT_EQ(o.one(u"SELECT Artikelname FROM ARTIKEL WHERE [Artikel-Schlüssel]=1"_s), Variant(u"Zange"_s));
}

TEST(DynasetEdit, DeleteThroughAJoinTakesTheManySideAlone) {
    const OpenedDatabase o(catalogueTables());
    const Ref<Recordset> rows = dynaset(o, listStatement());
    rows->Delete();
    EXPECT_EQ(o.all(u"SELECT ArtKatID FROM ARTKAT ORDER BY ArtKatID"_s),
              (QStringList{u"11"_s, u"12"_s, u"13"_s, u"14"_s}));
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM ARTIKEL"_s), Variant(4));
}

TEST(DynasetEdit, AddNewThroughAJoinFillsTheManySide) {
    const OpenedDatabase o(catalogueTables());
    const Ref<Recordset> rows = dynaset(o, u"SELECT ARTKAT.[Artikel-Schlüssel], [Kategorie-Schlüssel], Order,"
                                           " Artikelname FROM ARTIKEL INNER JOIN ARTKAT ON"
                                           " ARTIKEL.[Artikel-Schlüssel] = ARTKAT.[Artikel-Schlüssel]"_s);
    rows->AddNew();
    rows->setValue(u"Artikel-Schlüssel", 4);
    rows->setValue(u"Kategorie-Schlüssel", 8);
    EXPECT_EQ(errorOf([&] { rows->setValue(u"Artikelname", u"x"_s); }), 3164);
    rows->Update();
    rows->setBookmark(rows->LastModified());
    EXPECT_EQ(rows->value(u"Artikelname"), Variant(u"Öl"_s));
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM ARTKAT WHERE [Kategorie-Schlüssel]=8"_s), Variant(2));
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM ARTIKEL"_s), Variant(4));
}

TEST(DynasetEdit, TheAbsentSideOfAnOuterJoin) {
    const OpenedDatabase o(catalogueTables() + "INSERT INTO ARTKAT VALUES (30, 99, 7, 9, NULL);");
    const Ref<Recordset> rows =
        dynaset(o, u"SELECT ArtKatID, Order, Artikelname FROM ARTKAT LEFT JOIN ARTIKEL ON"
                   " ARTIKEL.[Artikel-Schlüssel] = ARTKAT.[Artikel-Schlüssel] WHERE ArtKatID=30"_s);
    EXPECT_TRUE(rows->value(u"Artikelname").isNull());
    rows->Edit();
    EXPECT_EQ(errorOf([&] { rows->setValue(u"Artikelname", u"x"_s); }), 3164);
    rows->setValue(u"Order", 10);
    rows->Update();
    EXPECT_EQ(rows->value(u"Order"), Variant(10));
    rows->Delete();
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM ARTKAT"_s), Variant(5));
}

TEST(DynasetEdit, InsideATransaction) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = dynaset(o);
    o.workspace->BeginTrans();
    set(rows, u"Name"_s, u"neu"_s);
    EXPECT_EQ(rows->value(u"Name"), Variant(u"neu"_s));
    rows->MoveNext();
    o.workspace->Rollback();
    rows->MoveFirst();
    EXPECT_EQ(rows->value(u"Name"), Variant(u"eins"_s));
}

} // namespace dao
