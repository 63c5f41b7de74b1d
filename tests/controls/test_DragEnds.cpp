// Every way in which a drag comes to nothing, and handlers that take away what it stands on.
#include "controls/DragFixture.h"

#include <QDialog>
#include <QMenu>

namespace mkl {

TEST_F(DragFixture, EscapeEndsItAndIsEaten) {
    int keys = 0;
    class Counter : public QObject {
    public:
        explicit Counter(int& keys)
            : keys_(keys) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::KeyPress) ++keys_;
            return false;
        }

    private:
        int& keys_;
    } counter(keys);
    list->installEventFilter(&counter);
    dragFromList(2);
    moveTo(u"b"_s);
    take();
    QTest::keyClick(list, Qt::Key_Down); // keys wait until the drag is over
    EXPECT_TRUE(drags());
    QTest::keyClick(control->windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(drags());
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList{u"list cancelled"_s});
    EXPECT_EQ(keys, 0);
    EXPECT_EQ(list->SelectedItem()->Key(), u"2"_s);
    // The button is still held; its release is no click.
    WindowMouse::moveTo(*list, WindowMouse::placeOf(*list, 4));
    WindowMouse::releaseAt(*list, WindowMouse::placeOf(*list, 4));
    EXPECT_EQ(take(), QStringList());
    WindowMouse::pressAt(*list, WindowMouse::placeOf(*list, 4));
    WindowMouse::releaseAt(*list, WindowMouse::placeOf(*list, 4));
    EXPECT_EQ(take(), (QStringList{u"list MouseUp"_s, u"list Click"_s}));
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(keys, 1);
}

TEST_F(DragFixture, AReleaseBesideAllViews) {
    dragFromList(2);
    take();
    WindowMouse::releaseAt(*control, nowhere);
    EXPECT_EQ(take(), (QStringList{u"list leave - from list"_s, u"list cancelled"_s}));
    EXPECT_FALSE(drags());
}

TEST_F(DragFixture, AReleaseOutsideOfTheWindow) {
    dragFromList(2);
    take();
    WindowMouse::moveTo(*control, {700, 200});
    WindowMouse::releaseAt(*control, {700, 250});
    EXPECT_EQ(take(), (QStringList{u"list leave - from list"_s, u"list cancelled"_s}));
    EXPECT_FALSE(drags());
}

TEST_F(DragFixture, AnotherButton) {
    dragFromList(2);
    moveTo(u"b"_s);
    take();
    const QPoint point = tree->viewport()->mapTo(control.get(), placeOf(u"b"_s));
    QTest::mousePress(control->windowHandle(), Qt::RightButton, {}, point);
    EXPECT_EQ(take(), QStringList{u"list cancelled"_s});
    QTest::mouseRelease(control->windowHandle(), Qt::RightButton, {}, point);
    QTest::mouseRelease(control->windowHandle(), Qt::LeftButton, {}, point);
    EXPECT_EQ(take(), QStringList()); // neither a menu nor a click
    QTest::mousePress(control->windowHandle(), Qt::RightButton, {}, point);
    QTest::mouseRelease(control->windowHandle(), Qt::RightButton, {}, point);
    EXPECT_EQ(take(), QStringList{u"tree MouseUp"_s});
}

TEST_F(DragFixture, CodeCancels) {
    list->Drag(vbCancelDrag);
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList());
    dragFromList(2);
    list->Drag(vbCancelDrag);
    EXPECT_FALSE(drags());
    QApplication::processEvents();
    EXPECT_EQ(take().last(), u"list cancelled"_s);
}

TEST_F(DragFixture, WithoutAHeldButtonThereIsNone) {
    list->Drag(vbBeginDrag);
    EXPECT_FALSE(drags());
    WindowMouse::pressAt(*list, WindowMouse::placeOf(*list, 2), {}, Qt::RightButton);
    list->Drag(vbBeginDrag);
    EXPECT_FALSE(drags());
    take();
    QApplication::processEvents();
    EXPECT_EQ(list->SelectedItem()->Key(), u"2"_s);
}

TEST_F(DragFixture, WhatCannotBeginIsCancelled) {
    list->Drag(vbBeginDrag);
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList{u"list cancelled"_s});
    dragFromList(2);
    take();
    tree->Drag(vbBeginDrag); // there is one
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList{u"tree cancelled"_s});
    EXPECT_TRUE(drags());
}

TEST_F(DragFixture, TheWindowLosesTheUser) {
    control->activateWindow();
    QApplication::processEvents();
    dragFromList(2);
    take();
    QEvent deactivated(QEvent::WindowDeactivate);
    QApplication::sendEvent(control.get(), &deactivated);
    EXPECT_FALSE(drags());
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList{u"list cancelled"_s});
}

TEST_F(DragFixture, TheSourceHides) {
    for (QWidget* goes : {static_cast<QWidget*>(list), static_cast<QWidget*>(control.get())}) {
        dragFromList(2);
        take();
        goes->hide();
        EXPECT_FALSE(drags());
        QApplication::processEvents();
        EXPECT_EQ(take(), QStringList{u"list cancelled"_s});
        goes->show();
        QApplication::processEvents();
    }
}

