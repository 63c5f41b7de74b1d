#include "controls/ListView.h"

#include "controls/RowDelegate.h"

#include <QHeaderView>

#include <algorithm>

namespace mkl {

ListView::ListView(QWidget* parent)
    : ItemView(parent)
    , items_(*this)
    , columns_(*this)
    , model_(items_, columns_) {
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setItemDelegate(new RowDelegate(this));
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
    selection_.setAnchor(item.get());
    if (awake()) selectionModel()->setCurrentIndex(model_.indexOf(item.get()), QItemSelectionModel::NoUpdate);
    if (item)
        select(*item, true);
    else if (!MultiSelect())
        clearSelected();
}

// The view knows ranges of them; a list that does not show is gone through up to the last one.
std::vector<Ref<ListItem>> ListView::SelectedItems() const {
    std::vector<Ref<ListItem>> selected;
    selected.reserve(static_cast<size_t>(selectedCount_));
    if (!awake()) {
        for (auto item = items_.begin(); std::ssize(selected) < selectedCount_; ++item)
            if ((*item)->selected_) selected.push_back(*item);
        return selected;
    }
    const QItemSelection ranges = selectionModel()->selection();
    std::vector<int> rows;
    for (const QItemSelectionRange& range : ranges)
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    const auto first = items_.begin();
    for (const int row : rows)
        selected.push_back(first[row]);
    return selected;
}

void ListView::deselectOthers(const Ref<ListItem>& item) {
    checkOwn(item);
    const bool stays = item && item->selected_;
    clearSelected();
    if (stays) select(*item, true);
}

void ListView::deselect(const std::vector<Ref<ListItem>>& items) {
    for (const Ref<ListItem>& item : items)
        checkOwn(item);
    for (const Ref<ListItem>& item : items)
        mark(*item, false);
    if (awake() && !items.empty()) restore();
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
    if (!awake()) {
        items_.unsorted_ = true;
        return;
    }
    // The items know what is selected; the view would carry every selected cell over.
    selectionModel()->reset();
    model_.beginSort();
    items_.unsorted_ = true; // only now: until here the rows stand as the views know them
    model_.endSort();
    restore();
}

void ListView::forgetPress() {
    ItemView::forgetPress();
    selection_.forgetPress();
}

void ListView::itemChosen(const QModelIndex& index) {
    const Ref<ListItem> item = model_.itemOf(index);
    Q_EMIT ItemClick(item.get());
}

void ListView::pressedOn(const QModelIndex& index, const QMouseEvent& event) {
    if (MultiSelect()) selection_.press(model_.itemOf(index), event);
}

void ListView::releasedOn(const QModelIndex& index, const QMouseEvent& event) {
    if (MultiSelect()) selection_.release(model_.itemOf(index), event);
}

// Several rows are selected here, not by the view.
QItemSelectionModel::SelectionFlags ListView::selectionCommand(const QModelIndex& index, const QEvent* event) const {
    return MultiSelect() ? QItemSelectionModel::NoUpdate : ItemView::selectionCommand(index, event);
}

bool ListView::takesKey(const QKeyEvent& event) {
    if (!MultiSelect() || event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) return false;
    if (event.key() == Qt::Key_Space) {
        if (selectedItem_) selection_.space(*selectedItem_, event.modifiers());
        return true;
    }
    if (event.matches(QKeySequence::SelectAll)) {
        selectAll();
        Q_EMIT SelectionChanged();
        return true;
    }
    const std::optional<CursorAction> action = walkOf(event.key());
    if (!action) return false;
    const QModelIndex target = moveCursor(*action, Qt::NoModifier);
    if (target.isValid()) selection_.walk(*model_.itemOf(target), event.modifiers());
    return true;
}

std::optional<QAbstractItemView::CursorAction> ListView::walkOf(int key) {
    switch (key) {
    case Qt::Key_Up: return MoveUp;
    case Qt::Key_Down: return MoveDown;
    case Qt::Key_Home: return MoveHome;
    case Qt::Key_End: return MoveEnd;
    case Qt::Key_PageUp: return MovePageUp;
    case Qt::Key_PageDown: return MovePageDown;
    default: return {};
    }
}

// Once around, from the row with the focus.
QModelIndex ListView::nextNamed(const std::function<bool(const Item&)>& fits, bool stepsOn) {
    const Long count = items_.Count();
    const auto rows = items_.begin();
    const Long start = selectedItem_ ? selectedItem_->Index() - 1 + stepsOn : 0;
    for (Long step = 0; step < count; ++step) {
        const Ref<ListItem>& item = rows[(start + step) % count];
        if (fits(*item)) return model_.indexOf(item.get());
    }
    return {};
}

void ListView::goTo(const QModelIndex& index) {
    if (MultiSelect())
        selection_.walk(*model_.itemOf(index), Qt::NoModifier);
    else
        setCurrentIndex(index);
}

// Rows in a sequence are one range: views look through all ranges for every cell.
void ListView::restore() {
    QItemSelection rows;
    Long first = 0;
    Long row = 0;
    Long rest = selectedCount_;
    for (const Ref<ListItem>& item : items_) {
        if (rest == 0 && first == 0) break;
        ++row;
        rest -= item->selected_;
        if (item->selected_ && first == 0) first = row;
        if (!item->selected_ && first > 0) rows.append(rowsAt(std::exchange(first, 0), row - 1).first());
    }
    if (first > 0) rows.append(rowsAt(first, row).first());
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    selectionModel()->setCurrentIndex(model_.indexOf(selectedItem_.get()), QItemSelectionModel::NoUpdate);
}

void ListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    markRows(deselected, false);
    markRows(selected, true);
    // The view itself would look at every single cell.
    const auto headOf = [](const QItemSelection& rows) {
        if (rows.isEmpty()) return rows;
        const QItemSelectionRange& first = rows.first();
        return QItemSelection(first.topLeft(), first.model()->index(first.top(), first.right()));
    };
    ItemView::selectionChanged(headOf(selected), headOf(deselected));
    viewport()->update();
}

