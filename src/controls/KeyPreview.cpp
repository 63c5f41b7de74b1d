#include "controls/KeyPreview.h"

#include "controls/KeyCodes.h"

#include <QApplication>
#include <QChildEvent>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace mkl {

KeyPreview::KeyPreview(QWidget& owner, KeyDown keyDown)
    : owner_(owner)
    , keyDown_(std::move(keyDown)) {
    watch(&owner);
}

// Constituents are watched with all that they hold: whichever of them has the focus gets the keys.
void KeyPreview::watch(QObject* object) {
    if (!object->isWidgetType()) return;
    object->installEventFilter(this);
    for (QObject* child : object->children())
        watch(child);
}

bool KeyPreview::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ChildAdded) watch(static_cast<QChildEvent*>(event)->child());
    if (event->type() != QEvent::KeyPress) return false;
    return isFirst(watched) && swallows(*static_cast<QKeyEvent*>(event));
}

// A key that its receiver left unused comes up from parent to parent, though it has been offered before.
bool KeyPreview::isFirst(const QObject* watched) const {
    if (watched == &owner_) return owner_.hasFocus();
    const auto* const widget = qobject_cast<const QWidget*>(watched);
    const QWidget* const focus = QApplication::focusWidget();
    return widget && (widget == focus || !widget->isAncestorOf(focus));
}

bool KeyPreview::swallows(const QKeyEvent& event) const {
    Integer code = keyCodeOf(event.key());
    if (code == 0) return false;
    Integer shift = shiftStateOf(event.modifiers());
    keyDown_(code, shift);
    return code == 0;
}

} // namespace mkl
