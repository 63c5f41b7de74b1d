#include "dao/RowStore.h"

#include <gtest/gtest.h>
#include <limits>

namespace dao {

TEST(RowStore, GivesBackEveryKindOfValue) {
    RowStore rows;
    rows.appendNull();
    rows.appendReal(0.1);
    rows.appendText("Größe");
    rows.appendBlob(QByteArrayView("\0\1", 2));
    rows.appendText("");
    rows.endRow();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows.value(0, 0).kind, StoredValue::Kind::Null);
    EXPECT_EQ(rows.value(0, 1).real, 0.1);
    EXPECT_EQ(rows.value(0, 2).bytes, "Größe");
    EXPECT_EQ(rows.value(0, 3).kind, StoredValue::Kind::Blob);
    EXPECT_EQ(rows.value(0, 3).bytes.size(), 2);
    EXPECT_EQ(rows.value(0, 4).kind, StoredValue::Kind::Text);
    EXPECT_EQ(rows.value(0, 4).bytes.size(), 0);
}

TEST(RowStore, KeepsWholeNumbersOfEveryWidth) {
    using Limits = std::numeric_limits<qint64>;
    const qint64 numbers[] = {0,
                              1,
                              -1,
                              127,
                              128,
                              -128,
                              -129,
                              32767,
                              -32769,
                              2147483647LL,
                              2147483648LL,
                              -2147483648LL,
                              -2147483649LL,
                              Limits::max(),
                              Limits::min()};
    RowStore rows;
    for (const qint64 number : numbers)
        rows.appendInteger(number);
    rows.endRow();
    int column = 0;
    for (const qint64 number : numbers)
        EXPECT_EQ(rows.value(0, column++).integer, number);
}

TEST(RowStore, RowsMayBeLongerThanItsBlocks) {
    RowStore rows;
    const QByteArray longText(3'000'000, 'x');
    for (int i = 0; i < 300; ++i) {
        rows.appendInteger(i);
        rows.appendText(i % 100 == 0 ? longText : QByteArray(i, 'a'));
        rows.appendInteger(-i);
        rows.endRow();
    }
    ASSERT_EQ(rows.size(), 300);
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(rows.value(i, 0).integer, i);
        EXPECT_EQ(rows.value(i, 1).bytes.size(), i % 100 == 0 ? longText.size() : i);
        EXPECT_EQ(rows.value(i, 2).integer, -i);
    }
}

TEST(RowStore, AMillionRowsTakeLessThanTwiceTheirBytes) {
    RowStore rows;
    qsizetype dataBytes = 0;
    const QByteArray name("Sechskantschraube M8 x 40");
    for (int i = 0; i < 1'000'000; ++i) {
        rows.appendInteger(i);
        rows.appendText(name);
        rows.appendText("2001-05-01 10:00:00");
        rows.appendInteger(-1);
        rows.endRow();
        dataBytes += 4 + name.size() + 19 + 1;
    }
    EXPECT_LT(rows.bytesTaken(), 2 * dataBytes);
}

TEST(RowStore, ClearForgetsTheRows) {
    RowStore rows;
    rows.appendInteger(1);
    rows.endRow();
    rows.clear();
    EXPECT_TRUE(rows.isEmpty());
    rows.appendInteger(2);
    rows.endRow();
    EXPECT_EQ(rows.value(0, 0).integer, 2);
}

} // namespace dao
