#include "dao/OpenedDatabase.h"

namespace dao {

namespace {

const QString allRows = u"SELECT Nr, Name FROM T ORDER BY Nr"_s;

QByteArray emptyTable() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT);";
}

} // namespace

TEST(Snapshot, OpensOnItsFirstRow) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows);
    EXPECT_EQ(rows->Type(), dbOpenSnapshot);
    EXPECT_FALSE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    EXPECT_EQ(rows->value(u"Name"), Variant(u"eins"_s));
}

TEST(Snapshot, CountsTheRowsVisited) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows);
    EXPECT_EQ(rows->RecordCount(), 1);
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->MoveFirst();
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST(Snapshot, MovesToBothEndsAndNoFurther) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows);
    rows->MovePrevious();
    EXPECT_TRUE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(rows->AbsolutePosition(), -1);
    EXPECT_EQ(errorOf([&] { rows->value(0); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MovePrevious(); }), 3021);
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    rows->MoveLast();
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    EXPECT_FALSE(rows->Bof());
    EXPECT_EQ(errorOf([&] { rows->Fields(u"Nr").Value(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
    rows->MovePrevious();
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    EXPECT_EQ(rows->AbsolutePosition(), 2);
}

TEST(Snapshot, Empty) {
    const OpenedDatabase o(emptyTable());
    const Ref<Recordset> rows = o.open(allRows);
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_EQ(rows->AbsolutePosition(), -1);
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveLast(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MovePrevious(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->value(0); }), 3021);
}

TEST(Snapshot, IsFrozen) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows);
    o.database->Execute(u"DELETE FROM T"_s, dbFailOnError);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->value(u"Name"), Variant(u"drei"_s));
}

TEST(Snapshot, HasNoIndex) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows);
    EXPECT_EQ(errorOf([&] { rows->setIndex(u"PrimaryKey"_s); }), 3251);
    EXPECT_EQ(errorOf([&] { rows->Index(); }), 3251);
    EXPECT_EQ(errorOf([&] { rows->Seek(u"=", 1); }), 3251);
    EXPECT_FALSE(rows->NoMatch());
}

TEST(ForwardOnly, IsASinglePass) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows, dbOpenForwardOnly);
    EXPECT_EQ(rows->Type(), dbOpenForwardOnly);
    EXPECT_EQ(rows->RecordCount(), 1);
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(errorOf([&] { rows->MovePrevious(); }), 3219);
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3219);
    EXPECT_EQ(errorOf([&] { rows->MoveLast(); }), 3219);
    EXPECT_EQ(errorOf([&] { rows->AbsolutePosition(); }), 3251);
    EXPECT_EQ(OpenedDatabase::walk(rows), (QStringList{u"2"_s, u"3"_s}));
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
}

TEST(ForwardOnly, LeavesNoReadLockBehind) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows, dbOpenForwardOnly);
    o.file.run("DELETE FROM T");
    EXPECT_EQ(OpenedDatabase::walk(rows).size(), 3);
}

TEST(Recordset, Fields) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows);
    EXPECT_EQ(rows->FieldCount(), 2);
    EXPECT_EQ(rows->Fields(u"NAME").Value(), Variant(u"eins"_s));
    EXPECT_EQ(rows->Fields(u"NAME").Name(), u"Name"_s);
    EXPECT_EQ(rows->Fields(1).SourceTable(), u"T"_s);
    EXPECT_EQ(rows->Fields(1).SourceField(), u"Name"_s);
    EXPECT_EQ(rows->Fields(u"T.Name").Value(), Variant(u"eins"_s));
    EXPECT_EQ(rows->ordinal(u"name"), 1);
    EXPECT_EQ(rows->ordinal(u"Farbe"), -1);
    EXPECT_EQ(errorOf([&] { rows->Fields(u"Farbe"); }), 3265);
    EXPECT_EQ(errorOf([&] { rows->value(u"Farbe"); }), 3265);
    EXPECT_EQ(errorOf([&] { rows->Fields(2); }), 3265);
    EXPECT_EQ(errorOf([&] { rows->Fields(-1); }), 3265);
    EXPECT_EQ(errorOf([&] { rows->Fields(0).setValue(1); }), 3020);
}

TEST(Recordset, AFieldFollowsTheCurrentRow) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows);
    const Field name = rows->Fields(u"Name");
    rows->MoveNext();
    EXPECT_EQ(name.Value(), Variant(u"zwei"_s));
}

TEST(Recordset, DoubledNamesAreQualified) {
    const OpenedDatabase o("CREATE TABLE A (Nr INTEGER PRIMARY KEY, LetzteÄnderung DATETIME);"
                           "CREATE TABLE B (Nr INTEGER PRIMARY KEY, LetzteÄnderung DATETIME, Menge INTEGER);"
                           "INSERT INTO A VALUES (1, '2001-01-01 00:00:00');"
                           "INSERT INTO B VALUES (1, '2002-02-02 00:00:00', 5);");
    const Ref<Recordset> rows =
        o.open(u"SELECT A.LetzteÄnderung, B.LetzteÄnderung, Menge FROM A INNER JOIN B ON A.Nr = B.Nr"_s);
    EXPECT_EQ(rows->Fields(0).Name(), u"A.LetzteÄnderung"_s);
    EXPECT_EQ(rows->value(u"b.letzteänderung").toText(), u"02.02.2002"_s);
    EXPECT_EQ(rows->value(u"A.LetzteÄnderung").toText(), u"01.01.2001"_s);
    EXPECT_EQ(errorOf([&] { rows->value(u"LetzteÄnderung"); }), 3265);
    EXPECT_EQ(rows->value(u"Menge"), Variant(5));
    EXPECT_EQ(rows->value(u"B.Menge"), Variant(5));
}

