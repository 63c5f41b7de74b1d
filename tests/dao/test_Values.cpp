// Values on their way through the file: what was stored by others comes out, what we store others can read.
#include "dao/OpenedDatabase.h"

#include <limits>

namespace dao {

namespace {

QByteArray allTypes() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Ja YESNO, Am DATETIME, Zahl DOUBLE, Preis CURRENCY, Name "
           "VARCHAR(50),"
           "Bild BLOB, Irgendwas);";
}

} // namespace

TEST(Values, DeclaredTypesDecide) {
    const OpenedDatabase o(allTypes() +
                           "INSERT INTO T VALUES (1, -1, '2001-05-01 12:00:00', 2, 127177.5324, 'Öl', x'0102',"
                           "'frei'), (2, 0, NULL, NULL, 5, '', NULL, NULL);");
    o.database->Execute(u"UPDATE T SET Irgendwas = 7 WHERE Nr = 2"_s, dbFailOnError);
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s);
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    EXPECT_EQ(rows->value(u"Ja"), Variant(true));
    EXPECT_EQ(rows->value(u"Am"), Variant::date(37012.5));
    EXPECT_EQ(rows->value(u"Zahl"), Variant(2.0));
    EXPECT_EQ(rows->value(u"Preis"), Variant::currency(1271775324));
    EXPECT_EQ(rows->value(u"Name"), Variant(u"Öl"_s));
    EXPECT_EQ(rows->value(u"Bild"), Variant(QByteArray("\1\2")));
    EXPECT_EQ(rows->value(u"Irgendwas"), Variant(u"frei"_s));
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Ja"), Variant(false));
    EXPECT_TRUE(rows->value(u"Am").isNull());
    EXPECT_EQ(rows->value(u"Preis"), Variant::currency(50000));
    EXPECT_EQ(rows->value(u"Name"), Variant(QString()));
    EXPECT_FALSE(rows->value(u"Name").isNull());
    EXPECT_EQ(rows->value(u"Irgendwas"), Variant(7));
}

TEST(Values, YesNoIsMinusOne) {
    const OpenedDatabase o(allTypes() + "INSERT INTO T (Nr, Ja) VALUES (1, -1), (2, 0), (3, NULL), (4, -1);");
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Ja = True ORDER BY Nr"_s), (QStringList{u"1"_s, u"4"_s}));
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE [Ja]=-1 ORDER BY Nr"_s), (QStringList{u"1"_s, u"4"_s}));
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Ja = 1"_s), QStringList());
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Ja ORDER BY Nr"_s), (QStringList{u"1"_s, u"4"_s}));
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Not Ja"_s), QStringList{u"2"_s});
    EXPECT_EQ(o.one(u"SELECT Sum(Ja) FROM T"_s).toLong(), -2);
    o.database->Execute(u"UPDATE T SET Ja = 5 WHERE Nr = 2"_s, dbFailOnError);
    EXPECT_EQ(o.file.one("SELECT Ja FROM T WHERE Nr = 2"), "-1");
}

TEST(Values, DatesCompareAndCompute) {
    const OpenedDatabase o(allTypes() + "INSERT INTO T (Nr, Am) VALUES (1, '2001-05-01 00:00:00'),"
                                        "(2, '2001-05-02 08:15:30'), (3, NULL);");
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Am = #5/1/2001#"_s), QStringList{u"1"_s});
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Am Between #2001-05-01# And #2001-05-02#"_s), QStringList{u"1"_s});
    EXPECT_EQ(o.one(u"SELECT Am + 1 FROM T WHERE Nr = 1"_s), Variant::date(37013));
    EXPECT_EQ(o.one(u"SELECT Max(Am) FROM T"_s).toText(), u"02.05.2001 08:15:30"_s);
    EXPECT_EQ(o.one(u"SELECT Year(Am) FROM T WHERE Nr = 2"_s), Variant(2001));
    o.database->Execute(u"UPDATE T SET Am = #12/24/2005 18:00:00# WHERE Nr = 3"_s, dbFailOnError);
    EXPECT_EQ(o.file.one("SELECT Am FROM T WHERE Nr = 3"), "2005-12-24 18:00:00");
}

