#pragma once
#include <QMouseEvent>
#include <QWidget>

#include <utility>

namespace mkl {

/// Tells a click with the left button from other releases, such as the second one of a double click.
class ClickDetector {
public:
    void press(const QMouseEvent& event) { pressed_ = event.button() == Qt::LeftButton; }

    /// The press became something else.
    void forget() { pressed_ = false; }

    /// Whether this release over the widget ends a click.
    bool release(const QMouseEvent& event, const QWidget& widget) {
        if (event.button() != Qt::LeftButton) return false;
        return std::exchange(pressed_, false) && widget.rect().contains(event.position().toPoint());
    }

private:
    bool pressed_ = false;
};

} // namespace mkl
