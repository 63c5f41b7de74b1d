#pragma once
#include "controls/IntervalTimer.h"

#include <QPoint>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QMouseEvent;
QT_END_NAMESPACE

namespace mkl {

class ItemView;

/// One drag with the mouse, from its begin until the button is released or something ends it. There is one at most in
/// the program. It tells the views of the same control (UserControl, or window) where the pointer is; what comes of it
/// is told from the event loop, when the mouse is free again, so that handlers may open dialogs. The wheel, and the
/// pointer resting at the upper or lower edge, scroll the view under the pointer.
class DragSession final : public QObject {
    Q_OBJECT

public:
    /// Begins at the place of the pointer. Where no drag can begin (the left button is not held, another drag runs, a
    /// dialog or menu is open) the source is told that it was cancelled.
    static void begin(ItemView& source);
    /// The drag that this view has begun, or null.
    static DragSession* of(const ItemView& source);

    /// Shows the DragIcon of the source.
    void updateIcon();
    /// Drops where the pointer is.
    void drop();
    void cancel();
    /// Ends without telling the source, which is going.
    void abandon();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit DragSession(ItemView& source);

    void start();
    bool onMouse(const QMouseEvent& event);
    bool endsBy(const QObject* watched, const QEvent& event) const;
    ItemView* viewAt(const QPoint& place) const;
    bool moveTo(const QPoint& place);
    bool leave();
    bool enter(ItemView& view);
    bool raise(ItemView& view, Integer state);
    void watchEdges();
    int edge() const;
    void scroll();
    void end();

    QPointer<ItemView> source_; // null once the drag has ended
    QPointer<ItemView> target_; // the view under the pointer
    QPoint place_;              // of the pointer, on the screen
    qint64 icon_ = 0;           // what the pointer shows
    bool raising_ = false;
    IntervalTimer scrollTimer_{this};
    int scrolled_ = 0; // ticks at this edge
};

} // namespace mkl
