#include "controls/UserControl.h"

#include "controls/Extender.h"
#include "controls/KeyCodes.h"
#include "controls/Twips.h"

#include <QApplication>
#include <QChildEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>

namespace mkl {

UserControl::UserControl(QWidget* parent)
    : QWidget(parent) {
    connect(qApp, &QApplication::focusChanged, this, &UserControl::focusMoved);
}

// The focus still moves while the constituents go.
UserControl::~UserControl() {
    disconnect(qApp, nullptr, this, nullptr);
}

Single UserControl::ScaleWidth() const {
    return Width(*this);
}

Single UserControl::ScaleHeight() const {
    return Height(*this);
}

Single UserControl::TextWidth(const QString& text) const {
    return twipsX(fontMetrics().horizontalAdvance(text));
}

Single UserControl::TextHeight(const QString& text) const {
    return twipsY(fontMetrics().height() * (text.count(u'\n') + 1));
}

Long UserControl::hWnd() const {
    return static_cast<Long>(winId());
}

QWidget* UserControl::ActiveControl() const {
    QWidget* active = focusWidget();
    while (active && active->parentWidget() != this)
        active = active->parentWidget();
    return active;
}

QList<QWidget*> UserControl::Controls() const {
    return findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
}

void UserControl::InitProperties() {
    ReadProperties(PropertyBag());
}

void UserControl::ReadProperties(const PropertyBag& bag) {
    const QScopedValueRollback<bool> guard(reading_, true);
    for (const auto& [name, defaultValue] : bagProperties())
        setProperty(name, bag.ReadProperty(QString::fromLatin1(name), defaultValue));
}

void UserControl::WriteProperties(PropertyBag& bag) const {
    for (const auto& [name, defaultValue] : bagProperties()) {
        QVariant value = property(name);
        value.convert(defaultValue.metaType()); // constants are stored as their numbers
        bag.WriteProperty(QString::fromLatin1(name), value, defaultValue);
    }
}

void UserControl::propertyChanged(const QString& name) {
    if (!reading_) Q_EMIT PropertyChanged(name);
}

void UserControl::KeyDown(Integer&, Integer&) {}

bool UserControl::event(QEvent* event) {
    if (event->type() == QEvent::ChildAdded) watch(static_cast<QChildEvent*>(event)->child());
    // A key that a constituent left unused has been offered before.
    if (event->type() == QEvent::KeyPress && hasFocus() && swallows(*static_cast<QKeyEvent*>(event))) return true;
    return QWidget::event(event);
}

bool UserControl::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ChildAdded) watch(static_cast<QChildEvent*>(event)->child());
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    // One that comes up from a child of the watched one has been offered there.
    const auto* const widget = qobject_cast<QWidget*>(watched);
    const QWidget* const focus = QApplication::focusWidget();
    const bool first = widget && (widget == focus || !widget->isAncestorOf(focus));
    return first && swallows(*static_cast<QKeyEvent*>(event));
}

// Constituents are watched with all that they hold: whichever of them has the focus gets the keys.
void UserControl::watch(QObject* object) {
    if (!object->isWidgetType()) return;
    object->installEventFilter(this);
    for (QObject* child : object->children())
        watch(child);
}

bool UserControl::swallows(const QKeyEvent& event) {
    Integer code = keyCodeOf(event.key());
    if (code == 0) return false;
    Integer shift = shiftStateOf(event.modifiers());
    KeyDown(code, shift);
    return code == 0;
}

void UserControl::focusMoved(const QWidget* from, const QWidget* to) {
    const auto within = [this](const QWidget* widget) { return widget && (widget == this || isAncestorOf(widget)); };
    if (within(to) && !within(from)) EnterFocus();
}

void UserControl::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ResizeControl();
}

} // namespace mkl
