#include "controls/ItemView.h"

#include "controls/DragSession.h"
#include "controls/ItemModel.h"
#include "controls/MouseArguments.h"
#include "controls/RowDelegate.h"
#include "controls/ToolTip.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QToolTip>

namespace mkl {

ItemView::ItemView(QWidget* parent)
    : QTreeView(parent) {
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new ItemDelegate(this));
    viewport()->setMouseTracking(true);
    connect(this, &QAbstractItemView::pressed, this, &ItemView::itemChosen);
}

ItemView::~ItemView() {
    if (DragSession* const drag = DragSession::of(*this)) drag->abandon();
}

void ItemView::setItems(ItemModel& model) {
    items_ = &model;
    setModel(&model);
    connect(&model, &QAbstractItemModel::modelReset, this, &ItemView::describe);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &ItemView::describe);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, &ItemView::describe);
}

void ItemView::dropItems() {
    items_->disconnect(this);
    setModel(nullptr);
    items_ = nullptr;
}

bool ItemView::awake() const {
    return !items_->asleep();
}

void ItemView::wake() {
    if (!items_ || awake()) return;
    items_->wake();
    restore();
    scrollToTargets();
}

void ItemView::scrollToItem(Item& item) {
    scrollTarget_ = &item;
    if (isVisible()) scrollToTargets();
}

void ItemView::setTopItem(Item& item) {
    topTarget_ = &item;
    if (isVisible()) scrollToTargets();
}

void ItemView::scrollToTargets() {
    const QModelIndex top = items_->indexOf(std::exchange(topTarget_, nullptr).get());
    const QModelIndex index = items_->indexOf(std::exchange(scrollTarget_, nullptr).get());
    if (top.isValid()) scrollTo(top, PositionAtTop);
    if (index.isValid()) scrollTo(index);
}

QStringList ItemView::keysInSight() const {
    QStringList keys;
    if (!awake()) return keys;
    QModelIndex index = indexAt(QPoint(0, 0));
    for (; index.isValid() && visualRect(index).top() < viewport()->height(); index = indexBelow(index))
        keys.append(items_->itemAt(index).Key());
    return keys;
}

void ItemView::setPictures(const ImageList* images) {
    items_->setImageList(images);
}

void ItemView::setDropTarget(const Ref<Item>& item) {
    dropTarget_ = item;
    items_->setDropHighlight(item.get());
}

void ItemView::forget(const std::function<bool(const Item&)>& goes) {
    if (dropTarget_ && goes(*dropTarget_)) setDropTarget(nullptr);
    if (topTarget_ && goes(*topTarget_)) topTarget_.reset();
    if (scrollTarget_ && goes(*scrollTarget_)) scrollTarget_.reset();
}

void ItemView::setMouseIcon(const QPixmap& picture) {
    mouseIcon_ = picture;
    if (picture.isNull())
        viewport()->unsetCursor();
    else
        viewport()->setCursor(QCursor(picture));
}

void ItemView::setDragIcon(const QPixmap& picture) {
    dragIcon_ = picture;
    if (DragSession* const drag = DragSession::of(*this)) drag->updateIcon();
}

void ItemView::Drag(DragActions Action) {
    DragSession* const drag = DragSession::of(*this);
    if (Action == vbBeginDrag && !drag) DragSession::begin(*this);
    if (Action == vbEndDrag && drag) drag->drop();
    if (Action == vbCancelDrag && drag) drag->cancel();
}

void ItemView::forgetPress() {
    clicks_.forget();
    setState(NoState);
}

QModelIndex ItemView::indexAtTwips(Single x, Single y) const {
    const QPoint point = QPoint(pixelsX(x), pixelsY(y)) - rowsOrigin();
    return viewport()->rect().contains(point) ? indexAt(point) : QModelIndex();
}

// The heads of columns belong to the inside of the control too.
QPoint ItemView::rowsOrigin() const {
    return viewport()->pos() - contentsRect().topLeft();
}

void ItemView::raise(MouseSignal signal, const QMouseEvent& event, Qt::MouseButtons buttons) {
    MouseArguments mouse(event, buttons);
    mouse.X += twipsX(rowsOrigin().x());
    mouse.Y += twipsY(rowsOrigin().y());
    Q_EMIT(this->*signal)(mouse.Button, mouse.Shift, mouse.X, mouse.Y);
}

// A handler may close the host: after each signal the control may be gone.

void ItemView::mousePressEvent(QMouseEvent* event) {
    const QPointer<ItemView> alive(this);
    clicks_.press(*event);
    raise(&ItemView::MouseDown, *event, event->button());
    if (!alive) return;
    pressedOn(indexAt(event->pos()), *event);
    if (alive) QTreeView::mousePressEvent(event);
}

