#include "controls/DragSession.h"

#include "controls/ItemView.h"
#include "controls/RestOfPress.h"
#include "controls/Twips.h"
#include "controls/UserControl.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWindow>

#include <utility>

namespace mkl {

namespace {

constexpr int edgeHeight = 16;      // pixels
constexpr Long scrollInterval = 80; // milliseconds
constexpr int ticksPerGear = 12;    // then it scrolls by one more row at a time

QPointer<DragSession> running;

const QWidget* controlOf(const QWidget& view) {
    const QWidget* each = &view;
    while (!each->isWindow() && !qobject_cast<const UserControl*>(each))
        each = each->parentWidget();
    return each;
}

QPoint pointIn(const ItemView& view, const QPoint& place) {
    return view.mapFromGlobal(place) - view.contentsRect().topLeft();
}

QCursor cursorOf(const QPixmap& icon) {
    return icon.isNull() ? QCursor(Qt::ArrowCursor) : QCursor(icon, dragHotSpot.x(), dragHotSpot.y());
}

void tellCancelled(ItemView& source) {
    QMetaObject::invokeMethod(&source, &ItemView::DragCancelled, Qt::QueuedConnection);
}

bool canBegin(const ItemView& source) {
    const QWidget* const dialog = QApplication::activeModalWidget();
    return !running && source.isVisible() && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton) &&
           (!dialog || dialog == source.window()) && !QApplication::activePopupWidget();
}

} // namespace

DragSession::DragSession(ItemView& source)
    : QObject(qApp)
    , source_(&source) {
    scrollTimer_.setObjectName(QStringLiteral("DragScrollTimer"));
    scrollTimer_.setInterval(scrollInterval);
    connect(&scrollTimer_, &IntervalTimer::Timer, this, &DragSession::scroll);
}

DragSession* DragSession::of(const ItemView& source) {
    return running && running->source_ == &source ? running : nullptr;
}

void DragSession::begin(ItemView& source) {
    if (!canBegin(source)) return tellCancelled(source);
    running = new DragSession(source);
    running->start();
}

void DragSession::start() {
    source_->forgetPress();
    source_->viewport()->grabMouse();
    icon_ = source_->DragIcon().cacheKey();
    QApplication::setOverrideCursor(cursorOf(source_->DragIcon()));
    qApp->installEventFilter(this);
    moveTo(QCursor::pos());
}

void DragSession::end() {
    qApp->removeEventFilter(this);
    scrollTimer_.setEnabled(false);
    ItemView* const source = std::exchange(source_, nullptr);
    if (QWidget::mouseGrabber() == source->viewport()) source->viewport()->releaseMouse();
    source->forgetPress();
    QApplication::restoreOverrideCursor();
    RestOfPress::swallow();
    target_ = nullptr;
    running = nullptr;
    deleteLater();
}

void DragSession::abandon() {
    end();
}

void DragSession::cancel() {
    ItemView& source = *source_;
    end();
    tellCancelled(source);
}

void DragSession::drop() {
    if (viewAt(place_) != target_ && !moveTo(place_)) return;
    const QPointer<ItemView> target = target_;
    if (!target) return cancel();
    const QPoint point = pointIn(*target, place_);
    ItemView* const source = source_;
    end();
    const auto tell = [source, target, point] {
        if (target)
            Q_EMIT target->DragDrop(source, twipsX(point.x()), twipsY(point.y()));
        else
            Q_EMIT source->DragCancelled();
    };
    QMetaObject::invokeMethod(source, tell, Qt::QueuedConnection);
}

// Widgets get the events of the mouse from their window, which has to see them: it keeps count of the buttons.
bool DragSession::eventFilter(QObject* watched, QEvent* event) {
    if (!source_) return false;
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease: return watched->isWidgetType() && onMouse(static_cast<const QMouseEvent&>(*event));
    case QEvent::ContextMenu: return true;
    case QEvent::ShortcutOverride: event->accept(); return true;
    case QEvent::KeyPress:
        if (static_cast<const QKeyEvent&>(*event).key() == Qt::Key_Escape) cancel();
        return true;
    default:
        if (endsBy(watched, *event)) cancel();
        return false;
    }
}

