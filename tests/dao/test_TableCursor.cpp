#include "dao/OpenedDatabase.h"

namespace dao {

namespace {

QByteArray assignments() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Gruppe INTEGER, Name TEXT);"
           "CREATE INDEX \"T:Gruppe\" ON T (Gruppe);"
           "CREATE INDEX \"T:Name\" ON T (Name COLLATE NOCASE);"
           "CREATE INDEX \"T:Beide\" ON T (Gruppe, Name);"
           "INSERT INTO T VALUES (10, 3, 'Öl'), (20, 1, 'apfel'), (30, NULL, 'Zebra'), (40, 3, 'Äpfel'),"
           "(50, 3, 'Straße'), (60, NULL, NULL), (70, 7, 'Strassen');";
}

Ref<Recordset> openTable(const OpenedDatabase& o, const QString& index = {}) {
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    if (!index.isEmpty()) table->setIndex(index);
    return table;
}

QStringList walkBack(const Ref<Recordset>& table) {
    QStringList result;
    for (table->MoveLast(); !table->Bof(); table->MovePrevious())
        result.prepend(table->value(0).toText());
    return result;
}

// The key found, "-" for none.
QString found(const Ref<Recordset>& table, QStringView comparison, const Variant& key) {
    table->Seek(comparison, key);
    return table->NoMatch() ? u"-"_s : table->value(u"Nr").toText();
}

} // namespace

TEST(Table, WalksInTheOrderOfItsKey) {
    const OpenedDatabase o(assignments());
    const QStringList expected{u"10"_s, u"20"_s, u"30"_s, u"40"_s, u"50"_s, u"60"_s, u"70"_s};
    const Ref<Recordset> table = openTable(o);
    EXPECT_EQ(table->Type(), dbOpenTable);
    EXPECT_EQ(table->RecordCount(), 7);
    EXPECT_EQ(table->Index(), QString());
    EXPECT_EQ(OpenedDatabase::walk(table), expected);
    EXPECT_EQ(walkBack(table), expected);
}

TEST(Table, WalksInTheOrderOfAnIndex) {
    const OpenedDatabase o(assignments());
    const QStringList byGroup{u"30"_s, u"60"_s, u"20"_s, u"10"_s, u"40"_s, u"50"_s, u"70"_s};
    const QStringList byName{u"60"_s, u"20"_s, u"40"_s, u"10"_s, u"50"_s, u"70"_s, u"30"_s};
    const QStringList byBoth{u"60"_s, u"30"_s, u"20"_s, u"40"_s, u"10"_s, u"50"_s, u"70"_s};
    for (const auto& [index, expected] : {std::pair(u"Gruppe"_s, byGroup), {u"Name"_s, byName}, {u"Beide"_s, byBoth}}) {
        const Ref<Recordset> table = openTable(o, index);
        EXPECT_EQ(OpenedDatabase::walk(table), expected) << index.toStdString();
        EXPECT_EQ(walkBack(table), expected) << index.toStdString();
    }
}

TEST(Table, TextsThatCompareEqualAreDifferentRows) {
    const OpenedDatabase o("CREATE TABLE T (Name TEXT PRIMARY KEY NOT NULL) WITHOUT ROWID;"
                           "INSERT INTO T VALUES ('a'), ('A'), ('ä'), ('A '), ('b');");
    const Ref<Recordset> table = openTable(o, u"PrimaryKey"_s);
    EXPECT_EQ(OpenedDatabase::walk(table), (QStringList{u"A"_s, u"A "_s, u"a"_s, u"ä"_s, u"b"_s}));
    EXPECT_EQ(walkBack(table).size(), 5);
}

TEST(Table, WithoutAnyKey) {
    const OpenedDatabase o("CREATE TABLE T (Wert INTEGER); INSERT INTO T VALUES (5), (5), (NULL), (1);");
    const Ref<Recordset> table = openTable(o);
    EXPECT_EQ(OpenedDatabase::walk(table), (QStringList{u"5"_s, u"5"_s, u"Null"_s, u"1"_s}));
    EXPECT_EQ(table->FieldCount(), 1);
    EXPECT_EQ(errorOf([&] { table->setIndex(u"PrimaryKey"_s); }), 3015);
}

TEST(Table, AKeyOfSeveralColumns) {
    const OpenedDatabase o("CREATE TABLE T (A INTEGER NOT NULL, B TEXT NOT NULL, C INTEGER, PRIMARY KEY (A, B));"
                           "INSERT INTO T VALUES (2, 'x', 1), (1, 'y', 2), (1, 'x', 3), (2, 'y', 4);");
    const Ref<Recordset> table = openTable(o, u"PrimaryKey"_s);
    QStringList order;
    for (; !table->Eof(); table->MoveNext())
        order.append(table->value(u"C").toText());
    EXPECT_EQ(order, (QStringList{u"3"_s, u"2"_s, u"1"_s, u"4"_s}));
    table->Seek(u"=", 2);
    EXPECT_EQ(table->value(u"C"), Variant(1));
    table->Seek(u"<", 2);
    EXPECT_EQ(table->value(u"C"), Variant(2));
}

