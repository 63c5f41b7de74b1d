#pragma once
#include "controls/Item.h"

#include <vector>

namespace mkl {

class NodeCollection;

/// A node of a TreeView, and at once the row of its model. One held by a variable outlives its removal: it keeps Key,
/// Tag, Text and Image, but stands alone (no relatives, Children 0, Index 0).
class Node final : public Item {
public:
    /// Key of the picture in the tree's image list. A key that the list lacks shows no picture.
    QString Image() const { return image(); }
    void setImage(const QString& key) { Item::setImage(key); }

    /// Whether the children show. Setting it raises the tree's Expand or Collapse; a node without children
    /// stays collapsed.
    bool Expanded() const { return expanded_; }
    void setExpanded(bool expanded);

    /// Whether it is the tree's SelectedItem. Setting it raises no NodeClick.
    bool Selected() const;
    void setSelected(bool selected);

    /// Expands what hides the node and scrolls it into view.
    void EnsureVisible();

    Long Children() const { return static_cast<Long>(children_.size()); } ///< of the first level below
    Long Index() const; ///< from 1, in the order of adding; 0 once removed

    Ref<Node> Parent() const; ///< empty at the top level
    Ref<Node> Child() const;  ///< the first one
    Ref<Node> Next() const;
    Ref<Node> Previous() const;
    Ref<Node> FirstSibling() const; ///< of its level, may be the node itself
    Ref<Node> LastSibling() const;
    Ref<Node> Root() const; ///< the first node of the whole tree

protected:
    void rekey(std::string key) override;
    void changed() override;

private:
    friend class NodeCollection;
    friend class TreeModel;
    friend class TreeView;

    Node(const QString& key, const QString& text)
        : Item(key, text) {}

    size_t row() const; ///< among its siblings
    Ref<Node> sibling(size_t row) const;
    bool hangsBelow(const Node& ancestor) const;
    void detach();

    bool expanded_ = false;
    mutable quint32 row_ = 0; // where it stood last; row() corrects it
    NodeCollection* owner_ = nullptr;
    Node* parent_ = nullptr; // the collection's root for the top level
    std::vector<Node*> children_;
};

} // namespace mkl
