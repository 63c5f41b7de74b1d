#pragma once
#include "controls/ItemView.h"
#include "controls/NodeCollection.h"
#include "controls/TreeModel.h"

namespace mkl {

/// A tree of nodes with pictures. Positions in twips, relative to the inside of the control.
class TreeView : public ItemView {
    Q_OBJECT

public:
    explicit TreeView(QWidget* parent = nullptr);
    ~TreeView() override;

    NodeCollection& Nodes() { return nodes_; }
    const NodeCollection& Nodes() const { return nodes_; }

    /// The selected node or none. Setting it expands what hides the node and raises no NodeClick; a node of another
    /// tree or a removed one is error 35601.
    Ref<Node> SelectedItem() const { return selected_; }
    void setSelectedItem(const Ref<Node>& node);

    /// The node marked as the target of a drop, or none.
    Ref<Node> DropHighlight() const { return static_cast<Node*>(dropTarget().get()); }
    void setDropHighlight(const Ref<Node>& node);

    /// The node whose row is at that point, or none.
    Ref<Node> HitTest(Single x, Single y) const;
    /// Whether the sign that expands or collapses a node is at that point.
    bool isOnExpander(Single x, Single y) const;

    /// The pictures of the nodes; not owned.
    void setImageList(const ImageList* images) { setPictures(images); }

Q_SIGNALS:
    /// The user pressed a mouse button on a node or moved to it by key. Never raised by code.
    void NodeClick(mkl::Node* Node);
    /// By the user or by code, after the fact. A collapse that hides the selected node selects the collapsed one
    /// first.
    void Expand(mkl::Node* Node);
    void Collapse(mkl::Node* Node);

protected:
    void itemChosen(const QModelIndex& index) override;
    void restore() override;
    QModelIndex nextNamed(const std::function<bool(const Item&)>& fits, bool stepsOn) override;
    void goTo(const QModelIndex& index) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    friend class Node;
    friend class NodeCollection;

    void checkOwn(const Ref<Node>& node) const;
    Ref<Node> nextInSight(const Ref<Node>& node) const;
    void setNodeExpanded(Node& node, bool expanded);
    void expansionChanged(Node& node, bool expanded);
    void expandAncestors(const Node& node);
    void aboutToRemove(const Node& node);
    void aboutToClear();
    void showSelection();
    void makeRoomFor(const Node& parent);

    NodeCollection nodes_;
    TreeModel model_;
    Ref<Node> selected_;
    int deepestLevel_ = 0; // of the children that were shown so far
    bool showing_ = false; // the view is being brought in line with the nodes
};

} // namespace mkl
