#include "controls/TreeModel.h"

#include "controls/NodeCollection.h"

namespace mkl {

TreeModel::TreeModel(NodeCollection& nodes, QObject* parent)
    : ItemModel(parent)
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
    return role == Qt::DisplayRole ? node->Text() : appearance(*node, role);
}

Node* TreeModel::nodeOf(const QModelIndex& index) const {
    return static_cast<Node*>(index.internalPointer());
}

QModelIndex TreeModel::indexOf(const Item* item) const {
    const auto* const node = static_cast<const Node*>(item);
    if (asleep() || !node || !node->parent_) return {};
    return createIndex(static_cast<int>(node->row()), 0, node);
}

void TreeModel::beginInsert(const Node& parent, size_t row) {
    if (listening()) beginInsertRows(indexOf(&parent), static_cast<int>(row), static_cast<int>(row));
}

void TreeModel::beginRemove(const Node& node) {
    if (!listening()) return;
    const int row = static_cast<int>(node.row());
    beginRemoveRows(indexOf(node.parent_), row, row);
}

const Node& TreeModel::at(const QModelIndex& index) const {
    return index.isValid() ? *nodeOf(index) : *nodes_.root_;
}

} // namespace mkl
