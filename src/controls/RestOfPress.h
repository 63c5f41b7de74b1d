#pragma once
#include <QObject>

QT_BEGIN_NAMESPACE
class QMouseEvent;
QT_END_NAMESPACE

namespace mkl {

/// Behind a drag that ended while buttons are still held: what the mouse does until the last one is up reaches no
/// widget.
class RestOfPress final : public QObject {
public:
    /// Nothing where no button is held.
    static void swallow();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    RestOfPress();
    bool takes(const QMouseEvent& event);
    void end();
};

} // namespace mkl
