#include "controls/OptionButton.h"

#include "controls/CheckBox.h"
#include "support/Printing.h"

#include <QTest>

namespace mkl {

using namespace Qt::StringLiterals;

TEST(OptionButton, OneOfThemHolds) {
    QWidget frame;
    OptionButton first(&frame, u"eins"_s);
    OptionButton second(&frame, u"zwei"_s);
    first.setValue(true);
    second.setValue(true);
    EXPECT_FALSE(first.Value());
    EXPECT_TRUE(second.Value());
}

TEST(OptionButton, ClickIsRaisedByCodeAndByTheUser) {
    QWidget frame;
    OptionButton first(&frame);
    OptionButton second(&frame);
    int clicks = 0;
    QObject::connect(&first, &OptionButton::Click, &frame, [&] { ++clicks; });
    first.setValue(true);
    EXPECT_EQ(clicks, 1);
    first.setValue(true);
    first.setValue(false);
    second.setValue(true);
    EXPECT_EQ(clicks, 1);
    frame.show();
    QTest::keyClick(&first, Qt::Key_Space);
    EXPECT_EQ(clicks, 2);
}

TEST(OptionButton, TheOneThatHoldsIsTheTabStop) {
    QWidget frame;
    OptionButton first(&frame);
    OptionButton second(&frame);
    second.setValue(true);
    EXPECT_FALSE(first.focusPolicy() & Qt::TabFocus);
    EXPECT_TRUE(second.focusPolicy() & Qt::TabFocus);
    first.setValue(true);
    EXPECT_TRUE(first.focusPolicy() & Qt::TabFocus);
    EXPECT_FALSE(second.focusPolicy() & Qt::TabFocus);
}

TEST(CheckBox, HasANumberAsItsValue) {
    CheckBox box(nullptr, u"Aktiv"_s);
    EXPECT_EQ(box.Value(), 0);
    box.setValue(1);
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(box.Value(), 1);
}

} // namespace mkl
