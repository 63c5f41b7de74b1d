#include "browser/PaneGeometry.h"

#include "support/Printing.h"

#include <limits>

using namespace mkl;

namespace {
constexpr PaneSetting all{.scaleWidth = 9000};
constexpr PaneSetting noPool{.scaleWidth = 9000, .pool = false};
constexpr PaneSetting noList{.scaleWidth = 9000, .list = false};
constexpr PaneSetting treeOnly{.scaleWidth = 9000, .pool = false, .list = false};
} // namespace

TEST(PaneGeometry, panesOnShowShareTheWidthEvenly) {
    EXPECT_EQ(evenWidths(all), (PaneWidths{3000, 3000, 3000}));
    EXPECT_EQ(evenWidths(noPool), (PaneWidths{0, 4500, 4500}));
    EXPECT_EQ(evenWidths(noList), (PaneWidths{4500, 4500, 0}));
    EXPECT_EQ(evenWidths(treeOnly), (PaneWidths{0, 9000, 0}));
    EXPECT_EQ(evenWidths({.scaleWidth = 8005}).pool, 2668);
    EXPECT_EQ(evenWidths({.scaleWidth = 4005, .pool = false}).tree, 2002); // halves go to the even number
    EXPECT_EQ(evenWidths({.scaleWidth = 4007, .pool = false}).tree, 2004);
}

TEST(PaneGeometry, widthsMakeTheSplitters) {
    EXPECT_EQ(splittersOf({2000, 3000, 4000}, all, {}), (SplitterPlaces{2000, 5030}));
    EXPECT_EQ(splittersOf({2000, 3000, 4000}, noPool, {77, 88}), (SplitterPlaces{77, 3000}));
}

TEST(PaneGeometry, splittersMakeTheWidths) {
    const SplitterPlaces splitters{2000, 5030};
    EXPECT_EQ(widthsBetween(splitters, all), (PaneWidths{2000, 3000, 3940}));
    EXPECT_EQ(widthsBetween(splitters, noPool), (PaneWidths{0, 5030, 3940}));
    EXPECT_EQ(widthsBetween(splitters, noList), (PaneWidths{2000, 6970, 0}));
    EXPECT_EQ(widthsBetween(splitters, treeOnly), (PaneWidths{0, 5030, 0}));
}

TEST(PaneGeometry, theListGetsWhatTheSplittersLeave) {
    const PaneWidths even = evenWidths(all);
    EXPECT_EQ(widthsBetween(splittersOf(even, all, {}), all), (PaneWidths{3000, 3000, 2940}));
}

TEST(PaneGeometry, sharesCountTheSplittersOut) {
    EXPECT_EQ(widthOfShare(50, all), 4470);
    EXPECT_EQ(widthOfShare(50, noPool), 4485);
    EXPECT_EQ(widthOfShare(50, noList), 4470);
    EXPECT_EQ(widthOfShare(50, treeOnly), 4485); // the list's splitter counts even when the list is off
    EXPECT_EQ(widthOfShare(0, all), 0);
    EXPECT_EQ(widthOfShare(-10, all), -894);
    EXPECT_EQ(widthOfShare(150, all), 13410);
    EXPECT_EQ(widthOfShare(2.5, {.scaleWidth = 1060}), 25);
    EXPECT_EQ(widthOfShare(0.25, {.scaleWidth = 1060}), 2); // 2.5
    EXPECT_EQ(widthOfShare(0.35, {.scaleWidth = 1060}), 4); // 3.5
    EXPECT_DOUBLE_EQ(shareOfWidth(4470, all), 50);
    EXPECT_DOUBLE_EQ(shareOfWidth(1000, all), 100.0 / 8940 * 1000);
    EXPECT_DOUBLE_EQ(shareOfWidth(-894, all), -10);
}

TEST(PaneGeometry, sharesThatMakeNoWidth) {
    EXPECT_EQ(errorOf([] { widthOfShare(std::numeric_limits<double>::quiet_NaN(), all); }), 6);
    EXPECT_EQ(errorOf([] { widthOfShare(std::numeric_limits<double>::infinity(), all); }), 6);
    EXPECT_EQ(errorOf([] { widthOfShare(1e9, all); }), 6);
    EXPECT_EQ(errorOf([] { shareOfWidth(1, {.scaleWidth = 60}); }), 11);
}

TEST(PaneGeometry, theListTakesUpAllOfTheDifference) {
    EXPECT_EQ(listWidthToFill({2000, 3000, 3940}, all, 9000), 3940);
    EXPECT_EQ(listWidthToFill({2000, 3000, 1000}, all, 9000), 3940);
    EXPECT_EQ(listWidthToFill({2000, 3000, 1000}, noPool, 9000), 5970); // the pool does not count
    EXPECT_EQ(listWidthToFill({6000, 6000, 6000}, all, 9000), -3060);
}

TEST(PaneGeometry, splittersLeaveThePanesTheirRoom) {
    EXPECT_FALSE(mayPlaceSplitter(5000, 9000, 3000));
    EXPECT_TRUE(mayPlaceSplitter(5001, 9000, 3000));
    EXPECT_TRUE(mayPlaceSplitter(6999, 9000, 3000));
    EXPECT_FALSE(mayPlaceSplitter(7000, 9000, 3000));
    EXPECT_FALSE(mayPlaceSplitter(2000, 9000, 0));
    EXPECT_TRUE(mayPlaceSplitter(2001, 9000, 0));
    EXPECT_FALSE(mayPlaceSplitterArt(2000, 6000));
    EXPECT_TRUE(mayPlaceSplitterArt(2001, 6000));
    EXPECT_TRUE(mayPlaceSplitterArt(3999, 6000));
    EXPECT_FALSE(mayPlaceSplitterArt(4000, 6000));
}
