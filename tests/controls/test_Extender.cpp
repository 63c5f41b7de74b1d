#include "controls/Extender.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace mkl {

TEST(Extender, WhatWasSetReadsBackToTheTwip) {
    QWidget parent;
    QWidget child(&parent);
    setLeft(child, 100.5F);
    setTop(child, -50);
    setWidth(child, 30);
    setHeight(child, 1234.5F);
    EXPECT_EQ(Left(child), 100.5F);
    EXPECT_EQ(Top(child), -50);
    EXPECT_EQ(Width(child), 30);
    EXPECT_EQ(Height(child), 1234.5F);
    EXPECT_EQ(child.geometry(), QRect(7, -3, 2, 82));
}

TEST(Extender, AnotherMoveOrResizeCounts) {
    QWidget parent;
    QWidget child(&parent);
    setLeft(child, 101);
    setWidth(child, 101);
    child.setGeometry(10, 20, 30, 40);
    EXPECT_EQ(Left(child), 150);
    EXPECT_EQ(Top(child), 300);
    EXPECT_EQ(Width(child), 450);
    EXPECT_EQ(Height(child), 600);
}

TEST(Extender, MeasuresAreIndependent) {
    QWidget child;
    setLeft(child, 100.5F);
    setWidth(child, 200.5F);
    setTop(child, 33);
    EXPECT_EQ(Left(child), 100.5F);
    EXPECT_EQ(Width(child), 200.5F);
}

TEST(Extender, ANegativeWidthShowsAsNone) {
    QWidget child;
    setWidth(child, -300);
    EXPECT_EQ(child.width(), 0);
    EXPECT_EQ(Width(child), -300);
}

TEST(Extender, TheResizeHandlerReadsTheNewMeasure) {
    class Reader : public QWidget {
    public:
        using QWidget::QWidget;
        void resizeEvent(QResizeEvent*) override { seen = Width(*this); }
        Single seen = 0;
    } reader;
    reader.show();
    setWidth(reader, 3001);
    EXPECT_EQ(reader.seen, 3001);
}

TEST(Extender, VisibleIsTheWidgetsOwnSwitch) {
    QWidget parent;
    QWidget child(&parent);
    EXPECT_TRUE(Visible(child));
    setVisible(child, false);
    EXPECT_FALSE(Visible(child));
}

} // namespace mkl
