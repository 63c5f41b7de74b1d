#include "base/types.h"
#include "catalogue/PositionMending.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace mkl;

namespace {

constexpr qint64 highest = std::numeric_limits<Long>::max();
constexpr auto none = std::nullopt;

/// The fewest changes, found by trying every set of rows that stay.
int fewestChanges(const Positions& positions) {
    int fewest = static_cast<int>(positions.size());
    for (unsigned set = 0; set < 1U << positions.size(); ++set) {
        qint64 last = 0;
        int changes = 0;
        bool possible = true;
        for (std::size_t row = 0; row < positions.size() && possible; ++row) {
            const bool stays = (set >> row & 1U) != 0;
            possible = !stays || (positions[row] && *positions[row] > last);
            last = stays && possible ? *positions[row] : last + 1;
            changes += stays ? 0 : 1;
        }
        if (possible && last <= highest) fewest = std::min(fewest, changes);
    }
    return fewest;
}

int changesBetween(const Positions& before, const Positions& after) {
    int changes = 0;
    for (std::size_t row = 0; row < before.size(); ++row)
        changes += before[row] == after[row] ? 0 : 1;
    return changes;
}

} // namespace

TEST(PositionMending, doubledAndMissingOnesNeedIt) {
    EXPECT_FALSE(needMending({}));
    EXPECT_FALSE(needMending({1, 2, 3}));
    EXPECT_FALSE(needMending({-4, 0, 7, highest}));
    EXPECT_FALSE(needMending({none, 1}));
    EXPECT_TRUE(needMending({none, none, 1}));
    EXPECT_TRUE(needMending({1, 2, 2}));
    EXPECT_TRUE(needMending({2, 1, 2}));
    EXPECT_TRUE(needMending({1, highest + 1}));
}

TEST(PositionMending, laterRowsStepAsideOnlyAsFarAsNeeded) {
    EXPECT_EQ(mendedPositions({1, 1, 2, 2}), (Positions{1, 2, 3, 4}));
    EXPECT_EQ(mendedPositions({1, 1, 3, 4}), (Positions{1, 2, 3, 4}));
    EXPECT_EQ(mendedPositions({1, 1, 2, 7}), (Positions{1, 2, 3, 7}));
    EXPECT_EQ(mendedPositions({5, 5, 9}), (Positions{5, 6, 9}));
    EXPECT_EQ(mendedPositions({3, 3, 4, 5, 6}), (Positions{1, 3, 4, 5, 6})); // one row instead of four
}

TEST(PositionMending, rowsWithoutAPositionStayInFront) {
    EXPECT_EQ(mendedPositions({none, none, 3, 3}), (Positions{1, 2, 3, 4}));
    EXPECT_EQ(mendedPositions({none, none, 1}), (Positions{1, 2, 3}));
    EXPECT_EQ(mendedPositions({-2, 0, 0, 4}), (Positions{1, 2, 3, 4}));
}

TEST(PositionMending, staysWithinTheRange) {
    EXPECT_EQ(mendedPositions({highest, highest}), (Positions{1, highest}));
    EXPECT_EQ(mendedPositions({1, highest, highest + 1}), (Positions{1, 2, 3}));
}

TEST(PositionMending, changesAsFewRowsAsPossible) {
    std::mt19937 random(4711);
    for (int round = 0; round < 2000; ++round) {
        Positions positions(random() % 10);
        for (auto& position : positions)
            if (random() % 8 != 0) position = static_cast<qint64>(random() % 12) - 1;
        std::ranges::sort(positions);
        if (random() % 10 == 0 && !positions.empty()) positions.back() = highest;
        const Positions mended = mendedPositions(positions);
        ASSERT_EQ(mended.size(), positions.size());
        for (std::size_t row = 0; row < mended.size(); ++row)
            ASSERT_TRUE(mended[row] && *mended[row] > (row == 0 ? 0 : *mended[row - 1]) && *mended[row] <= highest);
        ASSERT_EQ(changesBetween(positions, mended), fewestChanges(positions)) << "round " << round;
    }
}
