#include "controls/Form.h"

#include "controls/Extender.h"
#include "controls/FormRunner.h"

#include <QShowEvent>
#include <QWindow>

namespace mkl {

Form::Form(QWidget* owner)
    : keys_(*this, [this](Integer& KeyCode, Integer& Shift) { KeyDown(KeyCode, Shift); }) {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
    setWindowModality(Qt::ApplicationModal);
    setOwner(owner);
}

void Form::setOwner(QWidget* owner) {
    if (owner_) disconnect(owner_, &QObject::destroyed, this, &Form::reject);
    owned_ = owner;
    owner_ = owner;
    if (owner) connect(owner, &QObject::destroyed, this, &Form::reject);
}

void Form::Show() {
    if (owned_ && !owner_) {
        Cancelled();
        return;
    }
    Activate();
    standOverOwner();
    const QPointer<QWidget> below = owner_ && owner_->isActiveWindow() ? owner_->window() : nullptr;
    formRunner().run(*this);
    if (below) below->activateWindow(); // not every window system gives the focus back
}

void Form::standOverOwner() {
    const QWindow* const below = owner_ ? owner_->window()->windowHandle() : nullptr;
    if (!below) return;
    winId(); // makes the window
    windowHandle()->setTransientParent(const_cast<QWindow*>(below));
}

void Form::reject() {
    Cancelled();
    QDialog::reject();
}

Single Form::Width() const {
    return mkl::Width(*this);
}

Single Form::Height() const {
    return mkl::Height(*this);
}

void Form::setWidth(Single twips) {
    release();
    mkl::setWidth(*this, twips);
    holdSize();
}

void Form::setHeight(Single twips) {
    release();
    mkl::setHeight(*this, twips);
    holdSize();
}

void Form::setSizable(bool sizable) {
    sizable_ = sizable;
    release();
    holdSize();
}

void Form::release() {
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

void Form::holdSize() {
    if (!sizable_) setFixedSize(size());
}

// Centred over the owner's window, where the toolkit would do it over a parent.
void Form::showEvent(QShowEvent* event) {
    if (wasShown_) setAttribute(Qt::WA_Moved); // shown again it stands where the user left it
    if (!event->spontaneous()) wasShown_ = true;
    if (owner_ && !event->spontaneous() && !testAttribute(Qt::WA_Moved)) {
        adjustPosition(owner_);
        QDialog::showEvent(event);
        setAttribute(Qt::WA_Moved, false); // nobody has placed it
        return;
    }
    QDialog::showEvent(event);
}

void Form::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    ResizeForm();
}

} // namespace mkl
