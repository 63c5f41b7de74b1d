#pragma once
// What is being dragged, from the press of the mouse on.
#include "controls/ListItem.h"
#include "controls/Node.h"

namespace mkl {

struct DragState {
    bool DragFromList = false; ///< where the press was; stays until the next press
    bool DragFromPool = false;
    bool DragFromTree = false;
    Long DragCopy = 0;      ///< 1 = Ctrl was down at the press
    Ref<ListItem> DragItem; ///< the row under the press
    Ref<ListItem> DropItem; ///< the list's row that was last under the mouse
    Ref<Node> DragNode;     ///< the node under the press
    Ref<Node> DropNode;     ///< the node that was last under the mouse
    Ref<Node> springNode;   ///< the closed node on which the mouse rests
    Ref<Node> clickedNode;  ///< whose click logic the press has run
};

} // namespace mkl
