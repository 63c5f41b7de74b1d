// Type 4 over more rows than are read at the opening.
#include "dao/OpenedDatabase.h"

namespace dao {

namespace {

constexpr int manyRows = 1000;

// Numbers 1 to 1000, their remainder by ten and a name.
QByteArray largeTable() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Rest INTEGER, Name TEXT);"
           "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 1000)"
           " INSERT INTO T SELECT i, i % 10, 'Name ' || i FROM n;";
}

const QString allRows = u"SELECT Nr, Rest, Name FROM T"_s;

QStringList numbers(int first, int last) {
    QStringList result;
    for (int number = first; number <= last; ++number)
        result.append(QString::number(number));
    return result;
}

} // namespace

TEST(LargeSnapshot, WalksAllRows) {
    const OpenedDatabase o(largeTable());
    EXPECT_EQ(o.all(allRows), numbers(1, manyRows));
    EXPECT_EQ(OpenedDatabase::walk(o.open(u"T"_s)), numbers(1, manyRows));
}

TEST(LargeSnapshot, CountsTheRowsVisited) {
    const OpenedDatabase o(largeTable());
    for (const QString& source : {allRows, u"T"_s}) {
        const Ref<Recordset> rows = o.open(source);
        EXPECT_EQ(rows->RecordCount(), 1);
        rows->MoveLast();
        EXPECT_EQ(rows->RecordCount(), manyRows);
        EXPECT_EQ(rows->AbsolutePosition(), manyRows - 1);
        EXPECT_EQ(rows->value(u"Name"), Variant(u"Name 1000"_s));
        rows->MoveFirst();
        EXPECT_EQ(rows->RecordCount(), manyRows);
        EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    }
}

TEST(LargeSnapshot, HoldsWhatWasThereAtTheOpening) {
    const OpenedDatabase o(largeTable());
    const QList<QString> sources{allRows, u"T"_s};
    const QList<QString> actions{u"DELETE FROM T WHERE Nr > 5"_s, u"UPDATE T SET Nr = Nr + 5000"_s,
                                 u"INSERT INTO T (Nr, Rest) VALUES (0, 0)"_s};
    for (const QString& action : actions)
        for (const QString& source : sources) {
            o.workspace->BeginTrans();
            const Ref<Recordset> rows = o.open(source);
            o.database->Execute(action, dbFailOnError);
            EXPECT_EQ(OpenedDatabase::walk(rows), numbers(1, manyRows)) << action.toStdString();
            o.workspace->Rollback();
        }
}

TEST(LargeSnapshot, HoldsWhatARollbackUndoes) {
    const OpenedDatabase o(largeTable());
    o.workspace->BeginTrans();
    o.database->Execute(u"DELETE FROM T WHERE Nr > 900"_s, dbFailOnError);
    const Ref<Recordset> rows = o.open(u"T"_s);
    const Ref<Recordset> counted = o.open(u"T"_s);
    o.workspace->Rollback();
    EXPECT_EQ(OpenedDatabase::walk(rows), numbers(1, 900));
    counted->MoveLast();
    EXPECT_EQ(counted->RecordCount(), 900);
    EXPECT_EQ(o.all(allRows), numbers(1, manyRows));
}

TEST(LargeSnapshot, HoldsWhatAnAppendedRowOrAScriptChanges) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    o.database->appendRows(u"T"_s, {u"Nr"_s}).append(std::array<Variant, 1>{Variant(-1)});
    const Ref<Recordset> later = o.open(u"T"_s);
    o.database->executeNative(u"DROP TABLE \"T\""_s);
    EXPECT_EQ(OpenedDatabase::walk(rows), numbers(1, manyRows));
    EXPECT_THAT(OpenedDatabase::walk(later),
                testing::UnorderedElementsAreArray(QStringList{u"-1"_s} + numbers(1, manyRows)));
}

// The opening reads some rows; the rest is that of the moment when it is first needed.
TEST(LargeSnapshot, AnotherProgramShowsInRowsNotYetRead) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    o.file.run("DELETE FROM T WHERE Nr > 900");
    rows->MoveLast();
    EXPECT_EQ(rows->value(u"Nr"), Variant(900));
    EXPECT_EQ(rows->RecordCount(), 900);
    o.file.run("DELETE FROM T");
    rows->MoveFirst();
    EXPECT_EQ(OpenedDatabase::walk(rows), numbers(1, 900));
}

TEST(LargeSnapshot, ARowThatAnotherProgramDeletedBeforeItWasReadIsDeleted) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), manyRows);
    o.file.run("DELETE FROM T WHERE Nr > 900");
    EXPECT_EQ(errorOf([&] { rows->value(u"Nr"); }), 3167);
    rows->MovePrevious();
    EXPECT_EQ(errorOf([&] { rows->setAbsolutePosition(900); }), 3021);
}

TEST(LargeSnapshot, LeavesNoReadLockBehind) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MoveNext();
    o.file.run("PRAGMA journal_mode = DELETE; BEGIN EXCLUSIVE; DELETE FROM T WHERE Nr = 1; COMMIT");
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
}

TEST(LargeSnapshot, IsReadAtOnceWhereItsFirstRowCostAsMuchAsAll) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"SELECT Nr FROM T ORDER BY Name, Rest"_s);
    o.file.run("DELETE FROM T");
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), manyRows);
}

TEST(LargeSnapshot, OneThatIsClosedUnreadIsForgotten) {
    const OpenedDatabase o(largeTable());
    for (int i = 0; i < 10; ++i)
        o.open(u"T"_s)->Close();
    o.open(u"T"_s);
    o.database->Execute(u"DELETE FROM T"_s, dbFailOnError);
    EXPECT_TRUE(o.open(u"T"_s)->Eof());
}

