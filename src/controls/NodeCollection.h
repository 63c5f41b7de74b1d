#pragma once
#include "controls/ItemStore.h"
#include "controls/Node.h"

namespace mkl {

class TreeModel;
class TreeView;

/// Where Nodes.Add puts a node: before or behind the whole level of the relative, beside it, or as its last child.
enum TreeRelationshipConstants : Long { tvwFirst = 0, tvwLast = 1, tvwNext = 2, tvwPrevious = 3, tvwChild = 4 };

/// The nodes of a TreeView in the order of adding, and their forest.
class NodeCollection {
public:
    explicit NodeCollection(TreeView& tree);
    ~NodeCollection();
    NodeCollection(const NodeCollection&) = delete;
    NodeCollection& operator=(const NodeCollection&) = delete;

    Long Count() const { return nodes_.count(); }
    void Clear();

    /// relative: key or index of a node, Null for the top level as a whole. Errors: 35601 when the relative is
    /// missing, 35602 when the key exists, 5 for another relationship.
    Ref<Node> Add(const Variant& relative = {}, TreeRelationshipConstants relationship = tvwLast,
                  const QString& key = {}, const QString& text = {});

    /// Takes the node of that key or index out with its whole subtree; error 35601 when there is none. A selected
    /// node in it passes the selection on to the next one, else the previous one, else the parent.
    void Remove(const Variant& index);

    /// The node of that key or index; error 35601 when there is none.
    Ref<Node> Item(const Variant& index) const { return &nodes_.item(index); }

    /// In the order of adding. Adding and removing ends the walk.
    auto begin() const { return nodes_.begin(); }
    auto end() const { return nodes_.end(); }

private:
    friend class Node;
    friend class TreeModel;

    struct Place {
        Node* parent;
        size_t row;
    };
    Place placeFor(const Variant& relative, TreeRelationshipConstants relationship) const;

    TreeView& tree_;
    Ref<Node> root_; // its children are the top level; it never shows itself
    ItemStore<Node> nodes_;
};

} // namespace mkl