bool DragSession::onMouse(const QMouseEvent& event) {
    const QPoint place = event.globalPosition().toPoint();
    const bool isMove = event.type() == QEvent::MouseMove;
    if (event.type() == QEvent::MouseButtonRelease) {
        if (event.button() == Qt::LeftButton && (place == place_ || moveTo(place))) drop();
        return true;
    }
    // Where the release was lost this belongs to no drag any more.
    const bool isHeld = event.buttons().testFlag(Qt::LeftButton) && event.button() != Qt::LeftButton;
    if (isMove && isHeld)
        moveTo(place);
    else
        cancel();
    return isHeld;
}

bool DragSession::endsBy(const QObject* watched, const QEvent& event) const {
    const QWidget* const window = source_->window();
    switch (event.type()) {
    case QEvent::Hide: return watched == source_;
    case QEvent::WindowDeactivate: return watched == window;
    case QEvent::WindowBlocked: return watched == window || watched == window->windowHandle();
    case QEvent::Show: {
        const auto* const widget = qobject_cast<const QWidget*>(watched);
        return widget && widget->windowType() == Qt::Popup;
    }
    default: return false;
    }
}

ItemView* DragSession::viewAt(const QPoint& place) const {
    QWidget* each = QApplication::widgetAt(place);
    while (each && !qobject_cast<ItemView*>(each))
        each = each->isWindow() ? nullptr : each->parentWidget();
    auto* const view = static_cast<ItemView*>(each);
    return view && view->isEnabled() && controlOf(*view) == controlOf(*source_) ? view : nullptr;
}

// A handler may end the drag, serve events or delete what there is: each step says whether the drag is still there.

bool DragSession::moveTo(const QPoint& place) {
    place_ = place;
    const QPointer<ItemView> under = viewAt(place);
    if (target_ && target_ != under && !leave()) return false;
    if (place_ != place) return true; // there was a later move meanwhile
    if (under && !(under == target_ ? raise(*under, vbOver) : enter(*under))) return false;
    watchEdges();
    return true;
}

bool DragSession::leave() {
    ItemView& view = *std::exchange(target_, nullptr);
    view.verticalScrollBar()->disconnect(this);
    return raise(view, vbLeave);
}

bool DragSession::enter(ItemView& view) {
    target_ = &view;
    const auto rowsMoved = [this] {
        if (source_) moveTo(place_);
    };
    connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, rowsMoved, Qt::QueuedConnection);
    return raise(view, vbEnter);
}

bool DragSession::raise(ItemView& view, Integer state) {
    const QPointer<DragSession> alive(this);
    const QPoint point = pointIn(view, place_);
    raising_ = true;
    Q_EMIT view.DragOver(source_, twipsX(point.x()), twipsY(point.y()), state);
    if (!alive || !source_) return false;
    raising_ = false;
    updateIcon();
    return true;
}

// Handlers take the picture away before they set another one: only the last one shows.
void DragSession::updateIcon() {
    const QPixmap icon = source_->DragIcon();
    if (raising_ || std::exchange(icon_, icon.cacheKey()) == icon.cacheKey()) return;
    QApplication::changeOverrideCursor(cursorOf(icon));
}

void DragSession::watchEdges() {
    const bool scrolls = edge() != 0;
    if (scrolls == scrollTimer_.Enabled()) return;
    scrolled_ = 0;
    scrollTimer_.setEnabled(scrolls);
}

int DragSession::edge() const {
    if (!target_) return 0;
    const QWidget& rows = *target_->viewport();
    const int y = rows.mapFromGlobal(place_).y();
    if (y < edgeHeight) return -1;
    return y < rows.height() - edgeHeight ? 0 : 1;
}

void DragSession::scroll() {
    if (!target_) return scrollTimer_.setEnabled(false);
    QScrollBar& bar = *target_->verticalScrollBar();
    const int steps = 1 + scrolled_++ / ticksPerGear;
    bar.setValue(bar.value() + edge() * steps * bar.singleStep());
}

} // namespace mkl
