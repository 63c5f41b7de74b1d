// Edit, AddNew, Update, CancelUpdate and Delete on record sets of type table.
#include "dao/OpenedDatabase.h"

namespace dao {

namespace {

Ref<Recordset> openTable(const OpenedDatabase& o, const QString& index = {}) {
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    if (!index.isEmpty()) table->setIndex(index);
    return table;
}

QByteArray indexedRows() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT, Platz INTEGER);"
           "CREATE INDEX \"T:Platz\" ON T (Platz);"
           "INSERT INTO T VALUES (1, 'eins', 10), (2, 'zwei', 20), (3, 'drei', 30);";
}

QByteArray stored(const OpenedDatabase& o) {
    return o.file.one("SELECT group_concat(Nr || ifnull(Name, '?'), ',') FROM (SELECT * FROM T ORDER BY Nr)");
}

void rename(const Ref<Recordset>& table, const QString& name) {
    table->Edit();
    table->setValue(u"Name", Variant(name));
    table->Update();
}

void add(const Ref<Recordset>& table, int nr) {
    table->AddNew();
    table->setValue(u"Nr", Variant(nr));
    table->Update();
}

} // namespace

TEST(TableEditing, EditStoresAndStays) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->MoveNext();
    EXPECT_EQ(table->EditMode(), EditMode::None);
    table->Edit();
    EXPECT_EQ(table->EditMode(), EditMode::InProgress);
    EXPECT_EQ(table->value(u"Name"), Variant(u"zwei"_s));
    table->Fields(u"NAME").setValue(Variant(u"neu"_s));
    EXPECT_EQ(table->value(u"Name"), Variant(u"neu"_s));
    EXPECT_EQ(stored(o), "1eins,2zwei,3drei");
    table->Update();
    EXPECT_EQ(table->EditMode(), EditMode::None);
    EXPECT_EQ(stored(o), "1eins,2neu,3drei");
    EXPECT_EQ(table->value(u"Nr"), Variant(2));
    EXPECT_EQ(table->value(u"Name"), Variant(u"neu"_s));
    table->MoveNext();
    EXPECT_EQ(table->value(u"Nr"), Variant(3));
}

TEST(TableEditing, StoresNothingWithoutEdit) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    EXPECT_EQ(errorOf([&] { table->setValue(u"Name", Variant(u"x"_s)); }), 3020);
    EXPECT_EQ(errorOf([&] { table->Fields(1).setValue(Variant(u"x"_s)); }), 3020);
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3020);
    EXPECT_EQ(errorOf([&] { table->CancelUpdate(); }), 3020);
    table->Edit();
    table->Update();
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3020);
    EXPECT_EQ(errorOf([&] { table->setValue(u"Name", Variant(u"x"_s)); }), 3020);
}

TEST(TableEditing, WhatIsPendingIsLostSilently) {
    const OpenedDatabase o(indexedRows());
    const Ref<Recordset> table = openTable(o, u"Platz"_s);
    const Variant first = table->Bookmark();
    const std::function<void()> ways[] = {
        [&] { table->MoveNext(); },
        [&] { table->MoveFirst(); },
        [&] { table->MoveLast(); },
        [&] { table->MovePrevious(); },
        [&] { table->Move(0); },
        [&] { table->Seek(u"=", 20); },
        [&] { table->setBookmark(first); },
        [&] { table->setIndex(u"PrimaryKey"_s); },
        [&] { table->CancelUpdate(); },
        [&] { table->Edit(); },
        [&] { table->AddNew(); },
    };
    for (const auto& way : ways) {
        for (const bool isNew : {false, true}) {
            table->MoveFirst();
            table->MoveNext();
            isNew ? table->AddNew() : table->Edit();
            table->setValue(u"Nr", Variant(50));
            table->setValue(u"Name", Variant(u"weg"_s));
            way();
            table->MoveFirst();
            EXPECT_EQ(table->EditMode(), EditMode::None);
            EXPECT_EQ(errorOf([&] { table->Update(); }), 3020);
            EXPECT_EQ(stored(o), "1eins,2zwei,3drei");
        }
    }
    table->Edit();
    table->setValue(u"Name", Variant(u"weg"_s));
    table->Close();
    EXPECT_EQ(stored(o), "1eins,2zwei,3drei");
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3420);
}

