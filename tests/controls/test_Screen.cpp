#include "controls/Screen.h"

#include "controls/Twips.h"

#include <QApplication>
#include <QScreen>
#include <gtest/gtest.h>

namespace mkl {

namespace {

Qt::CursorShape shape() {
    const QCursor* const cursor = QApplication::overrideCursor();
    return cursor ? cursor->shape() : Qt::ArrowCursor;
}

class FineScreen : public Screen {
public:
    Single Width() const override { return 1000; }
    Single Height() const override { return 500; }
    Single TwipsPerPixelX() const override { return 10; }
    Single TwipsPerPixelY() const override { return 12; }
    Long MousePointer() const override { return 0; }
    void setMousePointer(Long) override {}
};

} // namespace

TEST(Screen, SizeInTwips) {
    EXPECT_EQ(screen().Width(), static_cast<Single>(QGuiApplication::primaryScreen()->size().width() * 15));
    EXPECT_EQ(screen().Height(), static_cast<Single>(QGuiApplication::primaryScreen()->size().height() * 15));
}

TEST(Screen, MousePointerIsAProperty) {
    screen().setMousePointer(vbHourglass);
    EXPECT_EQ(screen().MousePointer(), vbHourglass);
    EXPECT_EQ(shape(), Qt::WaitCursor);
    screen().setMousePointer(vbHourglass); // a read within a read
    screen().setMousePointer(vbSizeWE);
    EXPECT_EQ(shape(), Qt::SizeHorCursor);
    screen().setMousePointer(vbDefault);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    screen().setMousePointer(vbDefault); // the outer one ends too
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}

TEST(Screen, PointersOfOthersStay) {
    QApplication::setOverrideCursor(Qt::CrossCursor);
    screen().setMousePointer(vbDefault);
    EXPECT_EQ(shape(), Qt::CrossCursor);
    screen().setMousePointer(vbHourglass);
    screen().setMousePointer(vbDefault);
    EXPECT_EQ(shape(), Qt::CrossCursor);
    QApplication::restoreOverrideCursor();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Screen, CanBeReplaced) {
    FineScreen fine;
    Screen* const former = setScreen(&fine);
    EXPECT_EQ(pixelsX(100), 10);
    EXPECT_EQ(pixelsY(120), 10);
    EXPECT_EQ(twipsX(3), 30);
    EXPECT_EQ(twipsY(3), 36);
    EXPECT_EQ(setScreen(former), &fine);
    EXPECT_EQ(twipsX(3), 45);
}

} // namespace mkl
