// What is not asked again while nobody else can have changed anything, and what is all the same.
#include "dao/FaultPoints.h"
#include "dao/OpenedDatabase.h"

namespace dao {

namespace {

QByteArray numbers() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Wert INTEGER, Text TEXT);"
           "INSERT INTO T VALUES (1, 10, 'a'), (2, 20, 'b'), (3, 30, 'c');";
}

/// The statements that run while it lives.
class Statements {
public:
    Statements() {
        FaultPoints::setObserver([this](QByteArrayView native) { list_.append(native.toByteArray()); });
    }
    ~Statements() { FaultPoints::setObserver({}); }
    Q_DISABLE_COPY_MOVE(Statements)

    QByteArrayList take() { return std::exchange(list_, {}); }

private:
    QByteArrayList list_;
};

void add(Recordset& rows, Long amount) {
    rows.Edit();
    rows.setValue(u"Wert", rows.value(u"Wert").toLong() + amount);
    rows.Update();
}

} // namespace

TEST(ExclusivePeriod, AnEditIsOneReadAndOneWrite) {
    const OpenedDatabase o(numbers());
    o.workspace->BeginTrans();
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    add(*rows, 1);
    rows->MoveNext();
    Statements statements;
    add(*rows, 1);
    const QByteArrayList run = statements.take();
    ASSERT_EQ(run.size(), 2) << run.join("; ").constData();
    EXPECT_TRUE(run[0].startsWith("SELECT"));
    EXPECT_TRUE(run[1].startsWith("UPDATE"));
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT group_concat(Wert) FROM T"), "11,21,30");
}

TEST(ExclusivePeriod, OutsideOfOneTheRowIsCompared) {
    const OpenedDatabase o(numbers());
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    rows->Edit();
    rows->setValue(u"Wert", 99);
    o.file.run("UPDATE T SET Wert = 11 WHERE Nr = 1");
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3197);
    EXPECT_EQ(o.file.one("SELECT Wert FROM T WHERE Nr = 1"), "11");
}

TEST(ExclusivePeriod, AnEditBegunBeforeItIsCompared) {
    const OpenedDatabase o(numbers());
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    rows->Edit();
    rows->setValue(u"Wert", 99);
    o.file.run("UPDATE T SET Wert = 11 WHERE Nr = 1");
    o.workspace->BeginTrans();
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3197);
    o.workspace->Rollback();
}

TEST(ExclusivePeriod, ARowReadBeforeItIsReadAnew) {
    const OpenedDatabase o(numbers());
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    EXPECT_EQ(rows->value(u"Wert"), Variant(10));
    o.file.run("UPDATE T SET Wert = 11 WHERE Nr = 1");
    o.workspace->BeginTrans();
    add(*rows, 1);
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT Wert FROM T WHERE Nr = 1"), "12");
}

TEST(ExclusivePeriod, WhatThisProgramChangedItselfIsCompared) {
    const OpenedDatabase o(numbers());
    o.workspace->BeginTrans();
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    rows->Edit();
    rows->setValue(u"Wert", 99);
    o.database->Execute(u"UPDATE T SET Wert = 11 WHERE Nr = 1"_s);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3197);
    rows->CancelUpdate();
    o.database->Execute(u"DELETE FROM T WHERE Nr = 1"_s);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3167);
    o.workspace->Rollback();
}

TEST(ExclusivePeriod, AnInnerRollbackCountsAsAChange) {
    const OpenedDatabase o(numbers());
    o.workspace->BeginTrans();
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    o.workspace->BeginTrans();
    add(*rows, 1);
    EXPECT_EQ(rows->value(u"Wert"), Variant(11));
    o.workspace->Rollback();
    add(*rows, 5);
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT Wert FROM T WHERE Nr = 1"), "15");
}

