#include "core/mdlGraphics.h"

#include <QFrame>
#include <gtest/gtest.h>

TEST(SetFlatEdge, IsSunkenAndOnePixelWide) {
    QFrame frame;
    mkl::mdlGraphics::SetFlatEdge(&frame);
    EXPECT_EQ(frame.frameShape(), QFrame::Panel);
    EXPECT_EQ(frame.frameShadow(), QFrame::Sunken);
    EXPECT_EQ(frame.frameWidth(), 1);
}
