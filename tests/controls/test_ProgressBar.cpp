#include "controls/ProgressBar.h"

#include <gtest/gtest.h>

namespace mkl {

TEST(ProgressBar, ClampsItsValue) {
    ProgressBar bar;
    bar.setMax(10);
    bar.setValue(7);
    EXPECT_EQ(bar.Value(), 7);
    bar.setValue(11);
    EXPECT_EQ(bar.Value(), 10);
    bar.setValue(-1);
    EXPECT_EQ(bar.Value(), 0);
    bar.setValue(9);
    bar.setMax(5);
    EXPECT_EQ(bar.Value(), 5);
    EXPECT_EQ(bar.value(), 5);
}

TEST(ProgressBar, AnEmptyRangeIsNoError) {
    ProgressBar bar;
    bar.setMax(0);
    EXPECT_EQ(bar.Max(), 0);
    EXPECT_EQ(bar.Value(), 0);
    bar.setMin(5);
    EXPECT_EQ(bar.Min(), 5);
    bar.setValue(3);
    EXPECT_EQ(bar.Value(), 5);
    EXPECT_FALSE(bar.minimum() == 0 && bar.maximum() == 0); // no busy indicator
}

TEST(ProgressBar, TheFullRangeOfLong) {
    ProgressBar bar;
    bar.setMax(2147483647);
    bar.setMin(2147483647);
    bar.setValue(2147483647);
    EXPECT_EQ(bar.Value(), 2147483647);
}

TEST(ProgressBar, ALongReadShowsInSteps) {
    ProgressBar bar;
    bar.setMax(1000000);
    int changes = 0;
    QObject::connect(&bar, &QProgressBar::valueChanged, [&] { ++changes; });
    for (Long value = 1; value <= 1000000; ++value) {
        bar.setValue(value);
        ASSERT_LE(value - bar.value(), 2000);
    }
    EXPECT_EQ(bar.Value(), 1000000);
    EXPECT_EQ(bar.value(), 1000000);
    EXPECT_LE(changes, 501);
    bar.setValue(999999);
    EXPECT_EQ(bar.Value(), 999999);
    bar.setValue(0);
    EXPECT_EQ(bar.value(), 0);
}

} // namespace mkl
