// What a drag tells on its way, and its drop.
#include "controls/DragFixture.h"

#include <QDialog>
#include <QTimer>

namespace mkl {

TEST_F(DragFixture, BeginsWithoutAMove) {
    dragFromList(2);
    EXPECT_EQ(take(), QStringList{u"list enter 2 from list"_s});
    EXPECT_TRUE(drags());
    EXPECT_EQ(QWidget::mouseGrabber(), list->viewport());
    list->Drag(vbBeginDrag); // it has begun
    EXPECT_EQ(take(), QStringList());
}

TEST_F(DragFixture, TellsWhereThePointerIs) {
    dragFromList(2);
    moveTo(*list, 3);
    moveTo(u"b"_s);
    moveTo(u"c"_s);
    WindowMouse::moveTo(*control, nowhere);
    moveTo(*pool, 4);
    EXPECT_EQ(take(), (QStringList{u"list enter 2 from list"_s, u"list over 3 from list"_s, u"list leave - from list"_s,
                                   u"tree enter b from list"_s, u"tree over c from list"_s, u"tree leave - from list"_s,
                                   u"pool enter 4 from list"_s}));
}

TEST_F(DragFixture, CoordinatesAreThoseOfMouseDown) {
    Single downX = 0, downY = 0, overX = 0, overY = 0;
    QObject::connect(list, &ItemView::MouseDown, [&](Integer&, Integer&, Single& x, Single& y) {
        downX = x;
        downY = y;
    });
    QObject::connect(list, &ItemView::DragOver, [&](ItemView*, Single x, Single y) {
        overX = x;
        overY = y;
    });
    dragFromList(3);
    EXPECT_GT(overX, 0);
    EXPECT_EQ(overX, downX);
    EXPECT_EQ(overY, downY);
}

TEST_F(DragFixture, HeadsOfColumnsBelongToTheView) {
    dragFromList(2);
    take();
    WindowMouse::moveTo(*list, {20, -5});
    WindowMouse::releaseAt(*list, {20, -5});
    EXPECT_EQ(take(), (QStringList{u"list over - from list"_s, u"list drop - from list"_s}));
}

TEST_F(DragFixture, TheReleaseDrops) {
    dragFromList(2);
    moveTo(u"b"_s);
    take();
    WindowMouse::releaseAt(*tree, placeOf(u"b"_s));
    EXPECT_EQ(take(), QStringList{u"tree drop b from list"_s}); // and no MouseUp, no Click
    EXPECT_FALSE(drags());
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    moveTo(*list, 1);
    EXPECT_EQ(take(), QStringList{u"list MouseMove"_s});
}

TEST_F(DragFixture, ADropWhereItBegan) {
    dragFromList(2);
    WindowMouse::releaseAt(*list, WindowMouse::placeOf(*list, 2));
    EXPECT_EQ(take(), (QStringList{u"list enter 2 from list"_s, u"list drop 2 from list"_s}));
}

TEST_F(DragFixture, AReleaseElsewhereTellsThePlaceFirst) {
    dragFromList(2);
    take();
    QTest::mouseRelease(control->windowHandle(), Qt::LeftButton, {},
                        tree->viewport()->mapTo(control.get(), placeOf(u"c"_s)));
    QApplication::processEvents();
    EXPECT_EQ(take(),
              (QStringList{u"list leave - from list"_s, u"tree enter c from list"_s, u"tree drop c from list"_s}));
}

// A handler of the drop can do what it likes: the mouse is free.
TEST_F(DragFixture, ADropOpensADialog) {
    bool wasFree = false;
    QObject::connect(tree, &ItemView::DragDrop, [&] {
        QDialog dialog(control.get());
        QTimer::singleShot(0, &dialog, [&] {
            wasFree = !QWidget::mouseGrabber() && !drags() && !QGuiApplication::mouseButtons();
            dialog.accept();
        });
        dialog.exec();
    });
    dragFromList(2);
    WindowMouse::releaseAt(*tree, placeOf(u"a"_s));
    EXPECT_TRUE(wasFree);
}

TEST_F(DragFixture, CodeDropsToo) {
    dragFromList(2);
    moveTo(u"a"_s);
    take();
    tree->Drag(vbEndDrag); // it is not its drag
    EXPECT_TRUE(drags());
    list->Drag(vbEndDrag);
    EXPECT_FALSE(drags());
    EXPECT_EQ(take(), QStringList());
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList{u"tree drop a from list"_s});
    WindowMouse::releaseAt(*list, WindowMouse::placeOf(*list, 1)); // what is left of the press
    EXPECT_EQ(take(), QStringList());
}

