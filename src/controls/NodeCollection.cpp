#include "controls/NodeCollection.h"

#include "controls/TreeView.h"

namespace mkl {

NodeCollection::NodeCollection(TreeView& tree)
    : tree_(tree)
    , root_(new Node({}, {})) {
    root_->owner_ = this;
}

NodeCollection::~NodeCollection() {
    for (const Ref<Node>& node : nodes_)
        node->detach();
}

void NodeCollection::Clear() {
    if (Count() == 0) return;
    tree_.aboutToClear();
    tree_.model_.beginClear();
    const std::vector<Ref<Node>> removed = nodes_.takeAll();
    for (const Ref<Node>& node : removed)
        node->detach();
    root_->children_.clear();
    tree_.model_.endClear();
}

Ref<Node> NodeCollection::Add(const Variant& relative, TreeRelationshipConstants relationship, const QString& key,
                              const QString& text) {
    const auto [parent, row] = placeFor(relative, relationship);
    const Ref<Node> node(new Node(key, text));
    nodes_.checkNew(*node);

    tree_.model_.beginInsert(*parent, row);
    node->owner_ = this;
    node->parent_ = parent;
    node->row_ = static_cast<quint32>(row);
    parent->children_.insert(parent->children_.begin() + static_cast<std::ptrdiff_t>(row), node.get());
    nodes_.append(node);
    tree_.model_.endInsert();
    return node;
}

void NodeCollection::Remove(const Variant& index) {
    const Ref<Node> node = Item(index);
    tree_.aboutToRemove(*node);

    tree_.model_.beginRemove(*node);
    std::vector<Node*>& level = node->parent_->children_;
    level.erase(level.begin() + static_cast<std::ptrdiff_t>(node->row()));
    std::vector<Node*> removed{node.get()};
    for (size_t at = 0; at < removed.size(); ++at) {
        const std::vector<Node*>& children = removed[at]->children_;
        removed.insert(removed.end(), children.begin(), children.end());
    }
    for (Node* each : removed) {
        each->detach();
        nodes_.remove(*each);
    }
    tree_.model_.endRemove();
}

NodeCollection::Place NodeCollection::placeFor(const Variant& relative, TreeRelationshipConstants relationship) const {
    Node* const beside = relative.isNull() ? nullptr : &nodes_.item(relative);
    Node* const level = beside ? beside->parent_ : root_.get();
    switch (relationship) {
    case tvwFirst: return {level, 0};
    case tvwLast: return {level, level->children_.size()};
    case tvwNext: return {level, beside ? beside->row() + 1 : level->children_.size()};
    case tvwPrevious: return {level, beside ? beside->row() : 0};
    case tvwChild: Node* const parent = beside ? beside : level; return {parent, parent->children_.size()};
    }
    throwError(err::InvalidArgument);
}

} // namespace mkl
