#pragma once
#include "controls/ColumnHeaders.h"
#include "controls/ItemView.h"
#include "controls/ListItemCollection.h"
#include "controls/ListModel.h"
#include "controls/ListSelection.h"

#include <optional>

namespace mkl {

/// A list of rows in columns (report view). Positions in twips, relative to the inside of the control.
class ListView : public ItemView {
    Q_OBJECT

public:
    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;

    ListItemCollection& ListItems() { return items_; }
    const ListItemCollection& ListItems() const { return items_; }
    ColumnHeaderCollection& ColumnHeaders() { return columns_; }
    const ColumnHeaderCollection& ColumnHeaders() const { return columns_; }

    /// The row that has the focus within the list, or none. Setting it selects that row too and raises no
    /// ItemClick; a row of another list or a removed one is error 35601.
    Ref<ListItem> SelectedItem() const { return selectedItem_; }
    void setSelectedItem(const Ref<ListItem>& item);

    /// The selected rows in the order in which they show.
    std::vector<Ref<ListItem>> SelectedItems() const;
    /// How many rows are selected.
    Long SelectedCount() const { return selectedCount_; }
    /// Deselects every row but this one, which stays as it is.
    void deselectOthers(const Ref<ListItem>& item);
    /// Deselects these rows; at once, since single ones cost time each in a long selection.
    void deselect(const std::vector<Ref<ListItem>>& items);

    /// The row marked as the target of a drop, or none.
    Ref<ListItem> DropHighlight() const { return static_cast<ListItem*>(dropTarget().get()); }
    void setDropHighlight(const Ref<ListItem>& item);

    /// The row at that point, or none.
    Ref<ListItem> HitTest(Single x, Single y) const;

    /// Whether the user can select several rows: ranges with Shift, single ones with Ctrl.
    bool MultiSelect() const { return selectionMode() == ExtendedSelection; }
    void setMultiSelect(bool multiSelect);

    /// Whether the rows stand in the order of the column SortKey (0 = the first one), texts compared by their sort
    /// keys (setTextOrder).
    bool Sorted() const { return sorted_; }
    void setSorted(bool sorted);
    Long SortKey() const { return sortKey_; }
    void setSortKey(Long column);

    /// Selects all rows if several can be selected.
    void selectAll() override;
    void forgetPress() override;

    /// Gives the bytes by whose order texts sort; without it they sort by their folded case alone. Texts of digits
    /// must be in order as they are without it.
    using TextOrder = std::function<QByteArray(const QString&)>;
    void setTextOrder(TextOrder order);

    /// The pictures of the rows; not owned.
    void setSmallIcons(const ImageList* images) { setPictures(images); }

Q_SIGNALS:
    /// The user pressed a mouse button on a row or moved to it by key. Never raised by code.
    void ItemClick(mkl::ListItem* Item);
    void ColumnClick(mkl::ColumnHeader* ColumnHeader);
    /// The user selected other rows without an ItemClick: at the release of a button, beside the rows, with the space
    /// bar or Ctrl+A.
    void SelectionChanged();

protected:
    void itemChosen(const QModelIndex& index) override;
    void restore() override;
    void pressedOn(const QModelIndex& index, const QMouseEvent& event) override;
    void releasedOn(const QModelIndex& index, const QMouseEvent& event) override;
    bool takesKey(const QKeyEvent& event) override;
    QModelIndex nextNamed(const std::function<bool(const Item&)>& fits, bool stepsOn) override;
    void goTo(const QModelIndex& index) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    friend class ColumnHeader;
    friend class ColumnHeaderCollection;
    friend class ListItem;
    friend class ListItemCollection;
    friend class ListSelection;

    void select(ListItem& item, bool selected);
    void selectRows(Long from, Long to, bool keepOthers);
    void clearSelected();
    void focusRow(const ListItem& item);
    void mark(ListItem& item, bool selected);
    void markRows(const QItemSelection& rows, bool selected);
    QItemSelection rowsAt(Long from, Long to) const;
    static std::optional<CursorAction> walkOf(int key);
    void aboutToRemove(ListItem& item);
    void aboutToClear();
    void sort();
    void checkOwn(const Ref<ListItem>& item) const;

    ListItemCollection items_;
    ColumnHeaderCollection columns_;
    ListModel model_;
    Ref<ListItem> selectedItem_;
    ListSelection selection_{*this};
    Long selectedCount_ = 0;
    bool sorted_ = false;
    Long sortKey_ = 0;
    TextOrder textOrder_;
};

} // namespace mkl
