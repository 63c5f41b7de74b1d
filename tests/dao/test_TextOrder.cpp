// The dialect's one order of texts, wherever the engine compares.
#include "dao/OpenedDatabase.h"

namespace dao {

namespace {

QByteArray words() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Wort TEXT);"
           "INSERT INTO T (Wort) VALUES ('Zebra'), ('Äpfel'), ('apfel'), ('Straße'), ('Strassen'), ('co-op'), ('coop'),"
           "('Öfen'), ('Ofen'), ('öfen'), ('Apfel'), ('10'), ('9'), ('STRASSE');";
}

} // namespace

TEST(TextOrder, Where) {
    const OpenedDatabase o(words());
    const auto numbers = [&](const QString& criterion) {
        return o.all(u"SELECT Nr FROM T WHERE "_s + criterion + u" ORDER BY Nr"_s).join(u' ');
    };
    EXPECT_EQ(numbers(u"Wort = 'ÄPFEL'"_s), u"2"_s);
    EXPECT_EQ(numbers(u"Wort = 'APFEL'"_s), u"3 11"_s);
    EXPECT_EQ(numbers(u"Wort = 'strasse'"_s), u"4 14"_s);
    EXPECT_EQ(numbers(u"Wort = 'apfel  '"_s), u"3 11"_s);
    EXPECT_EQ(numbers(u"Wort In ('öFEN', 'ZEBRA')"_s), u"1 8 10"_s);
    EXPECT_EQ(numbers(u"Wort <> 'apfel' And Wort < 'b'"_s), u"2 12 13"_s);
    EXPECT_EQ(numbers(u"Wort Between 'apfel' And 'äpfel'"_s), u"2 3 11"_s);
    EXPECT_EQ(numbers(u"Wort Like 'ä*'"_s), u"2"_s);
    EXPECT_EQ(numbers(u"Wort Like '*strasse*'"_s), u"4 5 14"_s);
    EXPECT_EQ(numbers(u"'STRASSE' = Left(Wort, 6)"_s), u"4"_s);
}

TEST(TextOrder, OrderBy) {
    const OpenedDatabase o(words());
    EXPECT_EQ(o.all(u"SELECT Wort FROM T ORDER BY Wort, Nr"_s).join(u' '),
              u"10 9 apfel Apfel Äpfel coop co-op Ofen Öfen öfen Straße STRASSE Strassen Zebra"_s);
    EXPECT_EQ(o.all(u"SELECT Wort FROM T ORDER BY Wort DESC"_s).first(), u"Zebra"_s);
}

TEST(TextOrder, GroupingAndDistinct) {
    const OpenedDatabase o(words());
    EXPECT_EQ(o.all(u"SELECT Count(*) FROM T GROUP BY Wort ORDER BY Count(*) DESC"_s).first(4).join(u' '),
              u"2 2 2 1"_s);
    EXPECT_EQ(o.all(u"SELECT DISTINCT Wort FROM T"_s).size(), 11);
    EXPECT_EQ(o.one(u"SELECT Max(Wort) FROM T"_s), Variant(u"Zebra"_s));
    EXPECT_EQ(o.one(u"SELECT Min(Wort) FROM T"_s), Variant(u"10"_s));
}

TEST(TextOrder, Joins) {
    const OpenedDatabase o(words() + "CREATE TABLE U (Wort TEXT, Wert INTEGER); INSERT INTO U VALUES ('ZEBRA', 5);");
    EXPECT_EQ(o.one(u"SELECT Wert FROM T INNER JOIN U ON T.Wort = U.Wort"_s), Variant(5));
}

TEST(TextOrder, AnIndexInThisOrderServesTheStatements) {
    const OpenedDatabase o(words());
    o.database->executeNative(u"CREATE INDEX \"T:Wort\" ON T (Wort COLLATE GERMAN)"_s);
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Wort = 'STRASSE'"_s).size(), 2);
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    table->setIndex(u"Wort"_s);
    EXPECT_EQ(OpenedDatabase::walk(table).size(), 14);
}

} // namespace dao
