#include "dao/OpenedDatabase.h"
#include "dao/PlanCache.h"

namespace dao {

TEST(PlanCache, OneShapeIsTranslatedOnce) {
    const OpenedDatabase o(threeRows());
    for (int nr = 1; nr <= 3; ++nr)
        EXPECT_EQ(o.one(u"SELECT Nr FROM T WHERE Nr=%1"_s.arg(nr)), Variant(nr));
    EXPECT_EQ(o.database->planCache().compilations(), 1);
    EXPECT_EQ(o.one(u"select Nr from T where Nr = 2 ;"_s), Variant(2));
    EXPECT_EQ(o.one(u"SELECT Nr FROM T WHERE Nr=-2"_s.replace(u"-2"_s, u"2"_s)), Variant(2));
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Name='zwei'"_s), QStringList{u"2"_s});
    EXPECT_LE(o.database->planCache().compilations(), 3);
}

TEST(PlanCache, ActionsToo) {
    const OpenedDatabase o(threeRows());
    for (int nr = 1; nr <= 3; ++nr)
        o.database->Execute(u"UPDATE T SET Name='Nummer %1' WHERE Nr=%1"_s.arg(nr), dbFailOnError);
    EXPECT_EQ(o.database->planCache().compilations(), 1);
    o.database->Execute(u"UPDATE T SET Name='ohne' WHERE Nr=1"_s);
    EXPECT_EQ(o.database->planCache().compilations(), 1);
    EXPECT_EQ(o.all(u"SELECT Name FROM T ORDER BY Nr"_s), (QStringList{u"ohne"_s, u"Nummer 2"_s, u"Nummer 3"_s}));
}

TEST(PlanCache, LiteralsThatDecideAboutTheFormAreKeptApart) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.all(u"SELECT TOP 1 Nr FROM T ORDER BY Nr"_s).size(), 1);
    EXPECT_EQ(o.all(u"SELECT TOP 2 Nr FROM T ORDER BY Nr"_s).size(), 2);
    EXPECT_EQ(o.all(u"SELECT TOP 1 Nr FROM T ORDER BY Nr"_s).size(), 1);
    EXPECT_EQ(o.all(u"SELECT Nr FROM T ORDER BY 1"_s).first(), u"1"_s);
}

TEST(PlanCache, IsBounded) {
    const OpenedDatabase o(threeRows());
    for (int i = 0; i < PlanCache::capacity + 50; ++i)
        EXPECT_EQ(o.one(u"SELECT Nr AS N%1 FROM T WHERE Nr=2"_s.arg(i)), Variant(2));
    EXPECT_EQ(o.database->planCache().size(), PlanCache::capacity);
    for (int i = 1; i <= 40; ++i)
        EXPECT_EQ(o.all(u"SELECT TOP %1 Nr FROM T"_s.arg(i)).size(), std::min(i, 3));
    EXPECT_EQ(o.all(u"SELECT TOP 2 Nr FROM T"_s).size(), 2);
}

TEST(PlanCache, ASchemaChangeOfAnotherConnectionShows) {
    const OpenedDatabase o(threeRows());
    const QString all = u"SELECT * FROM T WHERE Nr=1"_s;
    EXPECT_EQ(o.open(all)->FieldCount(), 2);
    o.file.run("ALTER TABLE T ADD COLUMN Farbe TEXT; UPDATE T SET Farbe = 'rot'");
    EXPECT_EQ(o.open(all)->value(u"Farbe"), Variant(u"rot"_s));
    EXPECT_EQ(o.open(u"SELECT * FROM T WHERE Nr=2"_s)->value(u"Farbe"), Variant(u"rot"_s));
    EXPECT_EQ(o.database->planCache().compilations(), 2);
    o.file.run("ALTER TABLE T DROP COLUMN Farbe");
    EXPECT_EQ(o.open(all)->FieldCount(), 2);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Farbe FROM T"_s), 3061);
    o.file.run("DROP TABLE T");
    EXPECT_EQ(o.errorOfQuery(all), 3078);
}

TEST(PlanCache, ARowTooManyIsNotReadTwice) {
    const OpenedDatabase o(threeRows());
    const QString numbers = u"SELECT Nr FROM T ORDER BY Nr"_s;
    EXPECT_EQ(o.all(numbers).size(), 3);
    o.file.run("CREATE INDEX Anders ON T (Name)");
    EXPECT_EQ(o.all(numbers).size(), 3);
    EXPECT_EQ(o.all(numbers).size(), 3);
    EXPECT_EQ(o.database->planCache().compilations(), 2);
}

TEST(PlanCache, OwnTablesAreSeenAtOnce) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.errorOfQuery(u"SELECT * FROM Neu"_s), 3078);
    o.database->executeNative(u"CREATE TABLE Neu (Nr INTEGER); INSERT INTO Neu VALUES (9)"_s);
    EXPECT_EQ(o.one(u"SELECT * FROM Neu"_s), Variant(9));
}

} // namespace dao
