#include "controls/DialogButton.h"

#include <QKeyEvent>

namespace mkl {

DialogButton::DialogButton(QWidget* parent)
    : QPushButton(parent) {
    setAutoDefault(false);
    setFocusPolicy(Qt::TabFocus);
}

void DialogButton::setCaption(const QString& caption) {
    setText(caption);
    setShortcut(QKeySequence());
    setAccessibleName(QString(caption).remove(u'&'));
}

void DialogButton::setToolTipText(const QString& text) {
    setToolTip(text);
    setAccessibleDescription(text);
}

void DialogButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

} // namespace mkl
