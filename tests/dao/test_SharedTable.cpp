// Type 1 over a table that another program changes between two calls.
#include "dao/OpenedDatabase.h"

#include <random>
#include <set>

namespace dao {

namespace {

QByteArray positions() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Art INTEGER, Pos INTEGER);"
           "CREATE INDEX \"T:ArtPos\" ON T (Art, Pos);"
           "INSERT INTO T VALUES (1, 7, 1), (2, 7, 2), (3, 7, 3), (4, 8, 1), (5, NULL, 1), (6, 9, NULL);";
}

Ref<Recordset> byPosition(const OpenedDatabase& o) {
    const Ref<Recordset> rows = o.open(u"T"_s, dbOpenTable);
    rows->setIndex(u"ArtPos"_s);
    return rows;
}

// The number of the row found, -1 without a match.
template<class... Keys>
Long seek(const Ref<Recordset>& rows, QStringView comparison, const Keys&... keys) {
    rows->Seek(comparison, keys...);
    return rows->NoMatch() ? -1 : rows->value(u"Nr").toLong();
}

} // namespace

TEST(SharedTable, RowsAddedBeforeAndBehindThePosition) {
    const OpenedDatabase o(positions());
    const Ref<Recordset> rows = byPosition(o);
    EXPECT_EQ(seek(rows, u"=", 7, 2), 2);
    o.file.run("INSERT INTO T VALUES (20, 7, 2), (21, 7, 1), (22, 7, 2)");
    EXPECT_EQ(rows->RecordCount(), 9);
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Nr"), Variant(20));
    rows->MovePrevious();
    rows->MovePrevious();
    EXPECT_EQ(rows->value(u"Nr"), Variant(21));
}

TEST(SharedTable, TheNeighbourIsDeleted) {
    const OpenedDatabase o(positions());
    const Ref<Recordset> rows = byPosition(o);
    EXPECT_EQ(seek(rows, u"=", 7, 2), 2);
    o.file.run("DELETE FROM T WHERE Nr IN (1, 3)");
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Nr"), Variant(4));
    rows->MovePrevious();
    rows->MovePrevious();
    EXPECT_EQ(rows->value(u"Nr"), Variant(5));
}

TEST(SharedTable, TheCurrentRowIsDeleted) {
    const OpenedDatabase o(positions());
    const Ref<Recordset> rows = byPosition(o);
    EXPECT_EQ(seek(rows, u"=", 7, 2), 2);
    o.file.run("DELETE FROM T WHERE Nr = 2");
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    EXPECT_EQ(seek(rows, u"=", 7, 2), -1);
}

TEST(SharedTable, AllRowsAreDeleted) {
    const OpenedDatabase o(positions());
    const Ref<Recordset> rows = byPosition(o);
    o.file.run("DELETE FROM T");
    EXPECT_EQ(rows->RecordCount(), 0);
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3021);
    o.file.run("INSERT INTO T VALUES (9, 1, 1)");
    rows->MoveFirst();
    EXPECT_EQ(rows->value(u"Nr"), Variant(9));
}

TEST(SharedTable, ARowIsMovedByAnotherProgram) {
    const OpenedDatabase o(positions());
    const Ref<Recordset> rows = byPosition(o);
    EXPECT_EQ(seek(rows, u"=", 7, 1), 1);
    o.file.run("UPDATE T SET Pos = 9 WHERE Nr = 2");
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Nr"), Variant(2));
    EXPECT_EQ(rows->value(u"Pos"), Variant(9));
}

TEST(SeekByKeys, EqualInAllKeysGiven) {
    const OpenedDatabase o(positions());
    const Ref<Recordset> rows = byPosition(o);
    EXPECT_EQ(seek(rows, u"=", 7, 3), 3);
    EXPECT_EQ(seek(rows, u"=", 7, 4), -1);
    EXPECT_EQ(errorOf([&] { rows->value(0); }), 3021);
    EXPECT_EQ(seek(rows, u"=", 7), 1);
    EXPECT_EQ(seek(rows, u"=", Variant(), 1), 5);
    EXPECT_EQ(seek(rows, u"=", 9, Variant()), 6);
}

