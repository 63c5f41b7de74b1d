#include "controls/ListModel.h"

#include "controls/ColumnHeaders.h"
#include "controls/ListItemCollection.h"

namespace mkl {

ListModel::ListModel(ListItemCollection& items, ColumnHeaderCollection& columns)
    : items_(items)
    , columns_(columns) {}

QModelIndex ListModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    return createIndex(row, column, items_.Item(Long(row + 1)).get());
}

QModelIndex ListModel::parent(const QModelIndex&) const {
    return {};
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return asleep() || parent.isValid() ? 0 : items_.Count();
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_.Count();
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    const ListItem* const item = itemOf(index);
    if (!item) return {};
    if (role == Qt::DisplayRole) return item->columnText(index.column());
    const bool ofTheRow = role == Qt::DecorationRole || role == Qt::AccessibleTextRole;
    return ofTheRow && index.column() > 0 ? QVariant() : appearance(*item, role);
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return columns_.Item(section + 1)->Text();
}

ListItem* ListModel::itemOf(const QModelIndex& index) const {
    return static_cast<ListItem*>(index.internalPointer());
}

QModelIndex ListModel::indexOf(const Item* item) const {
    const auto* const row = static_cast<const ListItem*>(item);
    if (asleep() || !row || row->Index() == 0) return {};
    return createIndex(row->Index() - 1, 0, row);
}

void ListModel::beginInsert(int row) {
    if (listening()) beginInsertRows({}, row, row);
}

void ListModel::beginRemove(const ListItem& item) {
    if (listening()) beginRemoveRows({}, item.Index() - 1, item.Index() - 1);
}

void ListModel::beginColumn(int column) {
    beginInsertColumns({}, column, column);
}

void ListModel::endColumn() {
    endInsertColumns();
}

void ListModel::columnChanged(int column) {
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void ListModel::beginSort() {
    Q_EMIT layoutAboutToBeChanged();
}

void ListModel::endSort() {
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& index : before)
        after.append(indexOf(itemOf(index)).siblingAtColumn(index.column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

} // namespace mkl