// With a button down the classic controls neither select nor scroll: that is the beginning of a drag.
void ItemView::mouseMoveEvent(QMouseEvent* event) {
    const QPointer<ItemView> alive(this);
    raise(&ItemView::MouseMove, *event, event->buttons());
    if (alive && event->buttons() == Qt::NoButton) QTreeView::mouseMoveEvent(event);
}

void ItemView::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<ItemView> alive(this);
    raise(&ItemView::MouseUp, *event, event->button());
    if (!alive) return;
    releasedOn(indexAt(event->pos()), *event);
    if (!alive) return;
    QTreeView::mouseReleaseEvent(event);
    if (alive && clicks_.release(*event, *viewport())) Q_EMIT Click();
}

void ItemView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointer<ItemView> alive(this);
    QTreeView::mouseDoubleClickEvent(event);
    if (alive && event->button() == Qt::LeftButton) Q_EMIT DblClick();
}

void ItemView::keyPressEvent(QKeyEvent* event) {
    const QPointer<ItemView> alive(this);
    if (isMenuKey(*event)) {
        raiseMenuKey();
        return;
    }
    const QPersistentModelIndex before(currentIndex());
    const bool isLetter = event->key() == Qt::Key_Space && !event->modifiers() && typeAhead_.isRunning();
    if (isLetter)
        keyboardSearch(event->text());
    else if (!takesKey(*event))
        QTreeView::keyPressEvent(event);
    if (alive && currentIndex().isValid() && currentIndex() != before) itemChosen(currentIndex());
}

bool ItemView::isMenuKey(const QKeyEvent& event) const {
    return event.key() == Qt::Key_Menu || (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier);
}

void ItemView::raiseMenuKey() {
    const QModelIndex index = currentIndex();
    if (index.isValid()) scrollTo(index);
    const QRect row = visualRect(index);
    const QPoint place = rowsOrigin() + QPoint(std::max(0, row.left()), row.isNull() ? 0 : row.center().y());
    Q_EMIT MenuKey(twipsX(place.x()), twipsY(place.y()));
}

// The key itself has been seen; some platforms send this event in addition.
void ItemView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Keyboard) QTreeView::contextMenuEvent(event);
}

void ItemView::keyboardSearch(const QString& letters) {
    if (letters.isEmpty()) return;
    const TypeAhead::Search search = typeAhead_.type(letters);
    const auto fits = [&](const Item& item) {
        return (nameOf_ ? nameOf_(item) : item.Text()).startsWith(search.beginning, Qt::CaseInsensitive);
    };
    const QModelIndex found = nextNamed(fits, search.stepsOn);
    if (found.isValid()) goTo(found);
}

void ItemView::setEmptyText(const QString& text) {
    emptyText_ = text;
    describe();
    viewport()->update();
}

void ItemView::describe() {
    const QString& description = model()->rowCount() == 0 ? emptyText_ : QString();
    if (description != accessibleDescription()) setAccessibleDescription(description);
}

void ItemView::paintEmptyText() {
    constexpr int margin = 12;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText_);
}

void ItemView::focusInEvent(QFocusEvent* event) {
    QTreeView::focusInEvent(event);
    Q_EMIT GotFocus();
}

void ItemView::showEvent(QShowEvent* event) {
    items_->setWatched(true);
    wake();
    scrollToTargets();
    QTreeView::showEvent(event);
}

void ItemView::hideEvent(QHideEvent* event) {
    if (items_) items_->setWatched(false);
    QTreeView::hideEvent(event);
}

// A hidden control can be painted too, into a picture.
void ItemView::paintEvent(QPaintEvent* event) {
    wake();
    QTreeView::paintEvent(event);
    if (!emptyText_.isEmpty() && model()->rowCount() == 0) paintEmptyText();
}

// A thin frame: what some styles draw over the item makes it look selected, and its text pale.
void ItemView::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QTreeView::drawRow(painter, option, index);
    if (!hasFocus() || !index.isValid() || index != currentIndex().siblingAtColumn(0)) return;
    const bool isSelected = selectionModel()->isSelected(index);
    painter->save();
    painter->setPen({palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text), 1, Qt::DotLine});
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rowRect(index).adjusted(0, 0, -1, -1));
    painter->restore();
}

QRect ItemView::rowRect(const QModelIndex& index) const {
    return visualRect(index) | visualRect(index.siblingAtColumn(model()->columnCount() - 1));
}

void ItemView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    for (const QModelIndex& index : {current, previous})
        if (index.isValid()) viewport()->update(rowRect(index.siblingAtColumn(0)));
}

bool ItemView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTreeView::viewportEvent(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const QModelIndex index = indexAt(help.pos());
    const QString full = isCutShort(index) ? plainToolTip(index.data().toString()) : QString();
    QToolTip::showText(help.globalPos(), full, viewport(), visualRect(index));
    return true;
}

bool ItemView::isCutShort(const QModelIndex& index) const {
    return index.isValid() && sizeHintForIndex(index).width() > visualRect(index).width();
}

} // namespace mkl
