#include "controls/TreeModel.h"

#include "controls/ImageList.h"
#include "controls/NodeCollection.h"

#include <QApplication>
#include <QPalette>

namespace mkl {

TreeModel::TreeModel(NodeCollection& nodes, QObject* parent)
    : SleepingModel(parent)
    , nodes_(nodes) {}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    Node* const node = at(parent).children_[static_cast<size_t>(row)];
    node->row_ = static_cast<quint32>(row);
    return createIndex(row, column, node);
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? indexOf(nodeOf(child)->parent_) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return asleep() ? 0 : static_cast<int>(at(parent).children_.size());
}

int TreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool TreeModel::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    const Node* const node = nodeOf(index);
    if (!node) return {};
    switch (role) {
    case Qt::DisplayRole: return node->Text();
    case Qt::DecorationRole: return images_ ? QVariant(images_->picture(node->Image())) : QVariant();
    case Qt::BackgroundRole: return node == dropHighlight_ ? QVariant(QApplication::palette().highlight()) : QVariant();
    case Qt::ForegroundRole:
        return node == dropHighlight_ ? QVariant(QApplication::palette().highlightedText()) : QVariant();
    default: return {};
    }
}

Node* TreeModel::nodeOf(const QModelIndex& index) const {
    return static_cast<Node*>(index.internalPointer());
}

QModelIndex TreeModel::indexOf(const Node* node) const {
    if (asleep() || !node || !node->parent_) return {};
    return createIndex(static_cast<int>(node->row()), 0, node);
}

void TreeModel::setImageList(const ImageList* images) {
    images_ = images;
    Q_EMIT layoutAboutToBeChanged();
    Q_EMIT layoutChanged();
}

void TreeModel::setDropHighlight(const Node* node) {
    const Node* const former = std::exchange(dropHighlight_, node);
    for (const Node* changed : {former, node})
        if (changed) nodeChanged(*changed, Qt::BackgroundRole);
}

void TreeModel::beginInsert(const Node& parent, size_t row) {
    if (listening()) beginInsertRows(indexOf(&parent), static_cast<int>(row), static_cast<int>(row));
}

void TreeModel::endInsert() {
    if (!asleep()) endInsertRows();
}

void TreeModel::beginRemove(const Node& node) {
    if (!listening()) return;
    const int row = static_cast<int>(node.row());
    beginRemoveRows(indexOf(node.parent_), row, row);
}

void TreeModel::endRemove() {
    if (!asleep()) endRemoveRows();
}

void TreeModel::nodeChanged(const Node& node, int role) {
    const QModelIndex index = indexOf(&node);
    if (index.isValid()) Q_EMIT dataChanged(index, index, {role});
}

const Node& TreeModel::at(const QModelIndex& index) const {
    return index.isValid() ? *nodeOf(index) : *nodes_.root_;
}

} // namespace mkl
