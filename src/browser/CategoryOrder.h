#pragma once
#include "base/Ref.h"
#include "base/Variant.h"

namespace dao {
class Recordset;
}

namespace mkl {

class ArtCatBrowserPrivate;
class Node;
class TransMark;

/// Where categories stand: columns [Order] and [Parent] of ARTIKEL/KATEGORIEN. The nodes on screen are moved first,
/// then their sequence is written. Every row that is written gets the date.
class CategoryOrder {
public:
    explicit CategoryOrder(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Numbers the node's level from 1, as it is on screen. False where a row is gone or writing failed, which it
    /// reports itself.
    bool OrderCategory(const Node& Node, bool SkipNode);
    /// Asks, then numbers the selected node's level by name, as far as the filters show it.
    void Renumber(bool Descending);
    /// Two categories change places and parents, in the transaction of the caller. A vanished one is reported, the
    /// other one is written; false after a failure, reported too.
    bool SwapCategories(const Node& Node1, const Node& Node2);
    /// Gives the category another parent, Null for the top level. It reports a failure itself.
    void EditParent(Long CatID, const Variant& NewParent);

    /// The menu entries.
    void kTV_NewPosition();
    void kTV_SortInc();
    void kTV_SortDesc();
    /// Moves the selected node by one place within its level, up (-1) or down (1).
    void moveSelected(Long step);

private:
    bool writeLevel(const Node& node, bool skipNode) const;
    bool isSortWanted(bool descending) const;
    void sortLevel(const Node& node, bool descending, TransMark& mark);
    void numberByName(dao::Recordset& rows, const Node& node, bool descending) const;
    /// Takes the node to the target's place and stores the level's new sequence.
    void move(Node& node, Node& target, bool behind, TransMark& mark);

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