TEST_F(DragFixture, OnlyViewsOfTheSameControlAreTargets) {
    QWidget window;
    window.setGeometry(10, 400, 400, 300);
    UserControl one(&window), other(&window);
    one.setGeometry(0, 0, 200, 300);
    other.setGeometry(200, 0, 200, 300);
    TreeView source(&one), stranger(&other);
    source.resize(180, 280);
    stranger.resize(180, 280);
    window.show();
    QStringList events;
    QObject::connect(&stranger, &ItemView::DragOver, [&] { events << u"over"_s; });
    QObject::connect(&stranger, &ItemView::DragDrop, [&] { events << u"drop"_s; });
    QObject::connect(tree, &ItemView::DragOver, [&] { events << u"over"_s; });
    QObject::connect(&source, &ItemView::DragCancelled, [&] { events << u"cancelled"_s; });
    WindowMouse::pressAt(source, {20, 100});
    source.Drag(vbBeginDrag);
    WindowMouse::moveTo(stranger, {20, 100});
    WindowMouse::moveTo(*tree, {20, 100});
    WindowMouse::releaseAt(stranger, {20, 100});
    EXPECT_EQ(events, QStringList{u"cancelled"_s});
}

TEST_F(DragFixture, ADisabledViewIsNoTarget) {
    tree->setEnabled(false);
    dragFromList(2);
    take();
    WindowMouse::releaseAt(*tree, placeOf(u"a"_s));
    EXPECT_EQ(take(), (QStringList{u"list leave - from list"_s, u"list cancelled"_s}));
}

TEST_F(DragFixture, SelectedRowsStaySelected) {
    for (const Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ControlModifier}) {
        list->deselectOthers(nullptr);
        for (const Long row : {2, 3, 5})
            list->ListItems().Item(row)->setSelected(true);
        dragFromList(3, modifiers);
        EXPECT_EQ(list->SelectedCount(), 3);
        WindowMouse::releaseAt(*list, WindowMouse::placeOf(*list, 3), modifiers);
        EXPECT_EQ(list->SelectedCount(), 3) << modifiers;
        EXPECT_TRUE(list->ListItems().Item(3)->Selected());
        // The next click is one again.
        WindowMouse::pressAt(*list, WindowMouse::placeOf(*list, 3));
        WindowMouse::releaseAt(*list, WindowMouse::placeOf(*list, 3));
        EXPECT_EQ(list->SelectedCount(), 1);
    }
}

TEST_F(DragFixture, ADragMovesNoFocus) {
    pool->setFocus();
    WindowMouse::pressAt(*list, WindowMouse::placeOf(*list, 2));
    ASSERT_EQ(control->ActiveControl(), list);
    list->Drag(vbBeginDrag);
    moveTo(u"b"_s);
    WindowMouse::releaseAt(*tree, placeOf(u"b"_s));
    EXPECT_EQ(control->ActiveControl(), list);
}

TEST_F(DragFixture, TheNextPressSelectsAgain) {
    dragFromList(2);
    WindowMouse::releaseAt(*tree, placeOf(u"b"_s));
    EXPECT_EQ(list->SelectedItem()->Key(), u"2"_s);
    WindowMouse::pressAt(*list, WindowMouse::placeOf(*list, 5));
    WindowMouse::releaseAt(*list, WindowMouse::placeOf(*list, 5));
    EXPECT_EQ(list->SelectedItem()->Key(), u"5"_s);
    EXPECT_TRUE(take().contains(u"list Click"_s));
    EXPECT_EQ(list->SelectedCount(), 1);
}

} // namespace mkl
