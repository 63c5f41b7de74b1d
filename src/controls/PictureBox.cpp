#include "controls/PictureBox.h"

#include "controls/MouseArguments.h"

#include <QPointer>

namespace mkl {

// A handler may close the host: after each signal the control may be gone. Taken events do not reach the parent.

void PictureBox::mousePressEvent(QMouseEvent* event) {
    clicks_.press(*event);
    MouseArguments mouse(*event, event->button());
    Q_EMIT MouseDown(mouse.Button, mouse.Shift, mouse.X, mouse.Y);
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    MouseArguments mouse(*event, event->buttons());
    Q_EMIT MouseMove(mouse.Button, mouse.Shift, mouse.X, mouse.Y);
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<PictureBox> alive(this);
    MouseArguments mouse(*event, event->button());
    Q_EMIT MouseUp(mouse.Button, mouse.Shift, mouse.X, mouse.Y);
    if (alive && clicks_.release(*event, *this)) Q_EMIT Click();
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Q_EMIT DblClick();
}

} // namespace mkl
