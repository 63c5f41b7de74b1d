#include "controls/PictureBox.h"

#include "controls/MouseArguments.h"

#include <QPointer>

#include <utility>

namespace mkl {

// A handler may close the host: after each signal the control may be gone. Taken events do not reach the parent.

void PictureBox::mousePressEvent(QMouseEvent* event) {
    clicks_.press(*event);
    if (event->button() == Qt::LeftButton) held_ = true;
    MouseArguments mouse(*event, event->button());
    Q_EMIT MouseDown(mouse.Button, mouse.Shift, mouse.X, mouse.Y);
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    MouseArguments mouse(*event, event->buttons());
    Q_EMIT MouseMove(mouse.Button, mouse.Shift, mouse.X, mouse.Y);
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<PictureBox> alive(this);
    if (event->button() == Qt::LeftButton) held_ = false;
    MouseArguments mouse(*event, event->button());
    Q_EMIT MouseUp(mouse.Button, mouse.Shift, mouse.X, mouse.Y);
    if (alive && clicks_.release(*event, *this)) Q_EMIT Click();
}

// The release will go elsewhere.
void PictureBox::hideEvent(QHideEvent* event) {
    QFrame::hideEvent(event);
    if (!std::exchange(held_, false)) return;
    Integer Button = 1;
    Integer Shift = 0;
    Single X = 0;
    Single Y = 0;
    Q_EMIT MouseUp(Button, Shift, X, Y);
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Q_EMIT DblClick();
}

} // namespace mkl
