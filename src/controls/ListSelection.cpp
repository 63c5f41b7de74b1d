#include "controls/ListSelection.h"

#include "controls/ListView.h"

#include <QMouseEvent>

#include <utility>

namespace mkl {

void ListSelection::press(ListItem* item, const QMouseEvent& event) {
    forgetPress();
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    if (!item) {
        if (!(modifiers & (Qt::ShiftModifier | Qt::ControlModifier))) selectNone();
    } else if (event.button() == Qt::LeftButton) {
        pressLeft(*item, modifiers);
    } else {
        pressOther(*item, modifiers);
    }
}

void ListSelection::pressLeft(ListItem& item, Qt::KeyboardModifiers modifiers) {
    if (modifiers & Qt::ShiftModifier) {
        selectRange(item, modifiers & Qt::ControlModifier);
        return;
    }
    anchor_ = &item;
    pressed_ = &item;
    if (item.Selected()) {
        atRelease_ = modifiers & Qt::ControlModifier ? AtRelease::Unselect : AtRelease::SelectOnly;
    } else if (modifiers & Qt::ControlModifier) {
        list_.select(item, true);
    } else {
        selectOnly(item);
    }
}

// A menu is for what is selected, and for the row under the mouse in any case.
void ListSelection::pressOther(ListItem& item, Qt::KeyboardModifiers modifiers) {
    if (item.Selected()) return;
    if (modifiers & Qt::ShiftModifier) {
        selectRange(item, modifiers & Qt::ControlModifier);
    } else if (modifiers & Qt::ControlModifier) {
        list_.select(item, true);
    } else {
        selectOnly(item);
    }
}

void ListSelection::release(const ListItem* item, const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) return;
    const Ref<ListItem> pressed = std::exchange(pressed_, nullptr);
    const AtRelease what = std::exchange(atRelease_, AtRelease::Nothing);
    if (!pressed || pressed.get() != item || what == AtRelease::Nothing) return;
    if (what == AtRelease::SelectOnly && pressed->Selected() && list_.SelectedCount() == 1) return;
    if (what == AtRelease::SelectOnly)
        selectOnly(*pressed);
    else
        list_.select(*pressed, false);
    Q_EMIT list_.SelectionChanged();
}

void ListSelection::forgetPress() {
    pressed_.reset();
    atRelease_ = AtRelease::Nothing;
}

void ListSelection::walk(ListItem& item, Qt::KeyboardModifiers modifiers) {
    if (modifiers & Qt::ShiftModifier) {
        selectRange(item, modifiers & Qt::ControlModifier);
        list_.focusRow(item);
        return;
    }
    list_.focusRow(item);
    if (!(modifiers & Qt::ControlModifier)) selectOnly(item);
}

void ListSelection::space(ListItem& item, Qt::KeyboardModifiers modifiers) {
    if (modifiers & Qt::ShiftModifier) {
        selectRange(item, modifiers & Qt::ControlModifier);
    } else {
        anchor_ = &item;
        list_.select(item, !(modifiers & Qt::ControlModifier) || !item.Selected());
    }
    Q_EMIT list_.SelectionChanged();
}

void ListSelection::selectNone() {
    if (list_.SelectedCount() == 0) return;
    list_.clearSelected();
    Q_EMIT list_.SelectionChanged();
}

void ListSelection::selectOnly(ListItem& item) {
    anchor_ = &item;
    list_.selectRows(item.Index(), item.Index(), false);
}

void ListSelection::setAnchor(ListItem* item) {
    anchor_ = item;
}

void ListSelection::forget(const ListItem& item) {
    if (anchor_.get() == &item) anchor_.reset();
    if (pressed_.get() == &item) forgetPress();
}

void ListSelection::selectRange(const ListItem& to, bool keepOthers) {
    if (!anchor_) anchor_ = list_.SelectedItem();
    const Long from = anchor_ && anchor_->Index() > 0 ? anchor_->Index() : to.Index();
    list_.selectRows(std::min(from, to.Index()), std::max(from, to.Index()), keepOthers);
}

} // namespace mkl