TEST(Recordset, Close) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(allRows);
    rows->Close();
    EXPECT_FALSE(rows->isOpen());
    EXPECT_EQ(errorOf([&] { rows->Eof(); }), 3420);
    EXPECT_EQ(errorOf([&] { rows->Fields(0); }), 3420);
    EXPECT_EQ(errorOf([&] { rows->Close(); }), 3420);
}

TEST(OpenRecordset, TheSourceDecidesTheType) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.open(u"T"_s, 0)->Type(), dbOpenTable);
    EXPECT_EQ(o.open(u" [t] "_s, dbOpenTable)->Type(), dbOpenTable);
    EXPECT_EQ(o.open(u"T"_s, dbOpenSnapshot)->Type(), dbOpenSnapshot);
    EXPECT_EQ(o.open(u"t"_s, dbOpenForwardOnly)->RecordCount(), 1);
    EXPECT_EQ(o.open(u"T"_s, dbOpenDynaset)->Type(), dbOpenDynaset);
    EXPECT_EQ(o.open(allRows, dbOpenDynaset)->Type(), dbOpenDynaset);
    EXPECT_EQ(o.open(allRows, 0)->Type(), dbOpenDynaset);
    EXPECT_EQ(errorOf([&] { o.open(allRows, dbOpenTable); }), 3011);
    EXPECT_EQ(errorOf([&] { o.open(allRows, 3); }), 5);
    EXPECT_EQ(errorOf([&] { o.open(u"Unbekannt"_s, 0); }), 3078);
    EXPECT_EQ(errorOf([&] { o.open(u"Unbekannt"_s, dbOpenSnapshot); }), 3078);
    EXPECT_EQ(errorOf([&] { o.open({}, dbOpenSnapshot); }), 3078);
}

TEST(OpenRecordset, TakesQueriesOnly) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.errorOfQuery(u"DELETE FROM T"_s), 3219);
    EXPECT_EQ(o.errorOfExecute(allRows), 3065);
    EXPECT_EQ(o.all(allRows).size(), 3);
}

TEST(OpenRecordset, NamesWithBlanksAndSlashes) {
    const OpenedDatabase o("CREATE TABLE \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\" INTEGER PRIMARY KEY);"
                           "INSERT INTO \"ARTIKEL/KATEGORIEN\" VALUES (41);"
                           "CREATE TABLE \"Zwei Worte\" (\"a \"\"b\"\"\" INTEGER);"
                           "INSERT INTO \"Zwei Worte\" VALUES (7);");
    EXPECT_EQ(o.open(u"artikel/kategorien"_s, dbOpenTable)->value(u"KATEGORIE-SCHLÜSSEL"), Variant(41));
    EXPECT_EQ(o.one(u"SELECT [kategorie-schlüssel] FROM [Artikel/Kategorien]"_s), Variant(41));
    EXPECT_EQ(o.open(u"Zwei Worte"_s, dbOpenSnapshot)->value(u"a \"b\""), Variant(7));
    EXPECT_EQ(o.open(u"Zwei Worte"_s, dbOpenTable)->value(0), Variant(7));
}

TEST(Recordset, ATableWhoseNameBeginsWithAVerb) {
    const OpenedDatabase o("CREATE TABLE \"Update-Liste\" (a INTEGER); INSERT INTO \"Update-Liste\" VALUES (1);"
                           "CREATE TABLE \"Select\" (a INTEGER); INSERT INTO \"Select\" VALUES (2);"
                           "CREATE TABLE \"Delete From\" (a INTEGER); INSERT INTO \"Delete From\" VALUES (3);"
                           "CREATE TABLE Selection (a INTEGER); INSERT INTO Selection VALUES (4);");
    for (const Long type : {dbOpenTable, dbOpenSnapshot}) {
        EXPECT_EQ(o.open(u"update-liste"_s, type)->value(0), Variant(1));
        EXPECT_EQ(o.open(u"[Update-Liste]"_s, type)->value(0), Variant(1));
        EXPECT_EQ(o.open(u"Select"_s, type)->value(0), Variant(2));
        EXPECT_EQ(o.open(u" Delete From "_s, type)->value(0), Variant(3));
        EXPECT_EQ(o.open(u"Selection"_s, type)->value(0), Variant(4));
    }
    EXPECT_EQ(o.one(u"SELECT a FROM [Update-Liste]"_s), Variant(1));
    EXPECT_EQ(o.errorOfQuery(u"Update-Listen"_s), 3144);
    EXPECT_EQ(o.errorOfQuery(u"Listen"_s), 3078);
}

} // namespace dao
