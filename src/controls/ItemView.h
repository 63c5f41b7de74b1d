#pragma once
#include "base/types.h"
#include "controls/ClickDetector.h"
#include "controls/Item.h"
#include "controls/TypeAhead.h"

#include <QPixmap>
#include <QTreeView>

#include <functional>

namespace mkl {

class ImageList;
class ItemModel;

/// Where the pictures of drags point, in pixels.
inline constexpr QPoint dragHotSpot{2, 2};

/// What Drag is to do.
enum DragActions : Integer { vbCancelDrag = 0, vbBeginDrag = 1, vbEndDrag = 2 };
/// What the pointer does to a view during a drag.
enum DragOverStates : Integer { vbEnter = 0, vbLeave = 1, vbOver = 2 };

/// What TreeView and ListView have in common: mouse, keyboard and focus events, the pointer's picture, and drags.
/// Points count from the upper left corner inside the frame, heads of columns included.
/// By-reference arguments pass through all handlers in turn (direct connections only).
class ItemView : public QTreeView {
    Q_OBJECT

public:
    explicit ItemView(QWidget* parent = nullptr);
    ~ItemView() override;

    /// The picture of the mouse pointer over the control; an empty one gives the usual pointer.
    QPixmap MouseIcon() const { return mouseIcon_; }
    void setMouseIcon(const QPixmap& picture);

    /// The picture of the pointer during a drag from this control, with its hot spot at dragHotSpot; a change shows at
    /// once. An empty one gives the arrow.
    QPixmap DragIcon() const { return dragIcon_; }
    void setDragIcon(const QPixmap& picture);
    /// Begins a drag from this control while the left button is held, cancels it, or drops at the place of the pointer.
    /// Targets are the views of the same control, this one included.
    void Drag(DragActions Action);
    /// The press of the mouse has become something else: its release does nothing.
    virtual void forgetPress();

    /// What typed letters are compared with, if not the item's Text.
    using NameOf = std::function<QString(const Item&)>;
    void setNameOf(NameOf nameOf) { nameOf_ = std::move(nameOf); }

    /// What the control says while it is empty: it is painted, and assistive tools read it as the description.
    const QString& EmptyText() const { return emptyText_; }
    void setEmptyText(const QString& text);

    /// Goes on to the next item whose name begins with the letters typed one soon after the other; the same letter
    /// again steps on.
    void keyboardSearch(const QString& letters) override;

    /// Brings the item into view, at once or when the control shows again.
    void scrollToItem(Item& item);
    /// Keys of the items in sight, from the top down.
    QStringList keysInSight() const;
    /// Scrolls until the item is the topmost one in sight, as far as there are items behind it; at once or when the
    /// control shows again, and then before it brings another one into view.
    void setTopItem(Item& item);

Q_SIGNALS:
    void Click();
    void DblClick();
    /// The pointer of a drag came over this control, moved there (or the rows moved below it), or left. State: one of
    /// DragOverStates. X, Y as in MouseDown.
    void DragOver(mkl::ItemView* Source, mkl::Single X, mkl::Single Y, mkl::Integer State);
    /// The button was released over this control; the mouse is free again.
    void DragDrop(mkl::ItemView* Source, mkl::Single X, mkl::Single Y);
    /// A drag from this control ended without a DragDrop, or could not begin.
    void DragCancelled();
    void GotFocus();
    /// The Menu key or Shift+F10. X, Y: where the menu of the item with the focus belongs, in twips.
    void MenuKey(mkl::Single X, mkl::Single Y);
    /// Button: 1 left, 2 right, 4 middle (MouseMove: their sum). Shift: 1 Shift, 2 Ctrl, 4 Alt. X, Y: twips.
    void MouseDown(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);
    void MouseMove(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);
    void MouseUp(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);

protected:
    /// The user pressed a mouse button on an item, or moved to another item by key.
    virtual void itemChosen(const QModelIndex& index) = 0;
    /// The model was reset: show again what the items know and the view has forgotten.
    virtual void restore() = 0;

    /// A press and a release, before the view itself sees them.
    virtual void pressedOn(const QModelIndex&, const QMouseEvent&) {}
    virtual void releasedOn(const QModelIndex&, const QMouseEvent&) {}
    /// Whether the control does by itself what the key means.
    virtual bool takesKey(const QKeyEvent&) { return false; }
    /// The next item in sight, or in a list the next one at all, whose name fits; from the present one or behind it.
    virtual QModelIndex nextNamed(const std::function<bool(const Item&)>& fits, bool stepsOn) = 0;
    /// Selects the item as a key without modifiers does.
    virtual void goTo(const QModelIndex& index) = 0;

    /// To be called once, by the constructor, with the model of the derived control.
    void setItems(ItemModel& model);
    /// Takes the model away; to be called by the destructor.
    void dropItems();
    /// Whether changes reach the screen at once.
    bool awake() const;

    void setPictures(const ImageList* images);
    const Ref<Item>& dropTarget() const { return dropTarget_; }
    void setDropTarget(const Ref<Item>& item);
    /// Drop mark and scroll target leave the items that the call names.
    void forget(const std::function<bool(const Item&)>& goes);
    /// The index at a point of the control.
    QModelIndex indexAtTwips(Single x, Single y) const;
    QPoint rowsOrigin() const; ///< of the area of the rows, in pixels of the control

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    bool viewportEvent(QEvent* event) override;

private:
    friend class DragSession;
    using MouseSignal = void (ItemView::*)(Integer&, Integer&, Single&, Single&);
    void raise(MouseSignal signal, const QMouseEvent& event, Qt::MouseButtons buttons);
    void wake();
    void scrollToTargets();
    bool isMenuKey(const QKeyEvent& event) const;
    void raiseMenuKey();
    void describe();
    void paintEmptyText();
    QRect rowRect(const QModelIndex& index) const;
    bool isCutShort(const QModelIndex& index) const;

    ItemModel* items_ = nullptr;
    Ref<Item> dropTarget_;
    Ref<Item> topTarget_;    // to be scrolled to when the control shows again: first this one to the top,
    Ref<Item> scrollTarget_; // then that one into view
    QPixmap mouseIcon_;
    QPixmap dragIcon_;
    NameOf nameOf_;
    TypeAhead typeAhead_;
    QString emptyText_;
    ClickDetector clicks_;
};

} // namespace mkl
