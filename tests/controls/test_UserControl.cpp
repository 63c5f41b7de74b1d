#include "controls/UserControl.h"

#include "controls/KeyCodes.h"
#include "support/Printing.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class Probe : public UserControl {
public:
    using UserControl::UserControl;
    QStringList log;
    Integer swallowed = 0;

protected:
    void KeyDown(Integer& KeyCode, Integer& Shift) override {
        if (KeyCode == 16 || KeyCode == 17) return; // Shift and Ctrl are keys too
        log << u"KeyDown %1 %2"_s.arg(KeyCode).arg(Shift);
        if (KeyCode == swallowed) KeyCode = 0;
    }
    void EnterFocus() override { log << u"EnterFocus"_s; }
    void ResizeControl() override { log << u"Resize"_s; }
};

class Host : public QWidget {
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        keys += event->key() != Qt::Key_Shift && event->key() != Qt::Key_Control;
    }
};

class UserControlTest : public ::testing::Test {
protected:
    UserControlTest() {
        auto* const layout = new QVBoxLayout(&host);
        layout->addWidget(&outside);
        layout->addWidget(&control);
        host.show();
        host.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&host));
        outside.setFocus();
        control.log.clear();
    }

    Host host;
    QPushButton outside{&host};
    Probe control{&host};
    QPushButton first{&control};
    QWidget box{&control};
    QPushButton inner{&box};
};

} // namespace

TEST_F(UserControlTest, MeasuresInTwips) {
    control.resize(200, 100);
    EXPECT_EQ(control.ScaleWidth(), 3000);
    EXPECT_EQ(control.ScaleHeight(), 1500);
    EXPECT_EQ(control.TextWidth(u"Artikelname"_s),
              static_cast<Single>(control.fontMetrics().horizontalAdvance(u"Artikelname"_s) * 15));
    EXPECT_EQ(control.TextHeight(u"Tg"_s), static_cast<Single>(control.fontMetrics().height() * 15));
    EXPECT_EQ(control.TextHeight(u"a\nb"_s), 2 * control.TextHeight(u"Tg"_s));
    EXPECT_EQ(control.TextWidth({}), 0);
    EXPECT_TRUE(control.log.contains(u"Resize"_s));
}

TEST_F(UserControlTest, ConstituentsAndTheActiveOne) {
    EXPECT_EQ(control.Controls(), (QList<QWidget*>{&first, &box}));
    EXPECT_EQ(control.ActiveControl(), nullptr);
    inner.setFocus();
    EXPECT_EQ(control.ActiveControl(), &box);
    first.setFocus();
    EXPECT_EQ(control.ActiveControl(), &first);
    outside.setFocus();
    EXPECT_EQ(control.ActiveControl(), &first); // had it last
    EXPECT_TRUE(control.UserMode());
}

TEST_F(UserControlTest, EnterFocusOnlyFromOutside) {
    first.setFocus();
    inner.setFocus();
    EXPECT_EQ(control.log, QStringList{u"EnterFocus"_s});
    outside.setFocus();
    inner.setFocus();
    EXPECT_EQ(control.log.size(), 2);
}

TEST_F(UserControlTest, KeysPassTheControlFirstAndOnce) {
    inner.setFocus();
    control.log.clear();
    QTest::keyClick(&inner, Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_EQ(control.log, QStringList{u"KeyDown 112 1"_s});
    EXPECT_EQ(host.keys, 1);
    control.swallowed = 112;
    QTest::keyClick(&inner, Qt::Key_F1);
    EXPECT_EQ(control.log.size(), 2);
    EXPECT_EQ(host.keys, 1);
    QTest::keyClick(&first, Qt::Key_F1);
    EXPECT_EQ(control.log.size(), 3);
    EXPECT_EQ(host.keys, 1);
}

TEST_F(UserControlTest, KeysOfTheControlItself) {
    control.setFocusPolicy(Qt::StrongFocus);
    control.setFocus();
    control.log.clear();
    QTest::keyClick(&control, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(control.log, QStringList{u"KeyDown 40 2"_s});
    EXPECT_EQ(host.keys, 1);
    QTest::keyClick(&outside, Qt::Key_F1); // not ours
    EXPECT_EQ(control.log.size(), 1);
}

TEST_F(UserControlTest, LateConstituentsAreWatchedToo) {
    QLineEdit late(&box);
    late.show();
    late.setFocus();
    control.log.clear();
    control.swallowed = 65;
    QTest::keyClick(&late, Qt::Key_A);
    QTest::keyClick(&late, Qt::Key_B);
    EXPECT_EQ(control.log, (QStringList{u"KeyDown 65 0"_s, u"KeyDown 66 0"_s}));
    EXPECT_EQ(late.text(), u"b"_s);
}

TEST(KeyCodes, OfKeys) {
    EXPECT_EQ(keyCodeOf(Qt::Key_F1), 112);
    EXPECT_EQ(keyCodeOf(Qt::Key_F12), 123);
    EXPECT_EQ(keyCodeOf(Qt::Key_Escape), 27);
    EXPECT_EQ(keyCodeOf(Qt::Key_Enter), 13);
    EXPECT_EQ(keyCodeOf(Qt::Key_Delete), 46);
    EXPECT_EQ(keyCodeOf(Qt::Key_7), 55);
    EXPECT_EQ(keyCodeOf(Qt::Key_Space), 32);
    EXPECT_EQ(keyCodeOf(Qt::Key_unknown), 0);
    EXPECT_EQ(shiftStateOf(Qt::ShiftModifier | Qt::AltModifier), 5);
}

} // namespace mkl