// Such a trigger keeps what the statement did before it.
TEST(ExclusivePeriod, AStatementThatATriggerEndsInTheMiddleLeavesNothing) {
    const OpenedDatabase o(numbers());
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    o.file.run("CREATE TRIGGER halb AFTER UPDATE ON T BEGIN SELECT RAISE(FAIL, 'nein'); END;"
               "CREATE TRIGGER auch AFTER INSERT ON T BEGIN SELECT RAISE(FAIL, 'nein'); END;"
               "CREATE TRIGGER weg AFTER DELETE ON T BEGIN SELECT RAISE(FAIL, 'nein'); END");
    o.workspace->BeginTrans();
    EXPECT_NE(errorOf([&] { add(*rows, 1); }), 0);
    rows->CancelUpdate();
    EXPECT_NE(errorOf([&] { rows->Delete(); }), 0);
    table->AddNew();
    table->setValue(u"Nr", 9);
    EXPECT_NE(errorOf([&] { table->Update(); }), 0);
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT group_concat(Wert) FROM T"), "10,20,30");
}

TEST(ExclusivePeriod, ATriggerMadeWithinItCounts) {
    const OpenedDatabase o(numbers());
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    o.workspace->BeginTrans();
    add(*rows, 1);
    o.database->executeNative(u"CREATE TRIGGER halb AFTER UPDATE ON T BEGIN SELECT RAISE(FAIL, 'nein'); END"_s);
    EXPECT_NE(errorOf([&] { add(*rows, 1); }), 0);
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT Wert FROM T WHERE Nr = 1"), "11");
}

TEST(ExclusivePeriod, NewRowsGetCountersOfTheirOwn) {
    const OpenedDatabase o("CREATE TABLE Z (Id INTEGER PRIMARY KEY AUTOINCREMENT, Wert INTEGER DEFAULT 7);");
    const Ref<Recordset> first = o.open(u"Z"_s, dbOpenTable);
    const Ref<Recordset> second = o.open(u"Z"_s, dbOpenTable);
    o.workspace->BeginTrans();
    first->AddNew();
    second->AddNew();
    first->Update();
    second->Update();
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT group_concat(Id || ':' || Wert) FROM Z"), "1:7,2:7");
}

// --- searching again and again ---------------------------------------------------------------------------------------

namespace {

QByteArray hundred() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Wert INTEGER, Text TEXT);"
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100) "
           "INSERT INTO T SELECT i, i % 10, 't' || i FROM n;";
}

Long found(Recordset& rows) {
    return rows.NoMatch() ? -1 : rows.value(u"Nr").toLong();
}

} // namespace

TEST(SearchCopy, DeletedRowsAreFoundByNoSearch) {
    const OpenedDatabase o(hundred());
    o.workspace->BeginTrans();
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    QList<Long> deleted;
    for (rows->FindFirst(u"[Wert]=3"); !rows->NoMatch(); rows->FindFirst(u"[Wert]=3")) {
        deleted.append(found(*rows));
        rows->Delete();
    }
    EXPECT_EQ(deleted, (QList<Long>{3, 13, 23, 33, 43, 53, 63, 73, 83, 93}));
    rows->FindLast(u"[Wert]=4");
    EXPECT_EQ(found(*rows), 94);
    rows->FindPrevious(u"[Wert]=2");
    EXPECT_EQ(found(*rows), 92);
    rows->Delete();
    rows->FindPrevious(u"[Wert]=2"); // from a row that is gone
    EXPECT_EQ(found(*rows), 82);
    rows->FindNext(u"[Wert]=2");
    EXPECT_EQ(rows->NoMatch(), true);
    o.workspace->CommitTrans();
}

TEST(SearchCopy, ManySearchesReadTheRowsOnce) {
    const OpenedDatabase o(hundred());
    o.workspace->BeginTrans();
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    Statements statements;
    for (Long number = 100; number > 90; --number) {
        rows->FindFirst(u"[Nr]="_s + QString::number(number));
        EXPECT_FALSE(rows->NoMatch());
        rows->Delete();
    }
    // Twice all rows, by the first search and for the copy; then the deletions.
    EXPECT_LE(statements.take().size(), 100 + 100 + 2 * 10 + 1);
    o.workspace->Rollback();
}

TEST(SearchCopy, OwnChangesAreSeen) {
    const OpenedDatabase o(hundred());
    o.workspace->BeginTrans();
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    for (int times = 0; times < 3; ++times)
        rows->FindFirst(u"[Wert]=77");
    EXPECT_TRUE(rows->NoMatch());
    o.database->Execute(u"UPDATE T SET Wert = 77 WHERE Nr = 50"_s);
    rows->FindFirst(u"[Wert]=77");
    EXPECT_EQ(found(*rows), 50);
    rows->FindFirst(u"[Wert]=77");
    add(*rows, 1);
    rows->FindFirst(u"[Wert]=77");
    EXPECT_TRUE(rows->NoMatch());
    rows->FindFirst(u"[Wert]=78");
    EXPECT_EQ(found(*rows), 50);
    o.workspace->Rollback();
}