TEST(Values, CurrencyIsExactAndReadableForOthers) {
    const OpenedDatabase o(allTypes() + "INSERT INTO T (Nr, Preis) VALUES (1, 0.1), (2, 0.2), (3, 127177.5324);");
    EXPECT_EQ(o.one(u"SELECT Sum(Preis) FROM T"_s), Variant::currency(1271778324));
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Preis = 0.1"_s), QStringList{u"1"_s});
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Preis > 0.1 ORDER BY Preis DESC"_s), (QStringList{u"3"_s, u"2"_s}));
    RowWriter writer = o.database->appendRows(u"T"_s, {u"Nr"_s, u"Preis"_s});
    const Variant row[] = {Variant(4), Variant::currency(1234567)};
    writer.append(row);
    EXPECT_EQ(o.file.one("SELECT Preis FROM T WHERE Nr = 4"), "123.4567");
    EXPECT_EQ(o.one(u"SELECT Preis FROM T WHERE Nr = 4"_s), Variant::currency(1234567));
}

TEST(Values, NullIsNotTheEmptyText) {
    const OpenedDatabase o(allTypes() + "INSERT INTO T (Nr, Name) VALUES (1, ''), (2, NULL), (3, ' ');");
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Name Is Null"_s), QStringList{u"2"_s});
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Name = '' ORDER BY Nr"_s), (QStringList{u"1"_s, u"3"_s}));
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Name Is Not Null ORDER BY Nr"_s), (QStringList{u"1"_s, u"3"_s}));
}

TEST(Values, KeysAtBothEndsOf32Bits) {
    const OpenedDatabase o(allTypes() +
                           "INSERT INTO T (Nr, Name) VALUES (2147483647, 'groß'), (-2147483648, 'klein');");
    EXPECT_EQ(o.one(u"SELECT Name FROM T WHERE Nr = 2147483647"_s), Variant(u"groß"_s));
    EXPECT_EQ(o.one(u"SELECT Name FROM T WHERE Nr = -2147483648"_s), Variant(u"klein"_s));
    EXPECT_EQ(o.one(u"SELECT Min(Nr) FROM T"_s), Variant(std::numeric_limits<mkl::Long>::min()));
    EXPECT_EQ(o.one(u"SELECT Max(Nr) FROM T"_s), Variant(2147483647));
}

TEST(Values, WholeNumbersOfForeignFilesAreNeverWrapped) {
    const OpenedDatabase o(allTypes() + "INSERT INTO T (Nr, Irgendwas) VALUES (5000000000, 9223372036854775807);");
    const Ref<Recordset> rows = o.open(u"SELECT Nr, Irgendwas FROM T"_s);
    EXPECT_EQ(rows->value(0), Variant(5000000000.0));
    EXPECT_EQ(rows->value(1), Variant(u"9223372036854775807"_s));
}

TEST(Values, AFileInUtf16ReadsLikeAnyOther) {
    const OpenedDatabase o("PRAGMA encoding = 'UTF-16';" + allTypes() +
                           "INSERT INTO T (Nr, Name) VALUES (1, 'Äpfel'), (2, 'Straße');");
    EXPECT_EQ(o.all(u"SELECT Name FROM T ORDER BY Name"_s), (QStringList{u"Äpfel"_s, u"Straße"_s}));
    EXPECT_EQ(o.one(u"SELECT Nr FROM T WHERE UCase(Name) = 'STRASSE'"_s), Variant(2));
}

TEST(Values, BrokenTexts) {
    const OpenedDatabase o(allTypes() + "INSERT INTO T (Nr, Name) VALUES (1, CAST(x'61ff7a' AS TEXT)),"
                                        "(2, 'a' || char(0) || 'b'), (3, CAST(x'eda0' AS TEXT));");
    EXPECT_EQ(o.one(u"SELECT Name FROM T WHERE Nr = 1"_s), Variant(u"a\uFFFDz"_s));
    EXPECT_EQ(o.one(u"SELECT Name FROM T WHERE Nr = 2"_s).toText(), QString(u"a\0b"_s));
    EXPECT_EQ(o.one(u"SELECT Len(Name) FROM T WHERE Nr = 2"_s), Variant(3));
    EXPECT_EQ(o.all(u"SELECT Nr FROM T ORDER BY Name"_s).size(), 3);
}

} // namespace dao