TEST(SeekByKeys, Beside) {
    const OpenedDatabase o(positions());
    const Ref<Recordset> rows = byPosition(o);
    EXPECT_EQ(seek(rows, u">=", 7, 2), 2);
    EXPECT_EQ(seek(rows, u">", 7, 2), 3);
    EXPECT_EQ(seek(rows, u">", 7, 3), 4);
    EXPECT_EQ(seek(rows, u">=", 7, 4), 4);
    EXPECT_EQ(seek(rows, u">", 8, 1), 6);
    EXPECT_EQ(seek(rows, u">", 9, 1), -1);
    EXPECT_EQ(seek(rows, u"<=", 7, 2), 2);
    EXPECT_EQ(seek(rows, u"<", 7, 2), 1);
    EXPECT_EQ(seek(rows, u"<", 8, 1), 3);
    EXPECT_EQ(seek(rows, u"<=", 9, 5), 6);
    EXPECT_EQ(seek(rows, u"<", 7, 1), 5);
}

TEST(SeekByKeys, WrongUse) {
    const OpenedDatabase o(positions());
    const Ref<Recordset> rows = byPosition(o);
    EXPECT_EQ(errorOf([&] { rows->Seek(u"="); }), 5);
    EXPECT_EQ(errorOf([&] { rows->Seek(u"=", 1, 2, 3); }), 5);
    EXPECT_EQ(errorOf([&] { rows->Seek(u"=", 1, u"x"_s); }), 3421);
    rows->setIndex({});
    EXPECT_EQ(errorOf([&] { rows->Seek(u"=", 1); }), 3019);
}

// Random changes of another program between random calls, against the sorted rows.
TEST(SharedTable, RandomChangesBetweenCalls) {
    using Key = std::array<Long, 3>; // Art, Pos, Nr: the order of the index
    const quint32 seed = 99;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto pick = [&](int limit) { return Long(random() % quint32(limit)); };
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Art INTEGER, Pos INTEGER);"
                           "CREATE INDEX \"T:ArtPos\" ON T (Art, Pos);");
    std::set<Key> model;
    const auto insert = [&](Long number) {
        const Key key{pick(4), pick(6), number};
        model.insert(key);
        o.file.run("INSERT INTO T VALUES (" + QByteArray::number(number) + ", " + QByteArray::number(key[0]) + ", " +
                   QByteArray::number(key[1]) + ")");
    };
    for (Long number = 1; number <= 12; ++number)
        insert(number);
    const Ref<Recordset> rows = byPosition(o);
    std::optional<Key> current = *model.begin();
    for (int step = 0; step < 300; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        if (const Long change = pick(4); change == 0) {
            insert(1000 + step);
        } else if (change == 1 && model.size() > 5) {
            const Key gone = *std::next(model.begin(), pick(Long(model.size())));
            model.erase(gone);
            o.file.run("DELETE FROM T WHERE Nr = " + QByteArray::number(gone[2]));
        }
        switch (pick(5)) {
        case 0:
            rows->MoveFirst();
            current = *model.begin();
            break;
        case 1:
        case 2: {
            if (!current) break;
            const auto next = model.upper_bound(*current);
            rows->MoveNext();
            current = next == model.end() ? std::nullopt : std::optional(*next);
            break;
        }
        case 3: {
            if (!current) break;
            const auto at = model.lower_bound(*current);
            rows->MovePrevious();
            current = at == model.begin() ? std::nullopt : std::optional(*std::prev(at));
            break;
        }
        default: {
            const Long kind = pick(5), position = pick(7);
            const auto found = model.lower_bound({kind, position, 0});
            rows->Seek(u">=", kind, position);
            ASSERT_EQ(rows->NoMatch(), found == model.end());
            current = found == model.end() ? std::nullopt : std::optional(*found);
        }
        }
        ASSERT_EQ(rows->RecordCount(), Long(model.size()));
        if (current)
            ASSERT_EQ(rows->value(u"Nr"), Variant((*current)[2]));
        else
            ASSERT_EQ(errorOf([&] { rows->value(u"Nr"); }), 3021);
    }
}

} // namespace dao
