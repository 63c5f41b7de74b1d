#include "controls/UpDownCtl.h"

#include "support/Printing.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <QWheelEvent>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class UpDownCtlTest : public ::testing::Test {
protected:
    UpDownCtlTest() {
        field.setRange(1, 30);
        field.setValue(5);
        field.show();
        field.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&field));
        field.setFocus();
        field.selectAll();
    }
    void wheel(int steps) {
        QWheelEvent event(QPointF(5, 5), field.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, 120 * steps),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&field, &event);
    }

    UpDownCtl field;
};

} // namespace

TEST_F(UpDownCtlTest, ArrowsPagesAndWheelStep) {
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(field.Value(), 6);
    QTest::keyClick(&field, Qt::Key_Down);
    QTest::keyClick(&field, Qt::Key_Down);
    EXPECT_EQ(field.Value(), 4);
    QTest::keyClick(&field, Qt::Key_PageUp);
    EXPECT_EQ(field.Value(), 14);
    QTest::keyClick(&field, Qt::Key_PageDown);
    EXPECT_EQ(field.Value(), 4);
    wheel(2);
    EXPECT_EQ(field.Value(), 6);
    wheel(-1);
    EXPECT_EQ(field.Value(), 5);
}

TEST_F(UpDownCtlTest, StepsEndAtTheBounds) {
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&field, Qt::Key_PageUp);
    EXPECT_EQ(field.Value(), 30);
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&field, Qt::Key_PageDown);
    EXPECT_EQ(field.Value(), 1);
}

TEST_F(UpDownCtlTest, WhatWasTypedCountsBeforeTheFieldIsLeft) {
    QTest::keyClicks(&field, u"12"_s);
    EXPECT_EQ(field.Value(), 12);
    EXPECT_EQ(field.text(), u"12"_s);
}

TEST_F(UpDownCtlTest, WhatIsTypedBeyondTheBoundsIsBroughtBack) {
    QTest::keyClicks(&field, u"4711"_s);
    EXPECT_EQ(field.text(), u"4711"_s);
    EXPECT_EQ(field.Value(), 30);
    field.clearFocus();
    EXPECT_EQ(field.text(), u"30"_s);
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, u"0"_s);
    EXPECT_EQ(field.Value(), 1);
}

TEST_F(UpDownCtlTest, AStepCountsFromWhatWasTyped) {
    field.setValue(30);
    field.selectAll();
    QTest::keyClicks(&field, u"7"_s);
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(field.Value(), 8);
    field.selectAll();
    QTest::keyClicks(&field, u"99"_s);
    QTest::keyClick(&field, Qt::Key_Down);
    EXPECT_EQ(field.Value(), 29);
}

TEST_F(UpDownCtlTest, AnEmptiedFieldKeepsItsValue) {
    QTest::keyClick(&field, Qt::Key_Delete);
    EXPECT_EQ(field.text(), QString());
    EXPECT_EQ(field.Value(), 5);
    field.clearFocus();
    EXPECT_EQ(field.text(), u"5"_s);
}

TEST_F(UpDownCtlTest, TakesDigitsOnly) {
    QTest::keyClicks(&field, u"-1a,8. x"_s);
    EXPECT_EQ(field.text(), u"18"_s);
    field.selectAll();
    QTest::keyClicks(&field, u"123456789012"_s);
    EXPECT_EQ(field.text(), u"1234567890"_s);
    EXPECT_EQ(field.Value(), 30);
}

TEST_F(UpDownCtlTest, APastedNumberMayHaveBlanksAroundIt) {
    QApplication::clipboard()->setText(u" 17 "_s);
    field.findChild<QLineEdit*>()->paste();
    EXPECT_EQ(field.Value(), 17);
    EXPECT_EQ(field.text(), u"17"_s);
}

TEST(UpDownCtl, ValuesOutsideBecomeTheNearerBound) {
    UpDownCtl field;
    field.setRange(1, 3);
    field.setValue(7);
    EXPECT_EQ(field.Value(), 3);
    field.setValue(-7);
    EXPECT_EQ(field.Value(), 1);
    field.setMinimum(2);
    EXPECT_EQ(field.Value(), 2);
    EXPECT_EQ(field.Minimum(), 2);
    EXPECT_EQ(field.Maximum(), 3);
    field.setMaximum(std::numeric_limits<Long>::max());
    field.setValue(1'234'567);
    EXPECT_EQ(field.text(), u"1234567"_s); // whatever the locale
}

TEST(UpDownCtl, CanBeDisabled) {
    UpDownCtl field;
    EXPECT_TRUE(field.Enabled());
    field.setEnabled(false);
    EXPECT_FALSE(field.Enabled());
}

} // namespace mkl
