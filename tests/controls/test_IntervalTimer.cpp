#include "controls/IntervalTimer.h"

#include "support/Printing.h"

#include <QElapsedTimer>
#include <QEventLoop>

namespace mkl {

namespace {

class IntervalTimerTest : public ::testing::Test {
protected:
    IntervalTimerTest() {
        QObject::connect(&timer, &IntervalTimer::Timer, [this] {
            if (++ticks == lastTick) timer.setEnabled(false);
            loop.quit();
        });
    }
    /// Waits for the next tick.
    void wait() { loop.exec(); }

    IntervalTimer timer;
    QEventLoop loop;
    int ticks = 0;
    int lastTick = 0;
};

} // namespace

TEST_F(IntervalTimerTest, IsDisabledAndNeverElapsesAtFirst) {
    EXPECT_EQ(timer.Interval(), 0);
    EXPECT_FALSE(timer.Enabled());
    timer.tick();
    timer.setEnabled(true);
    EXPECT_TRUE(timer.Enabled());
    timer.tick();
    EXPECT_EQ(ticks, 0);
}

TEST_F(IntervalTimerTest, GoesOnUntilItsHandlerDisablesIt) {
    lastTick = 3;
    timer.setInterval(5);
    timer.setEnabled(true);
    QElapsedTimer clock;
    clock.start();
    while (timer.Enabled())
        wait();
    EXPECT_EQ(ticks, 3);
    EXPECT_GE(clock.elapsed(), 14);
    timer.tick();
    EXPECT_EQ(ticks, 3);
}

TEST_F(IntervalTimerTest, ATickDoesWhatTheTimeDoes) {
    timer.setInterval(600000);
    timer.tick();
    EXPECT_EQ(ticks, 0);
    timer.setEnabled(true);
    timer.tick();
    EXPECT_EQ(ticks, 1);
    EXPECT_TRUE(timer.Enabled());
}

TEST_F(IntervalTimerTest, AnotherIntervalOfARunningTimer) {
    timer.setInterval(600000);
    timer.setEnabled(true);
    timer.setInterval(1);
    wait();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(timer.Interval(), 1);
    EXPECT_EQ(errorOf([this] { timer.setInterval(-1); }), err::InvalidArgument);
    EXPECT_EQ(timer.Interval(), 1);
}

// Begun anew before it elapsed: then it takes the whole interval again.
TEST_F(IntervalTimerTest, EnablingAgainCountsAnew) {
    timer.setInterval(60);
    QElapsedTimer clock;
    timer.setEnabled(true);
    clock.start();
    while (clock.elapsed() < 30) {
    }
    clock.restart();
    timer.setEnabled(true);
    wait();
    EXPECT_GE(clock.elapsed(), 59);
}

} // namespace mkl
