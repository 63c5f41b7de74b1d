#include "controls/RestOfPress.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>

namespace mkl {

namespace {
QPointer<RestOfPress> present;
}

RestOfPress::RestOfPress()
    : QObject(qApp) {
    qApp->installEventFilter(this);
}

void RestOfPress::swallow() {
    if (!present && QGuiApplication::mouseButtons() != Qt::NoButton) present = new RestOfPress;
}

void RestOfPress::end() {
    qApp->removeEventFilter(this);
    present = nullptr;
    deleteLater();
}

bool RestOfPress::eventFilter(QObject* watched, QEvent* event) {
    if (present != this) return false;
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease: return watched->isWidgetType() && takes(static_cast<const QMouseEvent&>(*event));
    case QEvent::ContextMenu: return true;
    default: return false;
    }
}

// The release can be lost, to another program for example: a move without buttons and the press of the only button
// show that.
bool RestOfPress::takes(const QMouseEvent& event) {
    if (event.type() == QEvent::MouseButtonRelease) {
        if (event.buttons() == Qt::NoButton) end();
        return true;
    }
    if (event.buttons() != event.button()) return true;
    end();
    return false;
}

} // namespace mkl
