#pragma once
#include "controls/Node.h"
#include "controls/SleepingModel.h"

namespace mkl {

class ImageList;
class NodeCollection;

/// The nodes of a tree as Qt's views read them. It stores nothing: the nodes are the rows.
class TreeModel final : public SleepingModel {
    Q_OBJECT

public:
    explicit TreeModel(NodeCollection& nodes, QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// The node of an index, null for the invalid one.
    Node* nodeOf(const QModelIndex& index) const;
    /// Invalid while the model sleeps and for a node without a place in the tree.
    QModelIndex indexOf(const Node* node) const;

    void setImageList(const ImageList* images);
    void setDropHighlight(const Node* node);

    /// Brackets around the changes of the forest, and the notice of a changed node.
    void beginInsert(const Node& parent, size_t row);
    void endInsert();
    void beginRemove(const Node& node);
    void endRemove();
    void nodeChanged(const Node& node, int role);

private:
    const Node& at(const QModelIndex& index) const; // the hidden root for the invalid index

    NodeCollection& nodes_;
    const ImageList* images_ = nullptr;
    const Node* dropHighlight_ = nullptr;
};

} // namespace mkl
