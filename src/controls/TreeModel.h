#pragma once
#include "controls/ItemModel.h"
#include "controls/Node.h"

namespace mkl {

class NodeCollection;

/// The nodes of a tree as Qt's views read them.
class TreeModel final : public ItemModel {
    Q_OBJECT

public:
    explicit TreeModel(NodeCollection& nodes, QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    /// Nothing: the header is hidden, and its number would be read out.
    QVariant headerData(int, Qt::Orientation, int) const override { return {}; }
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// The node of an index, null for the invalid one.
    Node* nodeOf(const QModelIndex& index) const;
    QModelIndex indexOf(const Item* item) const override;
    const Item& itemAt(const QModelIndex& index) const override { return *nodeOf(index); }

    /// Before the changes of the forest.
    void beginInsert(const Node& parent, size_t row);
    void beginRemove(const Node& node);

private:
    const Node& at(const QModelIndex& index) const; // the hidden root for the invalid index

    NodeCollection& nodes_;
};

} // namespace mkl
