// What single rows may hold: keys, rules, defaults, counters.
#include "dao/OpenedDatabase.h"
#include "support/PostgresServer.h"

namespace dao {

namespace {

Ref<Recordset> added(const OpenedDatabase& o, std::initializer_list<std::pair<QString, Variant>> values) {
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    table->AddNew();
    for (const auto& [name, value] : values)
        table->setValue(name, value);
    table->Update();
    table->setBookmark(table->LastModified());
    return table;
}

Long errorOfAdd(const OpenedDatabase& o, std::initializer_list<std::pair<QString, Variant>> values) {
    return errorOf([&] { added(o, values); });
}

Long errorOfEdit(const OpenedDatabase& o, const QString& column, const Variant& value) {
    return errorOf([&] {
        const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
        table->Edit();
        table->setValue(column, value);
        table->Update();
    });
}

} // namespace

TEST(RowEditor, KeysAndRules) {
    const OpenedDatabase o("CREATE TABLE Vater (Nr INTEGER PRIMARY KEY); INSERT INTO Vater VALUES (1);"
                           "CREATE TABLE T (A LONG NOT NULL, B TEXT(5) NOT NULL, C INTEGER CHECK (C < 100), D INTEGER,"
                           "V INTEGER REFERENCES Vater (Nr), PRIMARY KEY (A)); CREATE UNIQUE INDEX \"T:D\" ON T (D);"
                           "INSERT INTO T VALUES (1, 'x', 5, 7, 1);");
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 1}, {u"B"_s, u"y"_s}}), 3022);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 2}, {u"B"_s, u"y"_s}, {u"D"_s, 7}}), 3022);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 2}}), 3314);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 2}, {u"B"_s, Variant()}}), 3314);
    EXPECT_EQ(errorOfAdd(o, {{u"B"_s, u"y"_s}}), 3058);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, Variant()}, {u"B"_s, u"y"_s}}), 3058);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 2}, {u"B"_s, u"sechs!"_s}}), 3163);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, u"x"_s}}), 3421);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 3e9}}), 6);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 2}, {u"B"_s, u"y"_s}, {u"C"_s, 100}}), 3317);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 2}, {u"B"_s, u"y"_s}, {u"V"_s, 2}}), 3200);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 2}, {u"X"_s, 2}}), 3265);
    EXPECT_EQ(errorOfEdit(o, u"A"_s, Variant()), 3058);
    EXPECT_EQ(errorOfEdit(o, u"B"_s, Variant()), 3314);
    EXPECT_EQ(errorOfEdit(o, u"C"_s, 100), 3317);
    EXPECT_EQ(errorOfEdit(o, u"V"_s, 3), 3200);
    EXPECT_EQ(o.file.one("SELECT count(*) || max(B) FROM T"), "1x");
    EXPECT_EQ(errorOf([&] { o.open(u"Vater"_s, dbOpenTable)->Delete(); }), 3200);
    EXPECT_EQ(errorOfAdd(o, {{u"A"_s, 2}, {u"B"_s, QString()}}), 0); // an empty text is a value
}

TEST(RowEditor, NullIsNoKeyThoughTheEngineWouldTakeIt) {
    const OpenedDatabase rowid("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT);");
    EXPECT_EQ(errorOfAdd(rowid, {{u"Name"_s, u"x"_s}}), 3058);
    EXPECT_EQ(errorOfAdd(rowid, {{u"Nr"_s, Variant()}}), 3058);
    const OpenedDatabase text("CREATE TABLE T (Name TEXT PRIMARY KEY); INSERT INTO T VALUES ('a');");
    EXPECT_EQ(errorOfAdd(text, {}), 3058);
    EXPECT_EQ(errorOfEdit(text, u"Name"_s, Variant()), 3058);
    EXPECT_EQ(text.file.one("SELECT count(*) FROM T WHERE Name IS NULL"), "0");
}

TEST(RowEditor, ComputedColumns) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Doppelt INTEGER AS (Nr * 2));");
    EXPECT_EQ(errorOfAdd(o, {{u"Nr"_s, 1}, {u"Doppelt"_s, 5}}), 3164);
    EXPECT_EQ(added(o, {{u"Nr"_s, 4}})->value(u"Doppelt"), Variant(8));
}

