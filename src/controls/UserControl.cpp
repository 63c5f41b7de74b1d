#include "controls/UserControl.h"

#include "controls/Extender.h"
#include "controls/Twips.h"

#include <QApplication>
#include <QScopedValueRollback>

namespace mkl {

UserControl::UserControl(QWidget* parent)
    : QWidget(parent)
    , keys_(*this, [this](Integer& KeyCode, Integer& Shift) { KeyDown(KeyCode, Shift); }) {
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

void UserControl::focusMoved(const QWidget* from, const QWidget* to) {
    const auto within = [this](const QWidget* widget) { return widget && (widget == this || isAncestorOf(widget)); };
    if (within(to) && !within(from)) EnterFocus();
}

void UserControl::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ResizeControl();
}

} // namespace mkl
