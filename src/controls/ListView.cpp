#include "controls/ListView.h"

#include <QHeaderView>

namespace mkl {

ListView::ListView(QWidget* parent)
    : ItemView(parent)
    , items_(*this)
    , columns_(*this)
    , model_(items_, columns_) {
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setItems(model_);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(true);
    header()->setMinimumSectionSize(0);
    connect(header(), &QHeaderView::sectionClicked, this,
            [this](int section) { Q_EMIT ColumnClick(columns_.Item(section + 1).get()); });
}

ListView::~ListView() {
    dropItems();
}

void ListView::checkOwn(const Ref<ListItem>& item) const {
    if (item && item->owner_ != &items_) throwError(err::ElementNotFound, {item->Key()});
}

void ListView::setSelectedItem(const Ref<ListItem>& item) {
    checkOwn(item);
    selectedItem_ = item;
    if (awake()) selectionModel()->setCurrentIndex(model_.indexOf(item.get()), QItemSelectionModel::NoUpdate);
    if (item)
        select(*item, true);
    else if (!MultiSelect())
        clearSelected();
}

Long ListView::SelectedCount() const {
    if (!awake())
        return static_cast<Long>(
            std::ranges::count_if(items_, [](const Ref<ListItem>& item) { return item->selected_; }));
    Long count = 0;
    for (const QItemSelectionRange& rows : selectionModel()->selection())
        count += rows.height();
    return count;
}

void ListView::deselectOthers(const Ref<ListItem>& item) {
    checkOwn(item);
    const bool stays = item && item->selected_;
    clearSelected();
    if (stays) select(*item, true);
}

void ListView::setDropHighlight(const Ref<ListItem>& item) {
    checkOwn(item);
    setDropTarget(item);
}

Ref<ListItem> ListView::HitTest(Single x, Single y) const {
    return model_.itemOf(indexAtTwips(x, y));
}

void ListView::setMultiSelect(bool multiSelect) {
    setSelectionMode(multiSelect ? ExtendedSelection : SingleSelection);
}

void ListView::setSorted(bool sorted) {
    sorted_ = sorted;
    sort();
}

void ListView::setSortKey(Long column) {
    if (column < 0) throwError(err::InvalidArgument);
    sortKey_ = column;
    sort();
}

void ListView::setTextOrder(TextOrder order) {
    textOrder_ = std::move(order);
    sort();
}

void ListView::sort() {
    if (!sorted_) return;
    if (awake()) model_.beginSort();
    items_.unsorted_ = true; // only now: until here the rows stand as the views know them
    if (awake()) model_.endSort();
}

void ListView::itemChosen(const QModelIndex& index) {
    const Ref<ListItem> item = model_.itemOf(index);
    Q_EMIT ItemClick(item.get());
}

void ListView::restore() {
    QItemSelection rows;
    for (const Ref<ListItem>& item : items_) {
        if (!item->selected_) continue;
        const QModelIndex index = model_.indexOf(item.get());
        rows.select(index, index);
    }
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    selectionModel()->setCurrentIndex(model_.indexOf(selectedItem_.get()), QItemSelectionModel::NoUpdate);
}

void ListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    ItemView::selectionChanged(selected, deselected);
    const auto mark = [this](const QItemSelection& rows, bool value) {
        for (const QModelIndex& index : rows.indexes())
            model_.itemOf(index)->selected_ = value;
    };
    mark(deselected, false);
    mark(selected, true);
}

void ListView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    ItemView::currentChanged(current, previous);
    selectedItem_ = model_.itemOf(current);
}

void ListView::select(ListItem& item, bool selected) {
    if (!awake()) {
        if (selected && !MultiSelect()) clearSelected();
        item.selected_ = selected;
        return;
    }
    const auto command = !selected       ? QItemSelectionModel::Deselect
                         : MultiSelect() ? QItemSelectionModel::Select
                                         : QItemSelectionModel::ClearAndSelect;
    selectionModel()->select(model_.indexOf(&item), command | QItemSelectionModel::Rows);
}

void ListView::clearSelected() {
    if (awake()) clearSelection();
    for (const Ref<ListItem>& item : items_)
        item->selected_ = false;
}

// The neighbour takes the focus, but does not become selected.
void ListView::aboutToRemove(const ListItem& item) {
    forget([&item](const Item& each) { return &each == &item; });
    if (selectedItem_.get() != &item) return;
    const Long index = item.Index();
    const Long heir = index < items_.Count() ? index + 1 : index - 1;
    selectedItem_ = heir > 0 ? items_.Item(heir) : nullptr;
    if (awake()) selectionModel()->setCurrentIndex(model_.indexOf(selectedItem_.get()), QItemSelectionModel::NoUpdate);
}

void ListView::aboutToClear() {
    forget([](const Item&) { return true; });
    selectedItem_.reset();
}

} // namespace mkl
