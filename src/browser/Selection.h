#pragma once
#include "base/types.h"

namespace mkl {

class ArtCatBrowserPrivate;
class Node;

/// What is selected in the panes, and how the host hears of it.
class Selection {
public:
    explicit Selection(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The click logic of the tree: after a click of the user, and whenever the program selects a node.
    void NodeClick(Node& node);
    void SetCategoryOfTree(Long CategoryKey);
    /// Collapsing a node can have moved the selection to it.
    void afterCollapse();

private:
    /// Tells the host if the category changed. False if the control was closed by it.
    bool raiseItemSelected(Long former);

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
