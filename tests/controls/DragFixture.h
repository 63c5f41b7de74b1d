#pragma once
// A control with a tree and two lists side by side in a window of its own, and a record of what drags tell.
#include "controls/UserControl.h"
#include "support/Printing.h"
#include "support/WindowMouse.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace mkl {

using namespace Qt::StringLiterals;

class DragFixture : public ::testing::Test {
protected:
    DragFixture() {
        control->setGeometry(10, 20, 640, 300);
        place(*pool, u"pool"_s, 0, 200);
        place(*tree, u"tree"_s, 210, 200);
        place(*list, u"list"_s, 420, 200);
        for (ListView* rows : {pool, list}) {
            rows->setMultiSelect(true);
            rows->ColumnHeaders().Add(u"Artikelname"_s, 2000);
            for (int row = 1; row <= 6; ++row)
                rows->ListItems().Add({}, QString::number(row), QString::number(row));
        }
        for (const QString& key : {u"a"_s, u"b"_s, u"c"_s})
            tree->Nodes().Add({}, tvwChild, key, key);
        control->show();
        QApplication::processEvents();
        log.clear();
    }
    // Handlers of the test have gone; no button stays held for the next one.
    ~DragFixture() override {
        control.reset();
        WindowMouse::releaseAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // without a running event loop they stay
    }

    /// A press on a row of the list, and the begin of a drag.
    void dragFromList(Long row = 2, Qt::KeyboardModifiers modifiers = {}) {
        WindowMouse::pressAt(*list, WindowMouse::placeOf(*list, row), modifiers);
        log.clear();
        list->Drag(vbBeginDrag);
    }
    void moveTo(ListView& view, Long row) { WindowMouse::moveTo(view, WindowMouse::placeOf(view, row)); }
    void moveTo(const QString& node) { WindowMouse::moveTo(*tree, placeOf(node)); }
    QPoint placeOf(const QString& node) const { return WindowMouse::placeOf(*tree, tree->Nodes().Item(node)); }
    /// A point of the control beside all views.
    static constexpr QPoint nowhere{205, 150};

    QStringList take() { return std::exchange(log, {}); }
    static bool drags() { return QApplication::overrideCursor() != nullptr; }

    std::unique_ptr<UserControl> control = std::make_unique<UserControl>();
    ListView* const pool = new ListView(control.get());
    TreeView* const tree = new TreeView(control.get());
    ListView* const list = new ListView(control.get());
    QStringList log;

private:
    void place(ItemView& view, const QString& name, int left, int width) {
        view.setObjectName(name);
        view.setGeometry(left, 0, width, 300);
        const auto note = [this, &view](const QString& event) { log << view.objectName() + u' ' + event; };
        QObject::connect(&view, &ItemView::DragOver,
                         [this, &view, note](ItemView* source, Single x, Single y, Integer state) {
                             static const QStringList states{u"enter"_s, u"leave"_s, u"over"_s};
                             note(states.at(state) + u' ' + hit(view, x, y) + u" from "_s + source->objectName());
                         });
        QObject::connect(&view, &ItemView::DragDrop, [this, &view, note](ItemView* source, Single x, Single y) {
            note(u"drop "_s + hit(view, x, y) + u" from "_s + source->objectName());
        });
        QObject::connect(&view, &ItemView::DragCancelled, [note] { note(u"cancelled"_s); });
        QObject::connect(&view, &ItemView::MouseMove, [note] { note(u"MouseMove"_s); });
        QObject::connect(&view, &ItemView::MouseUp, [note] { note(u"MouseUp"_s); });
        QObject::connect(&view, &ItemView::Click, [note] { note(u"Click"_s); });
        QObject::connect(&view, &ItemView::DblClick, [note] { note(u"DblClick"_s); });
    }
    QString hit(const ItemView& view, Single x, Single y) const {
        const Item* item = nullptr;
        if (&view == tree)
            item = tree->HitTest(x, y).get();
        else
            item = static_cast<const ListView&>(view).HitTest(x, y).get();
        return item ? item->Key() : u"-"_s;
    }
};

} // namespace mkl
