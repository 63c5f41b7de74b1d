#pragma once
#include "base/Ref.h"
#include "base/Variant.h"

namespace mkl {

class ArtCatBrowserPrivate;
class Node;
class TransMark;

/// Categories that are taken to another place of the tree, with all that hangs below them.
class CategoryTransfer {
public:
    explicit CategoryTransfer(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// What a drop of one category on another one can mean.
    enum Choice : Long {
        Nothing = 0,
        MoveWithinLevel = 1,
        MoveToLevel = 2,
        MakeSubcategory = 3,
        SwapWithinLevel = 4,
        SwapLevels = 5
    };
    /// Asks for it; the offers depend on whether both stand on one level.
    Long CategoryDropChoice(const Node& Node, const mkl::Node& TargetNode) const;

    /// Asks, then swaps the two, takes the one to the other's place or makes it a subcategory, and reads the tree
    /// again. What would make the category its own ancestor is refused.
    void TVDragCategory(Node& Node, mkl::Node& TargetNode);
    /// Asks, then copies the category with its subtree and all assignments into the target, as its last subcategory.
    /// Result: key of the copy; 0 where the user declined or it failed.
    Long TVDragCategory_Copy(const Node& Node, const mkl::Node& TargetNode);

private:
    void transfer(Node& node, Node& target, Choice choice, TransMark& mark);
    Ref<Node> moveNode(Node& node, Node& target, Choice choice) const;
    bool store(const Node& moved, const Node* oldNeighbour, Choice choice) const;
    /// Tells why the category cannot have that parent, Null for the top level, as the rows are now.
    bool mayHang(Long category, const Variant& parent, TransMark& mark, const QString& procName) const;
    bool maySwap(const Node& node, const Node& target, TransMark& mark) const;
    bool isCopyWanted(const QString& name, const QString& targetName) const;
    Long copy(Long category, Long target, Long order, TransMark& mark) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