TEST(RowEditor, Defaults) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Aktiv YESNO DEFAULT -1, Name TEXT DEFAULT 'neu',"
                           "Menge DOUBLE DEFAULT (1 + 1.5), Wann DATETIME DEFAULT '2001-05-01 00:00:00',"
                           "Klein TEXT DEFAULT (lower('ABC')), Preis CURRENCY DEFAULT 1.5, Leer TEXT DEFAULT NULL);");
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    table->AddNew();
    EXPECT_EQ(table->value(u"Nr"), Variant());
    EXPECT_EQ(table->value(u"Aktiv"), Variant(true));
    EXPECT_EQ(table->value(u"Name"), Variant(u"neu"_s));
    EXPECT_EQ(table->value(u"Menge"), Variant(2.5));
    EXPECT_EQ(table->value(u"Wann"), Variant::date(37012));
    EXPECT_EQ(table->value(u"Preis"), Variant::currency(15000));
    EXPECT_EQ(table->value(u"Leer"), Variant());
    table->setValue(u"Nr", 1);
    table->setValue(u"Name", Variant());
    table->Update();
    table->setBookmark(table->LastModified());
    EXPECT_EQ(table->value(u"Aktiv"), Variant(true));
    EXPECT_EQ(table->value(u"Name"), Variant());
    EXPECT_EQ(table->value(u"Klein"), Variant(u"abc"_s));
}

TEST(Counter, IsReadableAfterAddNewAndNotWritable) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT);"
                           "INSERT INTO T VALUES (10, 'zehn'), (20, 'zwanzig'); DELETE FROM T WHERE Nr = 20;");
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    table->AddNew();
    EXPECT_EQ(table->value(u"Nr"), Variant(21)); // numbers of deleted rows never come back
    EXPECT_EQ(errorOf([&] { table->setValue(u"Nr", 5); }), 3164);
    table->setValue(u"Name", u"neu"_s);
    table->Update();
    table->setBookmark(table->LastModified());
    EXPECT_EQ(table->value(u"Nr"), Variant(21));
    table->Edit();
    EXPECT_EQ(errorOf([&] { table->setValue(u"Nr", 5); }), 3164);
}

TEST(Counter, TwoNewRowsAtOnceGetDifferentNumbers) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT);");
    const Ref<Recordset> one = o.open(u"T"_s, dbOpenTable);
    const Ref<Recordset> other = DBEngine::CreateWorkspace()->OpenDatabase(o.file.path())->OpenRecordset(u"T"_s);
    one->AddNew();
    other->AddNew();
    EXPECT_EQ(one->value(0), Variant(1));
    EXPECT_EQ(other->value(0), Variant(2));
    other->Update();
    one->Update();
    one->AddNew();
    one->CancelUpdate(); // its number is lost
    one->AddNew();
    one->Update();
    EXPECT_EQ(o.all(u"SELECT Nr FROM T ORDER BY Nr"_s), (QStringList{u"1"_s, u"2"_s, u"4"_s}));
}

TEST(Counter, EndsWithTheRangeOfLong) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT);"
                           "INSERT INTO T VALUES (2147483646);");
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    table->AddNew();
    EXPECT_EQ(table->value(0), Variant(2147483647));
    table->Update();
    EXPECT_EQ(errorOf([&] { table->AddNew(); }), 6);
    EXPECT_EQ(table->EditMode(), EditMode::None);
    EXPECT_EQ(o.file.one("SELECT max(Nr) FROM T"), "2147483647");
    EXPECT_EQ(mkl::testsOnServer() ? "2147483647" : o.file.one("SELECT seq FROM sqlite_sequence"), "2147483647");
}

TEST(RowEditor, AppendChecksTheSizeOfColumns) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name VARCHAR(3), Kurz SMALLINT);");
    RowWriter writer = o.database->appendRows(u"T"_s, {u"Nr"_s, u"Name"_s, u"Kurz"_s});
    const auto errorOfRow = [&](const Variant& name, const Variant& number) {
        const Variant row[] = {Variant(1), name, number};
        return errorOf([&] { writer.append(row); });
    };
    EXPECT_EQ(errorOfRow(u"vier"_s, 1), 3163);
    EXPECT_EQ(errorOfRow(u"abc"_s, 32768), 6);
    EXPECT_EQ(errorOfRow(u"abc"_s, 32767), 0);
}

} // namespace dao
