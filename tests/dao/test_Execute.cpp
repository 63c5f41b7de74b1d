#include "dao/OpenedDatabase.h"
#include "jet/model/Schema.h"

namespace dao {

TEST(Execute, CountsTheRows) {
    const OpenedDatabase o(threeRows());
    o.database->Execute(u"UPDATE T SET Name = 'x' WHERE Nr > 1"_s, dbFailOnError);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    o.database->Execute(u"DELETE FROM T WHERE Nr = 99"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 0);
    o.database->Execute(u"INSERT INTO T (Nr, Name) SELECT Nr + 10, Name FROM T"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 3);
    o.database->Execute(u"DELETE * FROM T"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 6);
}

TEST(Execute, InsertConvertsAndNumbers) {
    const OpenedDatabase o(
        "CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Ja YESNO, Am DATETIME, Preis CURRENCY);");
    o.database->Execute(u"INSERT INTO T (Ja, Am, Preis) VALUES (True, #5/1/2001#, 12.5)"_s, dbFailOnError);
    o.database->Execute(u"INSERT INTO T (Ja) VALUES (7)"_s, dbFailOnError);
    EXPECT_EQ(o.file.one("SELECT Nr || '|' || Ja || '|' || Am || '|' || Preis FROM T WHERE Nr = 1"),
              "1|-1|2001-05-01 00:00:00|12.5");
    EXPECT_EQ(o.file.one("SELECT Ja FROM T WHERE Nr = 2"), "-1");
}

TEST(Execute, CopiesAssignments) {
    const OpenedDatabase o(
        "CREATE TABLE ARTKAT (ArtKatID INTEGER PRIMARY KEY AUTOINCREMENT, \"Artikel-Schlüssel\" INTEGER,"
        "\"Kategorie-Schlüssel\" INTEGER, \"Order\" INTEGER, \"LetzteÄnderung\" DATETIME);"
        "INSERT INTO ARTKAT VALUES (1, 11, 41, 1, NULL), (2, 12, 41, 2, NULL), (3, 13, 42, 1, NULL);");
    o.database->Execute(
        u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order], LetzteÄnderung) SELECT "
        "[Artikel-Schlüssel], 50 AS CatID, Order, Now() AS Edit FROM ARTKAT WHERE "
        "[Kategorie-Schlüssel]=41;"_s,
        dbFailOnError);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    EXPECT_EQ(o.file.one("SELECT group_concat(\"Artikel-Schlüssel\" || ':' || \"Order\") FROM ARTKAT "
                         "WHERE \"Kategorie-Schlüssel\" = 50 AND length(\"LetzteÄnderung\" || '') = 19"),
              "11:1,12:2");
}

TEST(Execute, WithFailOnErrorTheWholeStatementIsUndone) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr, Name) SELECT 6 - Nr, Name FROM T ORDER BY Nr"_s), 3022);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "3");
    o.database->Execute(u"DELETE FROM T WHERE Nr = 1"_s, dbFailOnError);
    EXPECT_EQ(o.database->RecordsAffected(), 1);
}

TEST(Execute, WithoutItFailingRowsAreLeftOut) {
    const OpenedDatabase o(threeRows() + "CREATE TABLE U (Nr INTEGER PRIMARY KEY, Name TEXT NOT NULL);");
    o.database->Execute(u"INSERT INTO T (Nr, Name) SELECT 6 - Nr, Name FROM T ORDER BY Nr"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr) FROM (SELECT Nr FROM T ORDER BY Nr)"), "1,2,3,4,5");
    o.database->Execute(u"UPDATE T SET Name = Null WHERE Nr = 2"_s);
    o.database->Execute(u"INSERT INTO U (Nr, Name) SELECT Nr, Name FROM T"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 4);
    o.database->Execute(u"UPDATE T SET Nr = Nr + 1 WHERE Nr > 3"_s);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "5");
}

TEST(Execute, ATableThatKeepsHalfAStatementIsUndoneToo) {
    const OpenedDatabase o(
        "CREATE TABLE T (Nr INTEGER PRIMARY KEY ON CONFLICT FAIL);"
        "CREATE TABLE U (Nr INTEGER); INSERT INTO T VALUES (3); INSERT INTO U VALUES (1), (2), (3);");
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) SELECT Nr FROM U"_s), 3022);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "1");
}

TEST(Execute, ErrorsOfTheStatement) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr, Farbe) VALUES (4, 'rot')"_s), 3127);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr, Name) VALUES (4)"_s), 3346);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = Farbe"_s), 3061);
    EXPECT_NE(o.errorOfExecute(u"Unsinn"_s), 0);
}

