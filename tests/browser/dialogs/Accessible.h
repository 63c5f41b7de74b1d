#pragma once
// What assistive tools are told of a form.
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QDialog>
#include <QStringList>

namespace mkl {

/// The controls on show that can have the focus, but have no name.
inline QStringList namelessControls(const QDialog& form) {
    QStringList nameless;
    for (QWidget* control : form.findChildren<QWidget*>()) {
        const bool isPart = qobject_cast<QAbstractSpinBox*>(control->parentWidget()) != nullptr;
        if (isPart || !control->isVisible() || control->focusPolicy() == Qt::NoFocus) continue;
        QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(control);
        if (!told || told->text(QAccessible::Name).isEmpty()) nameless += control->objectName();
    }
    return nameless;
}

} // namespace mkl