void ListView::markRows(const QItemSelection& rows, bool selected) {
    const auto first = items_.begin();
    for (const QItemSelectionRange& range : rows)
        for (int row = range.top(); row <= range.bottom(); ++row)
            mark(*first[row], selected);
}

void ListView::mark(ListItem& item, bool selected) {
    if (std::exchange(item.selected_, selected) != selected) selectedCount_ += selected ? 1 : -1;
}

void ListView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    ItemView::currentChanged(current, previous);
    selectedItem_ = model_.itemOf(current);
}

void ListView::select(ListItem& item, bool selected) {
    if (!awake()) {
        if (selected && !MultiSelect()) clearSelected();
        mark(item, selected);
        return;
    }
    const auto command = !selected       ? QItemSelectionModel::Deselect
                         : MultiSelect() ? QItemSelectionModel::Select
                                         : QItemSelectionModel::ClearAndSelect;
    selectionModel()->select(model_.indexOf(&item), command | QItemSelectionModel::Rows);
}

void ListView::clearSelected() {
    if (awake()) {
        clearSelection();
    } else {
        for (const Ref<ListItem>& item : items_)
            mark(*item, false);
    }
}

QItemSelection ListView::rowsAt(Long from, Long to) const {
    return {model_.index(from - 1, 0), model_.index(to - 1, columns_.Count() - 1)};
}

void ListView::selectRows(Long from, Long to, bool keepOthers) {
    selectionModel()->select(rowsAt(from, to),
                             keepOthers ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect);
}

void ListView::selectAll() {
    if (MultiSelect() && awake() && items_.Count() > 0) selectRows(1, items_.Count(), false);
}

void ListView::focusRow(const ListItem& item) {
    selectionModel()->setCurrentIndex(model_.indexOf(&item), QItemSelectionModel::NoUpdate);
}

// The neighbour takes the focus, but does not become selected.
void ListView::aboutToRemove(ListItem& item) {
    forget([&item](const Item& each) { return &each == &item; });
    selection_.forget(item);
    mark(item, false);
    if (selectedItem_.get() != &item) return;
    const Long index = item.Index();
    const Long heir = index < items_.Count() ? index + 1 : index - 1;
    selectedItem_ = heir > 0 ? items_.Item(heir) : nullptr;
    if (awake()) selectionModel()->setCurrentIndex(model_.indexOf(selectedItem_.get()), QItemSelectionModel::NoUpdate);
}

void ListView::aboutToClear() {
    forget([](const Item&) { return true; });
    selection_.setAnchor(nullptr);
    selection_.forgetPress();
    selectedItem_.reset();
    selectedCount_ = 0;
}

} // namespace mkl