TEST(TableEditing, AFailedMoveLosesItToo) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->AddNew();
    EXPECT_EQ(errorOf([&] { table->setBookmark(Variant(1)); }), 3159);
    EXPECT_EQ(table->EditMode(), EditMode::None);
}

TEST(TableEditing, CancelUpdateGoesBackToTheRow) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->Edit();
    table->setValue(u"Name", Variant(u"weg"_s));
    table->CancelUpdate();
    EXPECT_EQ(table->value(u"Name"), Variant(u"eins"_s));
    table->AddNew();
    table->CancelUpdate();
    EXPECT_EQ(table->value(u"Nr"), Variant(1));
    EXPECT_EQ(stored(o), "1eins,2zwei,3drei");
}

TEST(TableEditing, AfterAddNewTheFormerRowStays) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->MoveNext();
    EXPECT_EQ(errorOf([&] { table->LastModified(); }), 3021);
    table->AddNew();
    EXPECT_EQ(table->EditMode(), EditMode::Add);
    EXPECT_EQ(table->value(u"Name"), Variant());
    table->setValue(u"Nr", Variant(9));
    table->setValue(u"Name", Variant(u"neun"_s));
    table->Update();
    EXPECT_EQ(table->EditMode(), EditMode::None);
    EXPECT_EQ(table->RecordCount(), 4);
    EXPECT_EQ(table->value(u"Nr"), Variant(2));
    table->setBookmark(table->LastModified());
    EXPECT_EQ(table->value(u"Name"), Variant(u"neun"_s));
    EXPECT_EQ(stored(o), "1eins,2zwei,3drei,9neun");
}

TEST(TableEditing, LastModifiedIsAlsoTheEditedRow) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->Edit();
    table->setValue(u"Nr", Variant(100));
    table->Update();
    EXPECT_EQ(table->value(u"Nr"), Variant(100));
    table->MoveFirst();
    EXPECT_EQ(table->value(u"Nr"), Variant(2));
    table->setBookmark(table->LastModified());
    EXPECT_EQ(table->value(u"Name"), Variant(u"eins"_s));
}

TEST(TableEditing, TheFirstRowOfAnEmptyTable) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT);");
    const Ref<Recordset> table = openTable(o);
    EXPECT_EQ(errorOf([&] { table->Edit(); }), 3021);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), 3021);
    add(table, 5);
    EXPECT_FALSE(table->Bof());
    EXPECT_FALSE(table->Eof());
    EXPECT_EQ(errorOf([&] { table->value(0); }), 3021);
    table->MoveFirst();
    EXPECT_EQ(table->value(u"Nr"), Variant(5));
}

TEST(TableEditing, AtTheEndThereIsNothingToEdit) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->MoveLast();
    table->MoveNext();
    EXPECT_EQ(errorOf([&] { table->Edit(); }), 3021);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), 3021);
    add(table, 4);
    EXPECT_TRUE(table->Eof());
    EXPECT_EQ(table->RecordCount(), 4);
}

TEST(TableEditing, DeletedRowStaysCurrent) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->MoveNext();
    const Variant bookmark = table->Bookmark();
    table->Delete();
    EXPECT_EQ(stored(o), "1eins,3drei");
    EXPECT_EQ(table->RecordCount(), 2);
    EXPECT_FALSE(table->Eof());
    EXPECT_EQ(errorOf([&] { table->value(0); }), 3167);
    EXPECT_EQ(errorOf([&] { table->Edit(); }), 3167);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), 3167);
    o.database->Execute(u"INSERT INTO T (Nr, Name) VALUES (2, 'neu')"_s, dbFailOnError);
    EXPECT_EQ(errorOf([&] { table->value(0); }), 3167); // another row, though of the same key
    table->MoveNext();
    EXPECT_EQ(table->value(u"Nr"), Variant(3));
    table->Delete();
    table->MoveNext();
    EXPECT_TRUE(table->Eof());
    EXPECT_EQ(errorOf([&] { table->Delete(); }), 3021);
    table->setBookmark(bookmark);
    table->Delete();
    EXPECT_EQ(errorOf([&] { table->setBookmark(bookmark); }), 3167);
    EXPECT_EQ(stored(o), "1eins");
}