TEST_F(DragFixture, ADialogOrAMenuComesUp) {
    dragFromList(2);
    take();
    QDialog dialog(control.get());
    dialog.open();
    EXPECT_FALSE(drags());
    list->Drag(vbBeginDrag); // and none begins below it
    EXPECT_FALSE(drags());
    dialog.close();
    QApplication::processEvents();
    EXPECT_EQ(take(), (QStringList{u"list cancelled"_s, u"list cancelled"_s}));
    dragFromList(2);
    take();
    QMenu menu;
    menu.addAction(u"Neu"_s);
    menu.popup(control->mapToGlobal(QPoint(600, 250)));
    EXPECT_FALSE(drags());
    list->Drag(vbBeginDrag);
    EXPECT_FALSE(drags());
    menu.close();
    QApplication::processEvents();
    EXPECT_EQ(take(), (QStringList{u"list cancelled"_s, u"list cancelled"_s}));
}

// The program did not see the release.
TEST_F(DragFixture, ALostRelease) {
    dragFromList(2);
    take();
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), tree->viewport()->mapToGlobal(QPointF(5, 5)), Qt::NoButton,
                     Qt::NoButton, {});
    QApplication::sendEvent(tree->viewport(), &move);
    QApplication::processEvents();
    EXPECT_EQ(take(), (QStringList{u"tree MouseMove"_s, u"list cancelled"_s}));
    dragFromList(2);
    take();
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), tree->viewport()->mapToGlobal(QPointF(5, 5)),
                      Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(tree->viewport(), &press);
    EXPECT_EQ(tree->SelectedItem()->Key(), u"a"_s);
    EXPECT_FALSE(drags());
}

TEST_F(DragFixture, TheTargetGoesBeforeTheDropIsTold) {
    dragFromList(2);
    moveTo(u"b"_s);
    take();
    list->Drag(vbEndDrag);
    delete tree;
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList{u"list cancelled"_s});
}

TEST_F(DragFixture, TheTargetHidesDuringTheDrag) {
    dragFromList(2);
    moveTo(u"b"_s);
    take();
    tree->hide();
    WindowMouse::releaseAt(*control, tree->geometry().center());
    EXPECT_EQ(take(), (QStringList{u"tree leave - from list"_s, u"list cancelled"_s}));
}

TEST_F(DragFixture, HandlersMayDeleteEverything) {
    using Signal = void (ItemView::*)(ItemView*, Single, Single, Integer);
    QObject::connect(tree, static_cast<Signal>(&ItemView::DragOver), [this] { control.reset(); });
    dragFromList(2);
    QWindow* const window = control->windowHandle();
    const QPoint point = tree->viewport()->mapTo(control.get(), placeOf(u"b"_s));
    QTest::mouseMove(window, point);
    EXPECT_EQ(control, nullptr);
    EXPECT_FALSE(drags());
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
}

TEST_F(DragFixture, AHandlerOfTheBeginMayDeleteEverything) {
    QObject::connect(list, &ItemView::DragOver, [this] { control.reset(); });
    WindowMouse::pressAt(*list, WindowMouse::placeOf(*list, 2));
    list->Drag(vbBeginDrag);
    EXPECT_EQ(control, nullptr);
    EXPECT_FALSE(drags());
}

TEST_F(DragFixture, AHandlerOfTheEndMayDeleteEverything) {
    QObject::connect(tree, &ItemView::DragDrop, [this] { control.reset(); });
    dragFromList(2);
    moveTo(u"b"_s);
    QTest::mouseRelease(control->windowHandle(), Qt::LeftButton, {},
                        tree->viewport()->mapTo(control.get(), placeOf(u"b"_s)));
    QApplication::processEvents();
    EXPECT_EQ(control, nullptr);
}

TEST_F(DragFixture, AHandlerMayCancel) {
    QObject::connect(tree, &ItemView::DragOver, [this] { list->Drag(vbCancelDrag); });
    dragFromList(2);
    take();
    moveTo(u"b"_s);
    EXPECT_FALSE(drags());
    EXPECT_EQ(take(), (QStringList{u"list leave - from list"_s, u"tree enter b from list"_s, u"list cancelled"_s}));
}

TEST_F(DragFixture, AHandlerMayServeEvents) {
    QObject::connect(tree, &ItemView::DragOver, [this] {
        QTest::keyClick(control->windowHandle(), Qt::Key_Escape);
        QApplication::processEvents();
    });
    dragFromList(2);
    take();
    moveTo(u"b"_s);
    EXPECT_FALSE(drags());
    EXPECT_EQ(take().last(), u"list cancelled"_s);
}

TEST_F(DragFixture, TheSourceGoesDuringTheDrag) {
    dragFromList(2);
    delete list;
    EXPECT_FALSE(drags());
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    WindowMouse::releaseAt(*tree, placeOf(u"b"_s));
    EXPECT_FALSE(take().contains(u"tree drop b from list"_s));
}

} // namespace mkl
