#include "jet/functions/Aggregates.h"

#include "support/Printing.h"

#include <QString>
#include <vector>

using namespace jet;
using namespace Qt::StringLiterals;
using mkl::Variant;

namespace {

using Row = std::vector<Variant>;

Variant aggregated(QStringView name, const std::vector<Row>& rows) {
    const auto accumulator = findAggregate(name)->create();
    for (const Row& row : rows)
        accumulator->add(row);
    return accumulator->result();
}

} // namespace

TEST(Aggregates, FirstAndLastGoByTheKeys) {
    const std::vector<Row> rows = {{u"b"_s, 2}, {u"c"_s, 3}, {u"a"_s, 1}};
    EXPECT_EQ(aggregated(u"First", rows), Variant(u"a"_s));
    EXPECT_EQ(aggregated(u"Last", rows), Variant(u"c"_s));
    const std::vector<Row> pairs = {{10, 1, u"y"_s}, {20, 1, u"X"_s}, {30, 2, u"a"_s}, {40, 2, Variant()}};
    EXPECT_EQ(aggregated(u"First", pairs), Variant(20));
    EXPECT_EQ(aggregated(u"Last", pairs), Variant(30));
}

TEST(Aggregates, FirstAndLastGiveNullAsItStands) {
    const std::vector<Row> rows = {{Variant(), 1}, {5, 2}, {Variant(), 3}};
    EXPECT_TRUE(aggregated(u"First", rows).isNull());
    EXPECT_TRUE(aggregated(u"Last", rows).isNull());
    EXPECT_TRUE(aggregated(u"First", {}).isNull());
}

TEST(Aggregates, Spread) {
    const std::vector<Row> rows = {{2}, {4}, {Variant()}, {4}, {4}, {5}, {5}, {7}, {9}};
    EXPECT_EQ(aggregated(u"StDevP", rows), Variant(2.0));
    EXPECT_EQ(aggregated(u"VarP", rows), Variant(4.0));
    EXPECT_NEAR(aggregated(u"Var", rows).toDouble(), 32.0 / 7, 1e-12);
    EXPECT_NEAR(aggregated(u"StDev", rows).toDouble(), 2.13808993529939, 1e-12);
    EXPECT_TRUE(aggregated(u"StDev", {{5}}).isNull());
    EXPECT_EQ(aggregated(u"VarP", {{5}}), Variant(0.0));
    EXPECT_TRUE(aggregated(u"VarP", {{Variant()}}).isNull());
}

TEST(Aggregates, AreFoundWithoutRegardToCase) {
    EXPECT_EQ(findAggregate(u"COUNT"), findAggregate(u"Count"));
    EXPECT_EQ(findAggregate(u"Median"), nullptr);
    EXPECT_EQ(findAggregate(u"Max")->create, nullptr);
}
