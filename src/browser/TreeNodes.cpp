#include "browser/TreeNodes.h"

namespace mkl {

namespace {

Ref<Node> nextUpwards(Ref<Node> node, const Node& top) {
    while (node && node.get() != &top) {
        if (const Ref<Node> next = node->Next()) return next;
        node = node->Parent();
    }
    return {};
}

} // namespace

Long TV_SiblingCount(const Node& Node) {
    if (const Ref<mkl::Node> parent = Node.Parent()) return parent->Children();
    Long count = 0;
    for (Ref<mkl::Node> each = Node.Root(); each; each = each->Next())
        ++count;
    return count;
}

Ref<Node> TV_SiblingAt(const Node& Node, Long Position) {
    Long place = 1;
    for (Ref<mkl::Node> each = Node.FirstSibling(); each; each = each->Next())
        if (place++ == Position) return each;
    return {};
}

bool TV_IsAncestor(const Node& Node, const mkl::Node& Ancestor) {
    for (Ref<mkl::Node> parent = Node.Parent(); parent; parent = parent->Parent())
        if (parent.get() == &Ancestor) return true;
    return false;
}

Ref<Node> TV_AddNode(TreeView& Tree, Long RelativeIndex, TreeRelationshipConstants Relationship, const QString& Key,
                     const QString& Text, const Variant& Tag, const QString& Image) {
    const Ref<Node> node = Tree.Nodes().Add(RelativeIndex, Relationship, Key, Text);
    node->setTag(Tag);
    node->setImage(Image);
    return node;
}

// A chain of nodes may be longer than a call stack.
Long TV_ChildNodes(const Node& Node, std::vector<Ref<mkl::Node>>& Nodes, bool Recursive) {
    for (Ref<mkl::Node> each = Node.Child(); each;) {
        Nodes.push_back(each);
        const Ref<mkl::Node> child = Recursive ? each->Child() : Ref<mkl::Node>();
        each = child ? child : Recursive ? nextUpwards(each, Node) : each->Next();
    }
    return static_cast<Long>(Nodes.size());
}

} // namespace mkl