TEST(LargeSnapshot, AnErrorOfARowNeededLater) {
    const OpenedDatabase o(largeTable());
    EXPECT_EQ(o.errorOfQuery(u"SELECT 1 / (Nr - 5) FROM T"_s), 11);
    const Ref<Recordset> rows = o.open(u"SELECT Nr, 1 / (Nr - 900) FROM T"_s);
    EXPECT_EQ(rows->value(0), Variant(1));
    EXPECT_EQ(errorOf([&] { rows->MoveLast(); }), 11);
    EXPECT_EQ(errorOf([&] { rows->FindFirst(u"Nr=900"); }), 11);
    EXPECT_EQ(rows->value(0), Variant(1));
    o.database->Execute(u"DELETE FROM T WHERE Nr = 900"_s, dbFailOnError);
    EXPECT_EQ(errorOf([&] { rows->MoveLast(); }), 11);
}

TEST(LargeSnapshot, ValuesGivenOutStayValid) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    const Variant first = rows->value(u"Name");
    rows->MoveLast();
    const Variant last = rows->value(u"Name");
    rows->Close();
    EXPECT_EQ(first, Variant(u"Name 1"_s));
    EXPECT_EQ(last, Variant(u"Name 1000"_s));
}

TEST(LargeSnapshot, RequeryReadsAnew) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MoveLast();
    o.database->Execute(u"DELETE FROM T WHERE Nr > 3"_s, dbFailOnError);
    EXPECT_EQ(rows->RecordCount(), manyRows);
    rows->Requery();
    EXPECT_EQ(rows->RecordCount(), 1);
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    EXPECT_EQ(OpenedDatabase::walk(rows), numbers(1, 3));
}

TEST(LargeSnapshot, RequeryOfWhatBecameEmpty) {
    const OpenedDatabase o(largeTable());
    const Ref<Recordset> rows = o.open(u"T"_s);
    o.database->Execute(u"DELETE FROM T"_s, dbFailOnError);
    rows->Requery();
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0);
}

TEST(Snapshot, IsNotUpdatable) {
    const OpenedDatabase o(threeRows());
    for (const Long type : {dbOpenSnapshot, dbOpenForwardOnly}) {
        const Ref<Recordset> rows = o.open(u"T"_s, type);
        EXPECT_FALSE(rows->Updatable());
        EXPECT_EQ(rows->EditMode(), EditMode::None);
        EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3251);
        EXPECT_EQ(errorOf([&] { rows->AddNew(); }), 3251);
        EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3251);
        EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
        EXPECT_EQ(errorOf([&] { rows->CancelUpdate(); }), 3020);
        EXPECT_EQ(errorOf([&] { rows->setValue(u"Name", u"neu"_s); }), 3020);
        EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    }
}

TEST(Snapshot, KnowsItsName) {
    const OpenedDatabase o(threeRows());
    EXPECT_EQ(o.open(u"[t]"_s)->Name(), u"T"_s);
    EXPECT_EQ(o.open(u"t"_s, dbOpenTable)->Name(), u"T"_s);
    EXPECT_EQ(o.open(u"SELECT Nr FROM T"_s)->Name(), u"SELECT Nr FROM T"_s);
}

TEST(Snapshot, AbsolutePositionCanBeSet) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->setAbsolutePosition(2);
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->PercentPosition(), 100.0F);
    rows->setAbsolutePosition(1);
    EXPECT_EQ(rows->PercentPosition(), 50.0F);
    for (const Long beyond : {-1, 3, 1000})
        EXPECT_EQ(errorOf([&] { rows->setAbsolutePosition(beyond); }), 3021);
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    rows->MoveLast();
    rows->MoveNext();
    EXPECT_EQ(rows->AbsolutePosition(), -1);
    rows->setAbsolutePosition(0);
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    const Ref<Recordset> once = o.open(u"T"_s, dbOpenForwardOnly);
    EXPECT_EQ(errorOf([&] { once->setAbsolutePosition(1); }), 3251);
    EXPECT_EQ(errorOf([&] { o.open(u"T"_s, dbOpenTable)->AbsolutePosition(); }), 3251);
}

TEST(Snapshot, MovesBySeveralRows) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->Move(2);
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    rows->Move(-1);
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
    rows->Move(0);
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
    rows->Move(5);
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(errorOf([&] { rows->Move(1); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Move(0); }), 3021);
    rows->Move(-2);
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
    rows->Move(-7);
    EXPECT_TRUE(rows->Bof());
    EXPECT_EQ(errorOf([&] { rows->Move(-1); }), 3021);
    rows->Move(1);
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    const Variant first = rows->Bookmark();
    rows->MoveLast();
    rows->Move(1, first);
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
}

TEST(Snapshot, MovesOfAnEmptySet) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY);");
    for (const Long type : {dbOpenSnapshot, dbOpenForwardOnly}) {
        const Ref<Recordset> rows = o.open(u"T"_s, type);
        EXPECT_EQ(errorOf([&] { rows->Move(1); }), 3021);
        EXPECT_EQ(errorOf([&] { rows->Move(0); }), 3021);
        EXPECT_TRUE(rows->Bof());
        EXPECT_TRUE(rows->Eof());
    }
}

TEST(ForwardOnly, MovesOnBySeveralRowsOnly) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s, dbOpenForwardOnly);
    rows->Move(2);
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(errorOf([&] { rows->Move(-1); }), 3219);
    rows->Move(4);
    EXPECT_TRUE(rows->Eof());
    rows->Requery();
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
    EXPECT_EQ(rows->RecordCount(), 1);
}

} // namespace dao
