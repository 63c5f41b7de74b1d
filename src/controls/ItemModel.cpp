#include "controls/ItemModel.h"

#include "controls/ImageList.h"

#include <QApplication>
#include <QPalette>

namespace mkl {

void ItemModel::setImageList(const ImageList* images) {
    images_ = images;
    Q_EMIT layoutAboutToBeChanged();
    Q_EMIT layoutChanged();
}

void ItemModel::setDropHighlight(const Item* item) {
    const Item* const former = std::exchange(dropHighlight_, item);
    for (const Item* changed : {former, item})
        if (changed) itemChanged(*changed);
}

void ItemModel::wake() {
    if (!asleep_) return;
    beginResetModel();
    asleep_ = false;
    endResetModel();
}

bool ItemModel::listening() {
    if (asleep_ || watched_) return !asleep_;
    beginResetModel();
    asleep_ = true;
    endResetModel();
    return false;
}

void ItemModel::endInsert() {
    if (!asleep_) endInsertRows();
}

void ItemModel::endRemove() {
    if (!asleep_) endRemoveRows();
}

void ItemModel::beginClear() {
    if (listening()) beginResetModel();
}

void ItemModel::endClear() {
    if (!asleep_) endResetModel();
}

void ItemModel::itemChanged(const Item& item) {
    const QModelIndex first = indexOf(&item);
    if (first.isValid()) Q_EMIT dataChanged(first, first.siblingAtColumn(columnCount() - 1));
}

// What the picture alone shows is said too.
QVariant ItemModel::spoken(const Item& item, int role) const {
    const QString state = images_ ? images_->ListImages().Description(item.image()) : QString();
    if (state.isEmpty()) return {};
    return role == Qt::AccessibleTextRole ? item.Text() + QStringLiteral(", ") + state : state;
}

QVariant ItemModel::appearance(const Item& item, int role) const {
    if (role == Qt::DecorationRole) return images_ ? QVariant(images_->picture(item.image())) : QVariant();
    if (role == Qt::AccessibleTextRole || role == Qt::AccessibleDescriptionRole) return spoken(item, role);
    if (&item != dropHighlight_) return {};
    if (role == Qt::BackgroundRole) return QApplication::palette().highlight();
    if (role == Qt::ForegroundRole) return QApplication::palette().highlightedText();
    return {};
}

} // namespace mkl
