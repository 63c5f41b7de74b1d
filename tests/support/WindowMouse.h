#pragma once
// The mouse as a window gets it: the application knows which buttons are held, and where the pointer is. Points count
// from the upper left corner of the widget, for a view from that of its rows.
#include "controls/ListView.h"
#include "controls/TreeView.h"

#include <QApplication>
#include <QCursor>
#include <QTest>
#include <QWindow>

namespace mkl {

class WindowMouse {
public:
    static void pressAt(QWidget& widget, const QPoint& point, Qt::KeyboardModifiers modifiers = {},
                        Qt::MouseButton button = Qt::LeftButton) {
        moveTo(widget, point);
        QTest::mousePress(windowOf(widget), button, modifiers, inWindow(widget, point));
    }
    /// The point may lie outside of the window too.
    static void moveTo(QWidget& widget, const QPoint& point) {
        const QPoint place = inWidget(widget)->mapToGlobal(point);
        QCursor::setPos(place);
        if (!widget.window()->geometry().contains(place)) QTest::mouseMove(windowOf(widget), inWindow(widget, point));
        settle();
    }
    /// Moves there and releases the button; what a drag comes to has been told then.
    static void releaseAt(QWidget& widget, const QPoint& point, Qt::KeyboardModifiers modifiers = {},
                          Qt::MouseButton button = Qt::LeftButton) {
        moveTo(widget, point);
        QTest::mouseRelease(windowOf(widget), button, modifiers, inWindow(widget, point));
        settle();
    }
    /// For the next test: releases what is held, over a window of its own.
    static void releaseAll() {
        if (QGuiApplication::mouseButtons() == Qt::NoButton) return;
        QWidget window;
        window.show();
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            if (QGuiApplication::mouseButtons() & button)
                QTest::mouseRelease(window.windowHandle(), button, {}, {1, 1});
        settle();
    }

    /// The middle of a row (1 is the first one) or of a visible node.
    static QPoint placeOf(const ListView& list, Long row) {
        return list.visualRect(list.model()->index(row - 1, 0)).center();
    }
    static QPoint placeOf(const TreeView& tree, const Ref<Node>& node) {
        return tree.visualRect(indexOf(tree, node)).center();
    }

private:
    // The second call for what the events of the mouse have queued.
    static void settle() {
        QApplication::processEvents();
        QApplication::processEvents();
    }
    static QModelIndex indexOf(const TreeView& tree, const Ref<Node>& node) {
        int row = 0;
        for (Ref<Node> each = node->Previous(); each; each = each->Previous())
            ++row;
        const Ref<Node> parent = node->Parent();
        return tree.model()->index(row, 0, parent ? indexOf(tree, parent) : QModelIndex());
    }
    static QWidget* inWidget(QWidget& widget) {
        auto* const view = qobject_cast<QAbstractScrollArea*>(&widget);
        return view ? view->viewport() : &widget;
    }
    static QWindow* windowOf(const QWidget& widget) { return widget.window()->windowHandle(); }
    static QPoint inWindow(QWidget& widget, const QPoint& point) {
        return inWidget(widget)->mapTo(widget.window(), point);
    }
};

} // namespace mkl