namespace {

QByteArray articlesAndStock() {
    return "CREATE TABLE A (Nr INTEGER PRIMARY KEY, Name TEXT, Preis CURRENCY, Aktiv YESNO);"
           "INSERT INTO A VALUES (1, 'eins', 10, -1), (2, 'zwei', 20, 0), (3, 'drei', NULL, -1);"
           "CREATE TABLE B (Nr INTEGER, Ort TEXT, Menge INTEGER, PRIMARY KEY (Nr, Ort)) WITHOUT ROWID;"
           "INSERT INTO B VALUES (1, 'x', 5), (1, 'y', 6), (3, 'x', 7), (9, 'x', 8);";
}

} // namespace

TEST(Execute, UpdatesThroughAJoin) {
    const OpenedDatabase o(articlesAndStock());
    o.database->Execute(u"UPDATE A INNER JOIN B ON A.Nr = B.Nr SET B.Menge = B.Menge + A.Nr WHERE A.Aktiv"_s, 128);
    EXPECT_EQ(o.database->RecordsAffected(), 3);
    EXPECT_EQ(o.file.one("SELECT group_concat(Menge) FROM (SELECT Menge FROM B ORDER BY Nr, Ort)"), "6,7,10,8");
    o.database->Execute(u"UPDATE A AS t INNER JOIN B ON t.Nr = B.Nr SET t.Name = t.Name & '!' WHERE Ort = 'x'"_s, 128);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    EXPECT_EQ(o.file.one("SELECT group_concat(Name) FROM (SELECT Name FROM A ORDER BY Nr)"), "eins!,zwei,drei!");
    // One table at a time.
    EXPECT_EQ(o.errorOfExecute(u"UPDATE A INNER JOIN B ON A.Nr = B.Nr SET A.Name = 'x', B.Menge = 0"_s), 3073);
    // The outer side of a join has no row to change where nothing matches.
    o.database->Execute(u"UPDATE B LEFT JOIN A ON A.Nr = B.Nr SET A.Preis = B.Menge"_s, 128);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    EXPECT_EQ(o.file.one("SELECT Preis FROM A WHERE Nr = 3"), "10");
    EXPECT_EQ(o.file.one("SELECT count(*) FROM A"), "3");
}

TEST(Execute, DeletesThroughAJoin) {
    const OpenedDatabase o(articlesAndStock());
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM A INNER JOIN B ON A.Nr = B.Nr"_s), 3128);
    EXPECT_EQ(o.errorOfExecute(u"DELETE * FROM A INNER JOIN B ON A.Nr = B.Nr"_s), 3128);
    EXPECT_EQ(o.errorOfExecute(u"DELETE A.*, B.* FROM A INNER JOIN B ON A.Nr = B.Nr"_s), 3128);
    o.database->Execute(u"DELETE B.* FROM A INNER JOIN B ON A.Nr = B.Nr WHERE A.Name = 'EINS'"_s, dbFailOnError);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr) FROM B"), "3,9");
    o.database->Execute(u"DELETE A.* FROM A LEFT JOIN B ON A.Nr = B.Nr WHERE B.Nr Is Null"_s, dbFailOnError);
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr) FROM A"), "3");
}

TEST(Execute, ConvertsOnTheWay) {
    const OpenedDatabase o(
        "CREATE TABLE T (Nr INTEGER PRIMARY KEY, L INTEGER, J YESNO, D DATETIME, C CURRENCY, S TEXT);");
    const auto stored = [&](const char* column, const QString& value) {
        o.database->Execute(u"DELETE FROM T"_s);
        const Long error = o.errorOfExecute(u"INSERT INTO T (Nr, "_s + QLatin1StringView(column) + u") VALUES (1, "_s +
                                            value + u")"_s);
        if (error != 0) return QByteArray::number(error);
        return o.file.one(QByteArray("SELECT ") + column + " FROM T");
    };
    EXPECT_EQ(stored("L", u"2.5"_s), "2");
    EXPECT_EQ(stored("L", u"3.5"_s), "4");
    EXPECT_EQ(stored("L", u"-2.5"_s), "-2");
    EXPECT_EQ(stored("L", u"' 12 '"_s), "12");
    EXPECT_EQ(stored("L", u"'zwölf'"_s), "3421");
    EXPECT_EQ(stored("L", u"2147483648"_s), "6");
    EXPECT_EQ(stored("L", u"True"_s), "-1");
    EXPECT_EQ(stored("L", u"Null"_s), "NULL");
    EXPECT_EQ(stored("J", u"7"_s), "-1");
    EXPECT_EQ(stored("J", u"0"_s), "0");
    EXPECT_EQ(stored("J", u"0.1"_s), "-1");
    EXPECT_EQ(stored("D", u"'2001-05-01'"_s), "2001-05-01 00:00:00");
    EXPECT_EQ(stored("D", u"37012.5"_s), "2001-05-01 12:00:00");
    EXPECT_EQ(stored("D", u"'bald'"_s), "3421");
    EXPECT_EQ(stored("C", u"1.23456"_s), "1.2346");
    EXPECT_EQ(stored("S", u"True"_s), "-1");
    EXPECT_EQ(stored("S", u"2.50"_s), "2.5");
    EXPECT_EQ(stored("Nr, Nr", u"1"_s), "3134");
    try {
        o.database->Execute(u"INSERT INTO T (Nr, L) VALUES (1, 'a')"_s, dbFailOnError);
        ADD_FAILURE();
    } catch (const mkl::RunTimeError& error) {
        EXPECT_EQ(error.description(), u"Der Wert lässt sich nicht in den Datentyp des Feldes 'L' umwandeln."_s);
    }
}

