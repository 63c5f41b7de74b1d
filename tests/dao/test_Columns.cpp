#include "dao/Columns.h"
#include "dao/LruCache.h"

#include <QString>
#include <gtest/gtest.h>

namespace dao {

using namespace Qt::StringLiterals;
using jet::ColumnType;

TEST(Columns, FindsNamesWithoutRegardToCase) {
    const Columns columns({{u"Order"_s, ColumnType::Int, u"ARTKAT"_s, u"Order"_s},
                           {u"ARTKAT.LetzteÄnderung"_s, ColumnType::Date, u"ARTKAT"_s, u"LetzteÄnderung"_s},
                           {u"ARTIKEL.LetzteÄnderung"_s, ColumnType::Date, u"ARTIKEL"_s, u"LetzteÄnderung"_s},
                           {u"Expr1000"_s, ColumnType::Int, {}, {}}});
    EXPECT_EQ(columns.find(u"Order"), 0);
    EXPECT_EQ(columns.find(u"ORDER"), 0);
    EXPECT_EQ(columns.find(u"artkat.letzteänderung"), 1);
    EXPECT_EQ(columns.find(u"ARTIKEL.LETZTEÄNDERUNG"), 2);
    EXPECT_EQ(columns.find(u"LetzteÄnderung"), -1);
    EXPECT_EQ(columns.find(u"ARTKAT.Order"), 0);
    EXPECT_EQ(columns.find(u"expr1000"), 3);
    EXPECT_EQ(columns.find(u""), -1);
}

TEST(LruCache, ForgetsWhatWasNotAskedForLongest) {
    LruCache<QString, int> cache(2);
    cache.insert(u"a"_s, 1);
    cache.insert(u"b"_s, 2);
    ASSERT_NE(cache.find(u"a"_s), nullptr);
    cache.insert(u"c"_s, 3);
    EXPECT_EQ(cache.find(u"b"_s), nullptr);
    EXPECT_EQ(*cache.find(u"a"_s), 1);
    EXPECT_EQ(*cache.find(u"c"_s), 3);
    EXPECT_EQ(cache.size(), 2);
    cache.clear();
    EXPECT_EQ(cache.find(u"a"_s), nullptr);
}

} // namespace dao
