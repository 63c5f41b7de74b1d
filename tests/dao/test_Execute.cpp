#include "dao/OpenedDatabase.h"

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
                         "WHERE \"Kategorie-Schlüssel\" = 50 AND length(\"LetzteÄnderung\") = 19"),
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
    EXPECT_EQ(o.file.one("SELECT sum(Nr) || count(Name) FROM T"), "62");
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