TEST(Execute, ValuesThatDoNotFitAreLeftOutOrUndoTheStatement) {
    const OpenedDatabase o(threeRows() + "CREATE TABLE Z (Nr INTEGER PRIMARY KEY, L INTEGER);"
                                         "INSERT INTO T VALUES (4, '40'), (5, '5e10'), (6, NULL);");
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO Z (Nr, L) SELECT Nr, Name FROM T"_s), 3421);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM Z"), "0");
    o.database->Execute(u"INSERT INTO Z (Nr, L) SELECT Nr, Name FROM T"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr || ':' || coalesce(L || '', 'Null')) FROM Z"), "4:40,6:Null");
    EXPECT_EQ(o.errorOfExecute(u"UPDATE Z INNER JOIN T ON Z.Nr = T.Nr + 3 SET Z.L = T.Name"_s), 3421);
    o.database->Execute(u"UPDATE Z INNER JOIN T ON Z.Nr = T.Nr SET Z.L = T.Name & 'x'"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 0);
    o.database->Execute(u"UPDATE Z SET L = IIf(Nr = 4, 'nein', '66')"_s);
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr || ':' || L) FROM Z"), "4:40,6:66");
    o.database->Execute(u"INSERT INTO Z (Nr, L) VALUES (7, 'x')"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 0);
}

TEST(Execute, NoKeyIsMadeUp) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Name) VALUES ('vier')"_s), 3058);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr, Name) VALUES (Null, 'vier')"_s), 3058);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Name) SELECT Name FROM T"_s), 3058);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO T (Nr) SELECT IIf(Nr = 3, Null, Nr + 10) FROM T"_s), 3058);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Nr = Null WHERE Nr = 1"_s), 3058);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "3");
    o.database->Execute(u"INSERT INTO T (Name) VALUES ('vier')"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 0);
    o.database->Execute(u"INSERT INTO T (Nr) SELECT IIf(Nr = 3, Null, Nr + 10) FROM T"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    o.database->Execute(u"UPDATE T SET Nr = Null WHERE Nr = 1"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 0);
}

TEST(Execute, InsertWithoutColumnsGoesByName) {
    const OpenedDatabase o(articlesAndStock() + "CREATE TABLE C (Preis CURRENCY, NAME TEXT, Nr INTEGER PRIMARY KEY);");
    o.database->Execute(u"INSERT INTO C SELECT Nr, Name FROM A WHERE Nr < 3"_s, dbFailOnError);
    o.database->Execute(u"INSERT INTO C SELECT 30 AS Nr, Preis FROM A WHERE Nr = 1"_s, dbFailOnError);
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr || coalesce(NAME, '-')) FROM C"), "1eins,2zwei,30-");
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO C SELECT * FROM A"_s), 3127);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO C SELECT Nr + 1 FROM A"_s), 3127);
    o.database->Execute(u"INSERT INTO A SELECT * FROM A WHERE Nr = 1"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 0);
    EXPECT_EQ(o.errorOfExecute(u"INSERT INTO A SELECT * FROM A WHERE Nr = 1"_s), 3022);
}