TEST(TableEditing, DeletingTheLastRowLeavesAnEmptyTable) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY); INSERT INTO T VALUES (1);");
    const Ref<Recordset> table = openTable(o);
    table->Delete();
    EXPECT_EQ(errorOf([&] { table->MoveFirst(); }), 3021);
    EXPECT_TRUE(table->Bof() && table->Eof());
}

TEST(TableEditing, AnEditedIndexKeyGoesOnFromItsNewPlace) {
    const OpenedDatabase o(indexedRows());
    const Ref<Recordset> table = openTable(o, u"Platz"_s);
    table->Edit();
    table->setValue(u"Platz", Variant(25));
    table->Update();
    EXPECT_EQ(table->value(u"Name"), Variant(u"eins"_s));
    table->MoveNext();
    EXPECT_EQ(table->value(u"Name"), Variant(u"drei"_s));
    table->MovePrevious();
    table->MovePrevious();
    EXPECT_EQ(table->value(u"Name"), Variant(u"zwei"_s));
}

TEST(TableEditing, RowsAddedElsewhereAreMet) {
    const OpenedDatabase o(indexedRows());
    const Ref<Recordset> one = openTable(o, u"Platz"_s);
    const Ref<Recordset> other = openTable(o);
    other->AddNew();
    other->setValue(u"Nr", Variant(7));
    other->setValue(u"Platz", Variant(15));
    other->Update();
    one->MoveNext();
    EXPECT_EQ(one->value(u"Nr"), Variant(7));
    o.file.run("INSERT INTO T VALUES (8, 'fremd', 17)");
    one->MoveNext();
    EXPECT_EQ(one->value(u"Nr"), Variant(8));
    EXPECT_EQ(one->RecordCount(), 5);
    one->Delete();
    EXPECT_EQ(other->RecordCount(), 4);
}

TEST(TableEditing, WhatAnotherChangedIsNotOverwritten) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->Edit();
    table->setValue(u"Name", Variant(u"meins"_s));
    o.file.run("UPDATE T SET Name = 'EINS' WHERE Nr = 1"); // differs in its letters only
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3197);
    EXPECT_EQ(table->EditMode(), EditMode::InProgress);
    EXPECT_EQ(stored(o), "1EINS,2zwei,3drei");
    rename(table, u"doch"_s);
    EXPECT_EQ(stored(o), "1doch,2zwei,3drei");
}

TEST(TableEditing, SoItIsWithinOneProgram) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> one = openTable(o);
    const Ref<Recordset> other = openTable(o);
    one->Edit();
    rename(other, u"anders"_s);
    one->setValue(u"Name", Variant(u"meins"_s));
    EXPECT_EQ(errorOf([&] { one->Update(); }), 3197);
    one->CancelUpdate();
    EXPECT_EQ(one->value(u"Name"), Variant(u"anders"_s));
}

TEST(TableEditing, ARowThatIsGone) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->Edit();
    table->setValue(u"Name", Variant(u"meins"_s));
    o.file.run("DELETE FROM T WHERE Nr = 1");
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3167);
    EXPECT_EQ(errorOf([&] { table->Edit(); }), 3167);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), 3167);
    table->MoveNext();
    EXPECT_EQ(table->value(u"Nr"), Variant(2));
}

TEST(TableEditing, EditReadsTheRowAnew) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    o.file.run("UPDATE T SET Name = 'fremd' WHERE Nr = 1");
    table->Edit();
    EXPECT_EQ(table->value(u"Name"), Variant(u"fremd"_s));
    table->Update();
    EXPECT_EQ(stored(o), "1fremd,2zwei,3drei");
}

