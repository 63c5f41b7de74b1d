#include "dao/OpenedDatabase.h"

namespace dao {

TEST(Bookmark, BringsItsRowBack) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MoveNext();
    const Variant second = rows->Bookmark();
    EXPECT_EQ(rows->Bookmark(), second);
    rows->MoveLast();
    EXPECT_NE(rows->Bookmark(), second);
    rows->setBookmark(second);
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    rows->MoveLast();
    rows->MoveNext();
    rows->setBookmark(second);
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
}

TEST(Bookmark, NeedsACurrentRow) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    rows->MovePrevious();
    EXPECT_EQ(errorOf([&] { rows->Bookmark(); }), 3021);
    EXPECT_EQ(errorOf([&] { o.open(u"SELECT Nr FROM T WHERE Nr > 9"_s)->Bookmark(); }), 3021);
}

TEST(Bookmark, IsInvalidElsewhere) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    const Ref<Recordset> same = o.open(u"T"_s);
    same->MoveLast();
    EXPECT_EQ(errorOf([&] { rows->setBookmark(same->Bookmark()); }), 3159);
    const QList<Variant> strangers{Variant(),
                                   Variant(1),
                                   Variant(u"2"_s),
                                   Variant(QByteArray("abc")),
                                   Variant(QByteArray()),
                                   Variant(QByteArray(16, '\0'))};
    for (const Variant& stranger : strangers)
        EXPECT_EQ(errorOf([&] { rows->setBookmark(stranger); }), 3159);
    EXPECT_EQ(rows->value(u"Nr"), Variant(1));
}

TEST(Bookmark, DiesWithARequery) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s);
    const Variant first = rows->Bookmark();
    rows->Requery();
    EXPECT_EQ(errorOf([&] { rows->setBookmark(first); }), 3159);
    EXPECT_NE(rows->Bookmark(), first);
}

TEST(Bookmark, NotOfASinglePass) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> rows = o.open(u"T"_s, dbOpenForwardOnly);
    EXPECT_EQ(errorOf([&] { rows->Bookmark(); }), 3251);
    EXPECT_EQ(errorOf([&] { rows->setBookmark(Variant()); }), 3251);
    EXPECT_EQ(errorOf([&] { rows->Clone(); }), 3251);
}

} // namespace dao