TEST(Table, EndsAndEmptiness) {
    const OpenedDatabase o(threeRows() + "CREATE TABLE Leer (Nr INTEGER PRIMARY KEY);");
    const Ref<Recordset> table = openTable(o);
    table->MovePrevious();
    EXPECT_TRUE(table->Bof());
    EXPECT_FALSE(table->Eof());
    EXPECT_EQ(errorOf([&] { table->value(0); }), 3021);
    EXPECT_EQ(errorOf([&] { table->MovePrevious(); }), 3021);
    table->MoveNext();
    EXPECT_EQ(table->value(0), Variant(1));
    table->MoveLast();
    table->MoveNext();
    EXPECT_TRUE(table->Eof());
    EXPECT_EQ(errorOf([&] { table->MoveNext(); }), 3021);
    table->MovePrevious();
    EXPECT_EQ(table->value(0), Variant(3));
    EXPECT_EQ(errorOf([&] { table->AbsolutePosition(); }), 3251);

    const Ref<Recordset> empty = o.open(u"Leer"_s, dbOpenTable);
    EXPECT_TRUE(empty->Bof() && empty->Eof());
    EXPECT_EQ(empty->RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { empty->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { empty->MoveNext(); }), 3021);
    o.database->Execute(u"INSERT INTO Leer (Nr) VALUES (1)"_s, dbFailOnError);
    empty->MoveFirst();
    EXPECT_EQ(empty->value(0), Variant(1));
}

TEST(Table, SeesWhatOthersWrite) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    o.file.run("INSERT INTO T VALUES (4, 'vier')");
    EXPECT_EQ(table->RecordCount(), 4);
    table->MoveLast();
    EXPECT_EQ(table->value(u"Name"), Variant(u"vier"_s));
    o.database->Execute(u"UPDATE T SET Name='vierzig' WHERE Nr=4"_s, dbFailOnError);
    EXPECT_EQ(table->value(u"Name"), Variant(u"vierzig"_s));
    o.database->Execute(u"DELETE FROM T WHERE Nr=4"_s, dbFailOnError);
    EXPECT_EQ(errorOf([&] { table->value(u"Name"); }), 3167);
    table->MovePrevious();
    EXPECT_EQ(table->value(u"Nr"), Variant(3));
}

TEST(Table, ARollbackIsSeenToo) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    o.workspace->BeginTrans();
    o.database->Execute(u"UPDATE T SET Name='anders'"_s, dbFailOnError);
    EXPECT_EQ(table->value(u"Name"), Variant(u"anders"_s));
    o.workspace->Rollback();
    EXPECT_EQ(table->value(u"Name"), Variant(u"eins"_s));
}

TEST(Table, KeepsNothingOpen) {
    const OpenedDatabase o(assignments());
    const Ref<Recordset> table = openTable(o, u"Gruppe"_s);
    table->MoveNext();
    o.file.run("DROP TABLE T");
    EXPECT_NE(errorOf([&] { table->MoveNext(); }), 0);
}

TEST(Seek, ANumber) {
    const OpenedDatabase o(assignments());
    const Ref<Recordset> table = openTable(o, u"PRIMARYKEY"_s);
    EXPECT_EQ(table->Index(), u"PrimaryKey"_s);
    EXPECT_EQ(found(table, u"=", 30), u"30"_s);
    EXPECT_EQ(found(table, u"=", 35), u"-"_s);
    EXPECT_EQ(found(table, u">=", 30), u"30"_s);
    EXPECT_EQ(found(table, u">=", 31), u"40"_s);
    EXPECT_EQ(found(table, u">", 30), u"40"_s);
    EXPECT_EQ(found(table, u">", 70), u"-"_s);
    EXPECT_EQ(found(table, u"<=", 30), u"30"_s);
    EXPECT_EQ(found(table, u"<=", 29), u"20"_s);
    EXPECT_EQ(found(table, u"<", 30), u"20"_s);
    EXPECT_EQ(found(table, u"<", 10), u"-"_s);
    EXPECT_EQ(found(table, u"=", Variant(u"40"_s)), u"40"_s);
    EXPECT_EQ(found(table, u"=", -1), u"-"_s);
}

TEST(Seek, StartsAtTheRightEndAmongEqualKeys) {
    const OpenedDatabase o(assignments());
    const Ref<Recordset> table = openTable(o, u"Gruppe"_s);
    EXPECT_EQ(found(table, u"=", 3), u"10"_s);
    EXPECT_EQ(found(table, u">=", 2), u"10"_s);
    EXPECT_EQ(found(table, u"<=", 3), u"50"_s);
    EXPECT_EQ(found(table, u"<", 7), u"50"_s);
    EXPECT_EQ(found(table, u">", 3), u"70"_s);
    table->MovePrevious();
    EXPECT_EQ(table->value(u"Nr"), Variant(50));
}