TEST(TableEditing, AFailedUpdateCanBeMended) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    table->AddNew();
    table->setValue(u"Nr", Variant(2));
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3022);
    EXPECT_EQ(table->EditMode(), EditMode::Add);
    table->setValue(u"Nr", Variant(4));
    table->Update();
    table->Edit();
    table->setValue(u"Nr", Variant(3));
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3022);
    table->CancelUpdate();
    EXPECT_EQ(stored(o), "1eins,2zwei,3drei,4?");
}

TEST(TableEditing, ReadOnlyDatabase) {
    const OpenedDatabase o(threeRows(), {.readOnly = true});
    const Ref<Recordset> table = openTable(o);
    EXPECT_FALSE(table->Updatable());
    EXPECT_EQ(errorOf([&] { table->Edit(); }), 3027);
    EXPECT_EQ(errorOf([&] { table->AddNew(); }), 3027);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), 3027);
    EXPECT_EQ(table->EditMode(), EditMode::None);
}

TEST(TableEditing, ATableWithoutAnyKey) {
    const OpenedDatabase o("CREATE TABLE T (Wert INTEGER); INSERT INTO T VALUES (5), (5), (5);");
    const Ref<Recordset> table = openTable(o);
    table->MoveNext();
    const Variant bookmark = table->Bookmark();
    table->Edit();
    table->setValue(u"Wert", Variant(6));
    table->Update();
    table->MoveFirst();
    table->Delete();
    EXPECT_EQ(o.file.one("SELECT group_concat(Wert) FROM T"), "6,5");
    table->setBookmark(bookmark);
    EXPECT_EQ(table->value(0), Variant(6));
    table->AddNew();
    table->Update();
    table->setBookmark(table->LastModified());
    EXPECT_EQ(table->value(0), Variant());
}

TEST(TableEditing, BookmarksBelongToTheRecordSetAndItsClones) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o, u"PrimaryKey"_s);
    table->MoveLast();
    const Ref<Recordset> clone = table->Clone();
    EXPECT_EQ(clone->Index(), QString());
    EXPECT_EQ(errorOf([&] { clone->value(0); }), 3021);
    EXPECT_EQ(errorOf([&] { clone->Bookmark(); }), 3021);
    clone->setBookmark(table->Bookmark());
    EXPECT_EQ(clone->value(0), Variant(3));
    table->setBookmark(clone->Bookmark());
    EXPECT_EQ(errorOf([&] { openTable(o)->setBookmark(table->Bookmark()); }), 3159);
    for (const Variant& wrong : {Variant(), Variant(3), Variant(QByteArray("x")), Variant(u"3"_s)})
        EXPECT_EQ(errorOf([&] { table->setBookmark(wrong); }), 3159);
    EXPECT_EQ(table->value(0), Variant(3));
    table->MoveNext();
    EXPECT_EQ(errorOf([&] { table->Bookmark(); }), 3021);
    table->Close();
    clone->MovePrevious();
    EXPECT_EQ(clone->value(0), Variant(2));
}

TEST(TableEditing, InsideATransaction) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = openTable(o);
    o.workspace->BeginTrans();
    rename(table, u"neu"_s);
    add(table, 4);
    table->Delete();
    EXPECT_EQ(table->RecordCount(), 3);
    EXPECT_EQ(stored(o), "1eins,2zwei,3drei");
    o.workspace->Rollback();
    EXPECT_EQ(table->RecordCount(), 3);
    table->MoveFirst();
    EXPECT_EQ(table->value(u"Name"), Variant(u"eins"_s));
    o.workspace->BeginTrans();
    add(table, 4);
    add(table, 5);
    table->AddNew();
    table->setValue(u"Nr", Variant(4));
    EXPECT_EQ(errorOf([&] { table->Update(); }), 3022);
    o.workspace->CommitTrans();
    EXPECT_EQ(stored(o), "1eins,2zwei,3drei,4?,5?");
}

} // namespace dao
