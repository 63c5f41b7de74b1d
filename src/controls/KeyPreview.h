#pragma once
#include "base/types.h"

#include <QObject>
#include <functional>

QT_BEGIN_NAMESPACE
class QKeyEvent;
class QWidget;
QT_END_NAMESPACE

namespace mkl {

/// Offers every key that is pressed in a widget or in whatever it holds to a procedure, before the one that has the
/// focus sees it. A member of the widget.
class KeyPreview final : public QObject {
public:
    /// KeyCode is the key's virtual code (F1 = 112), Shift as in mouse events. Setting KeyCode to 0 swallows the key.
    using KeyDown = std::function<void(Integer& KeyCode, Integer& Shift)>;

    /// owner: the widget; what it comes to hold from now on belongs to it.
    KeyPreview(QWidget& owner, KeyDown keyDown);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(QObject* object);
    bool isFirst(const QObject* watched) const;
    bool swallows(const QKeyEvent& event) const;

    QWidget& owner_;
    KeyDown keyDown_;
};

} // namespace mkl