TEST(SearchCopy, WhatADeletionTakesAlongIsSeen) {
    const OpenedDatabase o(hundred() + "CREATE TRIGGER \"T:delete\" AFTER DELETE ON T WHEN OLD.Nr = 1 "
                                       "BEGIN DELETE FROM T WHERE Nr = 21; END;");
    o.workspace->BeginTrans();
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    for (int times = 0; times < 3; ++times)
        rows->FindFirst(u"[Wert]=1");
    rows->Delete();
    rows->FindFirst(u"[Nr]=21");
    EXPECT_TRUE(rows->NoMatch());
    rows->FindFirst(u"[Nr]=22");
    EXPECT_EQ(found(*rows), 22);
    o.workspace->Rollback();
}

TEST(SearchCopy, OutsideOfATransactionOthersAreSeen) {
    const OpenedDatabase o(hundred());
    const Ref<Recordset> rows = o.open(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    for (int times = 0; times < 3; ++times)
        rows->FindFirst(u"[Wert]=77");
    o.file.run("UPDATE T SET Wert = 77 WHERE Nr = 50");
    rows->FindFirst(u"[Wert]=77");
    EXPECT_EQ(found(*rows), 50);
}

// --- finds in whole tables ------------------------------------------------------------------------------------------

TEST(FindInATable, ReadsNoRows) {
    const OpenedDatabase o(numbers());
    o.open(u"T"_s, dbOpenSnapshot)->FindFirst(u"[Nr]=2 AND [Wert]=20");
    Statements statements;
    const Ref<Recordset> rows = o.open(u"T"_s, dbOpenSnapshot);
    rows->FindFirst(u"[Nr]=3 AND [Wert]=20");
    EXPECT_TRUE(rows->NoMatch());
    const QByteArrayList run = statements.take();
    ASSERT_EQ(run.size(), 2) << run.join("; ").constData(); // whether the tables changed, and the find
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));              // a find without a match leaves a snapshot where it was
}

TEST(FindInATable, TheRowsAreThoseBeforeAnOwnChange) {
    const OpenedDatabase o(numbers());
    const Ref<Recordset> rows = o.open(u"T"_s, dbOpenSnapshot);
    o.database->Execute(u"UPDATE T SET Wert = 99"_s);
    o.database->Execute(u"DELETE FROM T WHERE Nr = 1"_s);
    EXPECT_EQ(rows->value(u"Wert"), Variant(10));
    rows->FindFirst(u"[Wert]=99");
    EXPECT_TRUE(rows->NoMatch());
}

// --- counters and tables ---------------------------------------------------------------------------------------------

namespace {

QByteArray counted() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY AUTOINCREMENT, Wert INTEGER);"
           "CREATE TABLE U (Nr INTEGER PRIMARY KEY, Wert INTEGER);"
           "INSERT INTO T VALUES (3, 30)";
}

Long addRow(Recordset& table, Long value) {
    table.AddNew();
    table.setValue(u"Wert", value);
    const Long number = table.value(u"Nr").toLong();
    table.Update();
    return number;
}

} // namespace

TEST(ExclusivePeriod, ManyNewRowsAskForTheHighestNumberOnce) {
    const OpenedDatabase o(counted());
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    o.workspace->BeginTrans();
    EXPECT_EQ(addRow(*table, 1), 4);
    Statements statements;
    EXPECT_EQ(addRow(*table, 2), 5);
    const QByteArrayList run = statements.take();
    ASSERT_EQ(run.size(), 2) << run.join("; ").constData();
    EXPECT_TRUE(run[0].startsWith("UPDATE sqlite_sequence"));
    EXPECT_TRUE(run[1].startsWith("INSERT"));
    EXPECT_FALSE(run[1].contains("RETURNING"));
    EXPECT_EQ(table->value(u"Nr"), Variant(3)); // where it was
    o.workspace->CommitTrans();
    EXPECT_EQ(addRow(*table, 3), 6);
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr || '=' || Wert) FROM T"), "3=30,4=1,5=2,6=3");
}

