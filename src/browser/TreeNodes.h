#pragma once
// Questions to the tree as it is on screen, and the one way to put a node into it.
#include "controls/TreeView.h"

#include <vector>

namespace mkl {

/// How many nodes the node's level has.
Long TV_SiblingCount(const Node& Node);
/// The n-th node of the level, from 1; empty where it has fewer.
Ref<Node> TV_SiblingAt(const Node& Node, Long Position);
/// Whether Ancestor is a parent of the node, or a parent of its parent, and so on.
bool TV_IsAncestor(const Node& Node, const mkl::Node& Ancestor);
/// Adds a node beside the one of that index. Errors of NodeCollection::Add.
Ref<Node> TV_AddNode(TreeView& Tree, Long RelativeIndex, TreeRelationshipConstants Relationship, const QString& Key,
                     const QString& Text, const Variant& Tag, const QString& Image);
/// Appends the children, with Recursive all descendants, each before its own children. Gives the length of the list.
Long TV_ChildNodes(const Node& Node, std::vector<Ref<mkl::Node>>& Nodes, bool Recursive);

} // namespace mkl