TEST(Execute, MakesATable) {
    const OpenedDatabase o(articlesAndStock());
    o.database->Execute(u"SELECT Nr, Preis, Aktiv, Nr & Name AS [Beide Namen], #2001-05-01# AS Tag INTO [Neue/Tabelle] "
                        "FROM A WHERE Nr > 1"_s,
                        dbFailOnError);
    EXPECT_EQ(o.database->RecordsAffected(), 2);
    EXPECT_EQ(o.open(u"Neue/Tabelle"_s, dbOpenTable)->FieldCount(), 5);
    const jet::Table* table = o.database->schema().findTable(u"neue/tabelle");
    ASSERT_TRUE(table);
    QList<int> types;
    for (const jet::Column& column : table->columns)
        types.append(int(column.type));
    using enum jet::ColumnType;
    EXPECT_EQ(types, (QList<int>{int(Int), int(Currency), int(Boolean), int(Text), int(Date)}));
    EXPECT_EQ(o.one(u"SELECT Max([Beide Namen]) FROM [Neue/Tabelle]"_s), Variant(u"3drei"_s));
    EXPECT_EQ(o.errorOfExecute(u"SELECT Nr INTO [neue/tabelle] FROM A"_s), 3010);
    EXPECT_EQ(o.errorOfExecute(u"SELECT Nr INTO sqlite_master FROM A"_s), 3010);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr INTO N FROM A"_s), 3219);
    // Where a row fails nothing is left of it.
    EXPECT_EQ(o.errorOfExecute(u"SELECT 1/(Nr-2) AS q INTO N FROM A"_s), 11);
    EXPECT_EQ(o.errorOfQuery(u"N"_s), 3078);
    o.workspace->BeginTrans();
    o.database->Execute(u"SELECT Nr INTO N FROM A"_s);
    o.workspace->Rollback();
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM N"_s), 3078);
}

TEST(Execute, DeclaredParameters) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.one(u"PARAMETERS x Long, [y z] Text ( 50 ); SELECT Name FROM T WHERE Nr = 2;"_s), Variant(u"zwei"_s));
    EXPECT_EQ(o.errorOfQuery(u"PARAMETERS x Long; SELECT Name FROM T WHERE Nr = x"_s), 3061);
    o.database->Execute(u"PARAMETERS x Long; DELETE FROM T WHERE Nr = 2"_s);
    EXPECT_EQ(o.database->RecordsAffected(), 1);
    EXPECT_EQ(o.errorOfExecute(u"PARAMETERS x; DELETE FROM T"_s), 3139);
}

TEST(RowWriter, AppendsRows) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Ja YESNO, Am DATETIME, Name TEXT NOT NULL);");
    RowWriter writer = o.database->appendRows(u"t"_s, {u"NR"_s, u"ja"_s, u"am"_s, u"name"_s});
    o.workspace->BeginTrans();
    for (int nr = 1; nr <= 1000; ++nr) {
        const Variant row[] = {Variant(nr), Variant(nr % 2 == 0), Variant::date(37012.5), Variant(u"Zeile"_s)};
        writer.append(row);
    }
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT count(*) || '|' || sum(Ja) || '|' || min(Am) FROM T"),
              "1000|-500|2001-05-01 12:00:00");
}

TEST(RowWriter, ABlockIsStoredWholeOrNotAtAll) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT);");
    RowWriter writer = o.database->appendRows(u"T"_s, {u"Nr"_s, u"Name"_s});
    const Variant rows[] = {Variant(1), Variant(u"a"_s), Variant(2), Variant(), Variant(3), Variant(u"c"_s)};
    writer.appendBlock(rows);
    EXPECT_EQ(o.file.one("SELECT sum(Nr) || '' || count(Name) FROM T"), "62");
    const Variant doubled[] = {Variant(4), Variant(), Variant(3), Variant()};
    EXPECT_EQ(errorOf([&] { writer.appendBlock(doubled); }), 3022);
    EXPECT_EQ(errorOf([&] { writer.appendBlock(std::span(rows).first(3)); }), 3346);
    EXPECT_EQ(errorOf([&] { writer.appendBlock({}); }), 3346);
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "3");
}

TEST(RowWriter, Errors) {
    const OpenedDatabase o(
        "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT NOT NULL); INSERT INTO T VALUES (1, 'x');");
    EXPECT_EQ(errorOf([&] { o.database->appendRows(u"U"_s, {}); }), 3078);
    EXPECT_EQ(errorOf([&] { o.database->appendRows(u"T"_s, {u"Farbe"_s}); }), 3127);
    RowWriter writer = o.database->appendRows(u"T"_s, {u"Nr"_s, u"Name"_s});
    const auto errorOfRow = [&](const Variant& nr, const Variant& name) {
        const Variant row[] = {nr, name};
        return errorOf([&] { writer.append(row); });
    };
    EXPECT_EQ(errorOfRow(1, Variant(u"doppelt"_s)), 3022);
    EXPECT_EQ(errorOfRow(2, Variant()), 3314);
    EXPECT_EQ(errorOfRow(Variant(), Variant(u"ohne"_s)), 3058);
    EXPECT_EQ(errorOfRow(Variant(u"zwei"_s), Variant(u"zwei"_s)), 3421);
    EXPECT_EQ(errorOfRow(2, Variant(u"zwei"_s)), 0);
    EXPECT_EQ(errorOf([&] { writer.append({}); }), 3346);
    o.database->Close();
    EXPECT_EQ(errorOfRow(3, Variant(u"drei"_s)), 3420);
}

} // namespace dao
