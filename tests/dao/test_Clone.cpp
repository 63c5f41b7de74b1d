#include "dao/OpenedDatabase.h"

namespace dao {

TEST(Clone, HasNoCurrentRowAtFirst) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    const Ref<Recordset> clone = rows->Clone();
    EXPECT_EQ(clone->Type(), dbOpenSnapshot);
    EXPECT_EQ(clone->Name(), rows->Name());
    EXPECT_FALSE(clone->Bof());
    EXPECT_FALSE(clone->Eof());
    EXPECT_EQ(clone->AbsolutePosition(), -1);
    EXPECT_EQ(errorOf([&] { clone->value(0); }), 3021);
    EXPECT_EQ(errorOf([&] { clone->Bookmark(); }), 3021);
    EXPECT_EQ(errorOf([&] { clone->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { clone->MovePrevious(); }), 3021);
    EXPECT_EQ(errorOf([&] { clone->Move(0); }), 3021);
    EXPECT_EQ(errorOf([&] { clone->FindNext(u"Nr=1"); }), 3021);
    EXPECT_FALSE(clone->NoMatch());
    clone->MoveFirst();
    EXPECT_EQ(clone->value(0), Variant(1));
}

TEST(Clone, MovesByItself) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    const Ref<Recordset> clone = rows->Clone();
    clone->FindFirst(u"Nr=3");
    EXPECT_EQ(clone->value(0), Variant(3));
    EXPECT_EQ(rows->value(0), Variant(1));
    rows->MoveNext();
    EXPECT_EQ(clone->AbsolutePosition(), 2);
}

TEST(Clone, SharesRowsCountAndBookmarks) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MoveLast();
    o.database->Execute(u"DELETE FROM T"_s, dbFailOnError);
    const Ref<Recordset> clone = rows->Clone();
    EXPECT_EQ(clone->RecordCount(), 3);
    clone->FindFirst(u"Name='zwei'");
    rows->setBookmark(clone->Bookmark());
    EXPECT_EQ(rows->value(0), Variant(2));
    clone->setBookmark(rows->Bookmark());
    const Ref<Recordset> second = clone->Clone();
    second->setBookmark(rows->Bookmark());
    EXPECT_EQ(second->value(0), Variant(2));
}

TEST(Clone, HasItsOwnLife) {
    const OpenedDatabase o(threeRows());
    Ref<Recordset> rows = o.open(u"T"_s);
    const Ref<Recordset> clone = rows->Clone();
    const Variant first = rows->Bookmark();
    rows->Close();
    rows.reset();
    clone->setBookmark(first);
    EXPECT_EQ(OpenedDatabase::walk(clone).size(), 3);
    o.database->Close();
    EXPECT_EQ(errorOf([&] { clone->MoveFirst(); }), 3420);
}

TEST(Clone, KeepsItsRowsWhenTheOtherIsRequeried) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    const Ref<Recordset> clone = rows->Clone();
    o.database->Execute(u"DELETE FROM T WHERE Nr > 1"_s, dbFailOnError);
    rows->Requery();
    clone->MoveLast();
    EXPECT_EQ(clone->RecordCount(), 3);
    EXPECT_EQ(errorOf([&] { rows->setBookmark(clone->Bookmark()); }), 3159);
}

TEST(Clone, TakesNeitherFilterNorSortOver) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->setFilter(u"Nr=1"_s);
    rows->setSort(u"Nr DESC"_s);
    const Ref<Recordset> clone = rows->Clone();
    EXPECT_EQ(clone->Filter(), QString());
    EXPECT_EQ(clone->Sort(), QString());
    EXPECT_EQ(OpenedDatabase::walk(clone->OpenRecordset()).size(), 3);
}

TEST(Clone, KeepsItsPlaceAfterAFailedFind) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> clone = o.open(u"T"_s)->Clone();
    clone->FindFirst(u"Nr=2");
    clone->FindFirst(u"Nr=9");
    EXPECT_TRUE(clone->NoMatch());
    EXPECT_EQ(clone->value(0), Variant(2));
}

TEST(Clone, OfAnEmptySet) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY);");
    const Ref<Recordset> clone = o.open(u"T"_s)->Clone();
    EXPECT_TRUE(clone->Bof());
    EXPECT_TRUE(clone->Eof());
    EXPECT_EQ(errorOf([&] { clone->MoveFirst(); }), 3021);
    clone->FindNext(u"Nr=1");
    EXPECT_TRUE(clone->NoMatch());
}

} // namespace dao
