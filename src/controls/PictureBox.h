#pragma once
#include "base/types.h"
#include "controls/ClickDetector.h"

#include <QFrame>

namespace mkl {

/// A plain area that tells what the mouse does on it, such as a splitter. While a button is down it keeps the mouse,
/// wherever that goes; one that hides meanwhile says that the button was released. By-reference arguments pass through
/// all handlers in turn (direct connections only).
class PictureBox : public QFrame {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr)
        : QFrame(parent) {}

Q_SIGNALS:
    void Click();
    void DblClick();
    /// Button: 1 left, 2 right, 4 middle (MouseMove: their sum). Shift: 1 Shift, 2 Ctrl, 4 Alt. X, Y: twips.
    void MouseDown(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);
    void MouseMove(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);
    void MouseUp(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool held_ = false; // by the left button
    ClickDetector clicks_;
};

} // namespace mkl
