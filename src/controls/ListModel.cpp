#include "controls/ListModel.h"

#include "controls/ColumnHeaders.h"
#include "controls/ImageList.h"
#include "controls/ListItemCollection.h"

#include <QApplication>
#include <QPalette>

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
    switch (role) {
    case Qt::DisplayRole: return item->columnText(index.column());
    case Qt::DecorationRole:
        return images_ && index.column() == 0 ? QVariant(images_->picture(item->SmallIcon())) : QVariant();
    case Qt::BackgroundRole: return item == dropHighlight_ ? QVariant(QApplication::palette().highlight()) : QVariant();
    case Qt::ForegroundRole:
        return item == dropHighlight_ ? QVariant(QApplication::palette().highlightedText()) : QVariant();
    default: return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return columns_.Item(section + 1)->Text();
}

ListItem* ListModel::itemOf(const QModelIndex& index) const {
    return static_cast<ListItem*>(index.internalPointer());
}

QModelIndex ListModel::indexOf(const ListItem* item) const {
    if (asleep() || !item || item->Index() == 0) return {};
    return createIndex(item->Index() - 1, 0, item);
}

void ListModel::setImageList(const ImageList* images) {
    images_ = images;
    Q_EMIT layoutAboutToBeChanged();
    Q_EMIT layoutChanged();
}

void ListModel::setDropHighlight(const ListItem* item) {
    const ListItem* const former = std::exchange(dropHighlight_, item);
    for (const ListItem* changed : {former, item})
        if (changed) itemChanged(*changed);
}

void ListModel::beginInsert(int row) {
    if (listening()) beginInsertRows({}, row, row);
}

void ListModel::endInsert() {
    if (!asleep()) endInsertRows();
}

void ListModel::beginRemove(const ListItem& item) {
    if (listening()) beginRemoveRows({}, item.Index() - 1, item.Index() - 1);
}

void ListModel::endRemove() {
    if (!asleep()) endRemoveRows();
}

void ListModel::beginColumn(int column) {
    beginInsertColumns({}, column, column);
}

void ListModel::endColumn() {
    endInsertColumns();
}

void ListModel::itemChanged(const ListItem& item) {
    const QModelIndex first = indexOf(&item);
    if (first.isValid()) Q_EMIT dataChanged(first, first.siblingAtColumn(columns_.Count() - 1));
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
