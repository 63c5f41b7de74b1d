#include "controls/PictureBox.h"

#include "support/Printing.h"

#include <QApplication>
#include <QStringList>
#include <QTest>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class PictureBoxTest : public ::testing::Test {
protected:
    PictureBoxTest() {
        box->resize(40, 40);
        const auto note = [this](const QString& event) {
            return [this, event](Integer& button, Integer& shift, Single& x, Single& y) {
                log << u"%1 %2 %3 %4 %5"_s.arg(event).arg(button).arg(shift).arg(x).arg(y);
            };
        };
        QObject::connect(box.get(), &PictureBox::MouseDown, note(u"Down"_s));
        QObject::connect(box.get(), &PictureBox::MouseMove, note(u"Move"_s));
        QObject::connect(box.get(), &PictureBox::MouseUp, note(u"Up"_s));
        QObject::connect(box.get(), &PictureBox::Click, [this] { log << u"Click"_s; });
        QObject::connect(box.get(), &PictureBox::DblClick, [this] { log << u"DblClick"_s; });
    }

    std::unique_ptr<PictureBox> box = std::make_unique<PictureBox>();
    QStringList log;
};

} // namespace

TEST_F(PictureBoxTest, MouseEventsInTwips) {
    QTest::mousePress(box.get(), Qt::LeftButton, Qt::ShiftModifier, {2, 3});
    QMouseEvent move(QEvent::MouseMove, QPointF(-4, 5), QPointF(-4, 5), Qt::NoButton, Qt::LeftButton | Qt::RightButton,
                     Qt::ControlModifier);
    QApplication::sendEvent(box.get(), &move);
    QTest::mouseRelease(box.get(), Qt::LeftButton, {}, {6, 7});
    EXPECT_EQ(log, (QStringList{u"Down 1 1 30 45"_s, u"Move 3 2 -60 75"_s, u"Up 1 0 90 105"_s, u"Click"_s}));
}

TEST_F(PictureBoxTest, OnlyTheLeftButtonClicksAndOnlyInside) {
    QTest::mouseClick(box.get(), Qt::RightButton, {}, {2, 3});
    EXPECT_FALSE(log.contains(u"Click"_s));
    QTest::mousePress(box.get(), Qt::LeftButton, {}, {2, 3});
    QTest::mouseRelease(box.get(), Qt::LeftButton, {}, {60, 3});
    EXPECT_FALSE(log.contains(u"Click"_s));
}

TEST_F(PictureBoxTest, ADoubleClickIsOneClickAndOneDblClick) {
    QTest::mouseClick(box.get(), Qt::LeftButton, {}, {2, 3});
    QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(2, 3), QPointF(2, 3), Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(box.get(), &second);
    QTest::mouseRelease(box.get(), Qt::LeftButton, {}, {2, 3});
    EXPECT_EQ(log.count(u"Click"_s), 1);
    EXPECT_EQ(log.count(u"DblClick"_s), 1);
}

TEST_F(PictureBoxTest, OneThatHidesLetsTheButtonGo) {
    box->show();
    box->hide();
    EXPECT_EQ(log, QStringList());
    box->show();
    QTest::mousePress(box.get(), Qt::LeftButton, {}, {2, 3});
    log.clear();
    box->hide();
    EXPECT_EQ(log, QStringList{u"Up 1 0 0 0"_s});
    box->show();
    box->hide();
    EXPECT_EQ(log.size(), 1);
}

TEST_F(PictureBoxTest, AHandlerMayDeleteTheBox) {
    QObject::connect(box.get(), &PictureBox::MouseUp, [this] { box.reset(); });
    PictureBox* const widget = box.get();
    QMouseEvent press(QEvent::MouseButtonPress, {2, 3}, {2, 3}, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(widget, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, {2, 3}, {2, 3}, Qt::LeftButton, Qt::NoButton, {});
    QApplication::sendEvent(widget, &release);
    EXPECT_EQ(box, nullptr);
    EXPECT_FALSE(log.contains(u"Click"_s));
}

} // namespace mkl