TEST(ExclusivePeriod, WhateverElseIsWrittenIsSeenByTheCounter) {
    const OpenedDatabase o(counted());
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    o.workspace->BeginTrans();
    EXPECT_EQ(addRow(*table, 1), 4);
    o.database->Execute(u"INSERT INTO T (Nr, Wert) VALUES (20, 2)"_s);
    EXPECT_EQ(addRow(*table, 3), 21);
    table->AddNew(); // never stored
    table->CancelUpdate();
    EXPECT_EQ(addRow(*table, 4), 23);
    table->AddNew();
    table->CancelUpdate();
    o.database->executeNative(u"UPDATE T SET Nr=40 WHERE Nr=4"_s);
    EXPECT_EQ(addRow(*table, 5), 41);
    table->AddNew();
    table->CancelUpdate();
    o.database->Execute(u"INSERT INTO U (Nr, Wert) VALUES (1, 1)"_s);
    EXPECT_EQ(addRow(*table, 6), 43);
    o.workspace->CommitTrans();
}

TEST(ExclusivePeriod, AnInnerRollbackGivesNumbersBack) {
    const OpenedDatabase o(counted());
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    o.workspace->BeginTrans();
    EXPECT_EQ(addRow(*table, 1), 4);
    o.workspace->BeginTrans();
    EXPECT_EQ(addRow(*table, 2), 5);
    o.workspace->Rollback();
    EXPECT_EQ(addRow(*table, 3), 5);
    o.workspace->CommitTrans();
    EXPECT_EQ(o.file.one("SELECT group_concat(Nr || '=' || Wert) FROM T"), "3=30,4=1,5=3");
}

TEST(ExclusivePeriod, TablesThatAreMadeInItAreKnown) {
    const OpenedDatabase o(numbers());
    o.workspace->BeginTrans();
    EXPECT_EQ(o.all(u"SELECT Nr FROM T"_s).size(), 3);
    o.database->Execute(u"SELECT Nr INTO V FROM T WHERE Nr > 1"_s);
    EXPECT_EQ(o.all(u"SELECT Nr FROM V"_s), (QStringList{u"2"_s, u"3"_s}));
    o.workspace->BeginTrans();
    o.database->Execute(u"SELECT Nr INTO W FROM T"_s);
    EXPECT_EQ(o.all(u"SELECT Nr FROM W"_s).size(), 3);
    o.workspace->Rollback();
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM W"_s), 3078);
    o.database->executeNative(u"CREATE TABLE X (Nr INTEGER)"_s);
    EXPECT_EQ(o.all(u"SELECT Nr FROM X"_s), QStringList());
    o.workspace->Rollback();
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM V"_s), 3078);
    EXPECT_EQ(o.errorOfQuery(u"SELECT Nr FROM X"_s), 3078);
}

TEST(FindInATable, OnlyACriterionIsOne) {
    const OpenedDatabase o(numbers());
    const Ref<Recordset> rows = o.open(u"T"_s, dbOpenSnapshot);
    for (int times = 0; times < 2; ++times) { // the second time the shape of the good one is known
        rows->FindFirst(u"Nr=1 Or Nr=2");
        EXPECT_FALSE(rows->NoMatch());
        for (const QStringView bad : {u"Nr=1) Or (Nr=2", u"Nr=1;", u"Nr=1 UNION SELECT 1", u"Nr='", u"", u"Nr=1)"})
            EXPECT_EQ(errorOf([&] { rows->FindFirst(bad); }), 3077) << bad.toString().toStdString();
        EXPECT_EQ(errorOf([&] { rows->FindFirst(u"Fehlt=1"); }), 3070);
    }
}

TEST(FindInATable, AFailureOfTheEngineIsTold) {
    const OpenedDatabase o(numbers());
    const Ref<Recordset> rows = o.open(u"T"_s, dbOpenSnapshot);
    FaultPoints::arm(StatementFault::Interrupt, 1);
    EXPECT_EQ(errorOf([&] { rows->FindFirst(u"Nr=1"); }), 3059);
    FaultPoints::disarm();
    rows->FindFirst(u"Nr=2");
    EXPECT_EQ(rows->value(u"Wert"), Variant(20));
}

} // namespace dao