TEST(Seek, Null) {
    const OpenedDatabase o(assignments());
    const Ref<Recordset> table = openTable(o, u"Gruppe"_s);
    EXPECT_EQ(found(table, u"=", Variant()), u"30"_s);
    EXPECT_EQ(found(table, u">=", Variant()), u"30"_s);
    EXPECT_EQ(found(table, u">", Variant()), u"20"_s);
    EXPECT_EQ(found(table, u"<=", Variant()), u"60"_s);
    EXPECT_EQ(found(table, u"<", Variant()), u"-"_s);
    EXPECT_EQ(found(table, u"<", 1), u"60"_s);
}

TEST(Seek, ATextInGermanOrder) {
    const OpenedDatabase o(assignments());
    const Ref<Recordset> table = openTable(o, u"Name"_s);
    EXPECT_EQ(found(table, u"=", Variant(u"ÄPFEL"_s)), u"40"_s);
    EXPECT_EQ(found(table, u"=", Variant(u"STRASSE"_s)), u"50"_s);
    EXPECT_EQ(found(table, u">", Variant(u"Apfel"_s)), u"40"_s);
    EXPECT_EQ(found(table, u">=", Variant(u"Of"_s)), u"10"_s);
    EXPECT_EQ(found(table, u"<", Variant(u"strassen"_s)), u"50"_s);
}

TEST(Seek, ADate) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Am DATETIME); CREATE INDEX \"T:Am\" ON T (Am);"
                           "INSERT INTO T VALUES (1, '2001-05-01 00:00:00'), (2, '2001-05-01 12:30:00');");
    const Ref<Recordset> table = openTable(o, u"Am"_s);
    EXPECT_EQ(found(table, u"=", Variant::date(37012)), u"1"_s);
    EXPECT_EQ(found(table, u">", Variant::date(37012)), u"2"_s);
    EXPECT_EQ(found(table, u"=", Variant(u"2001-05-01"_s)), u"1"_s);
    EXPECT_EQ(errorOf([&] { table->Seek(u"=", Variant(u"gestern"_s)); }), 3421);
}

TEST(Seek, AfterAFailureThereIsNoCurrentRow) {
    const OpenedDatabase o(assignments());
    const Ref<Recordset> table = openTable(o, u"PrimaryKey"_s);
    table->Seek(u"=", 99);
    EXPECT_TRUE(table->NoMatch());
    EXPECT_EQ(errorOf([&] { table->value(0); }), 3021);
    EXPECT_EQ(errorOf([&] { table->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { table->MovePrevious(); }), 3021);
    table->MoveFirst();
    EXPECT_TRUE(table->NoMatch());
    EXPECT_EQ(table->value(0), Variant(10));
    table->Seek(u"=", 20);
    EXPECT_FALSE(table->NoMatch());
}

TEST(Seek, WrongUse) {
    const OpenedDatabase o(assignments());
    const Ref<Recordset> table = openTable(o);
    EXPECT_EQ(errorOf([&] { table->Seek(u"=", 1); }), 3019);
    EXPECT_EQ(errorOf([&] { table->setIndex(u"Farbe"_s); }), 3015);
    table->setIndex(u"PrimaryKey"_s);
    EXPECT_EQ(errorOf([&] { table->Seek(u"<>", 1); }), 5);
    EXPECT_EQ(errorOf([&] { table->Seek(u"", 1); }), 5);
    EXPECT_EQ(errorOf([&] { table->Seek(u"=", Variant(u"eins"_s)); }), 3421);
    table->MoveLast();
    table->setIndex(u"Gruppe"_s);
    EXPECT_EQ(table->value(u"Nr"), Variant(30));
    table->setIndex({});
    EXPECT_EQ(table->value(u"Nr"), Variant(10));
    EXPECT_EQ(errorOf([&] { table->Seek(u"=", 1); }), 3019);
}

TEST(Seek, FindsItsWayInMixedAndBrokenValues) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Wert);  CREATE INDEX \"T:Wert\" ON T (Wert);"
                           "INSERT INTO T VALUES (1, 'b'), (2, 9007199254740993), (3, x'00ff'), (4, 1.5), (5, NULL),"
                           "(6, 9007199254740992), (7, CAST(x'61ff' AS TEXT)), (8, 'a' || char(0) || 'b');");
    const Ref<Recordset> table = openTable(o, u"Wert"_s);
    const QStringList forward = OpenedDatabase::walk(table);
    EXPECT_EQ(forward.size(), 8);
    EXPECT_EQ(walkBack(table), forward);
    EXPECT_EQ(forward.first(5), (QStringList{u"5"_s, u"4"_s, u"6"_s, u"2"_s, u"8"_s}));
}

} // namespace dao
