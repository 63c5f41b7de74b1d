#include "controls/Node.h"

#include "controls/TreeView.h"

namespace mkl {

void Node::setExpanded(bool expanded) {
    if (owner_) owner_->tree_.setNodeExpanded(*this, expanded);
}

bool Node::Selected() const {
    return owner_ && owner_->tree_.SelectedItem().get() == this;
}

void Node::setSelected(bool selected) {
    if (!owner_ || selected == Selected()) return;
    owner_->tree_.setSelectedItem(selected ? this : nullptr);
}

void Node::EnsureVisible() {
    if (!owner_) return;
    const Ref<Node> alive(this);
    owner_->tree_.expandAncestors(*this);
    if (owner_) owner_->tree_.scrollToItem(*this);
}

Long Node::Index() const {
    return owner_ ? owner_->nodes_.indexOf(*this) : 0;
}

Ref<Node> Node::Parent() const {
    return owner_ && parent_ != owner_->root_.get() ? parent_ : nullptr;
}

Ref<Node> Node::Child() const {
    return children_.empty() ? nullptr : children_.front();
}

Ref<Node> Node::Next() const {
    return owner_ ? sibling(row() + 1) : nullptr;
}

Ref<Node> Node::Previous() const {
    return owner_ && row() > 0 ? sibling(row() - 1) : nullptr;
}

Ref<Node> Node::FirstSibling() const {
    return owner_ ? parent_->children_.front() : nullptr;
}

Ref<Node> Node::LastSibling() const {
    return owner_ ? parent_->children_.back() : nullptr;
}

Ref<Node> Node::Root() const {
    return owner_ ? owner_->root_->Child() : nullptr;
}

void Node::rekey(std::string key) {
    if (owner_)
        owner_->nodes_.rekey(*this, key);
    else
        assignKey(std::move(key));
}

void Node::changed() {
    if (owner_) owner_->tree_.model_.itemChanged(*this);
}

size_t Node::row() const {
    const std::vector<Node*>& level = parent_->children_;
    if (row_ >= level.size() || level[row_] != this)
        for (size_t row = 0; row < level.size(); ++row)
            level[row]->row_ = static_cast<quint32>(row);
    return row_;
}

Ref<Node> Node::sibling(size_t row) const {
    return row < parent_->children_.size() ? parent_->children_[row] : nullptr;
}

bool Node::hangsBelow(const Node& ancestor) const {
    const Node* node = parent_;
    while (node && node != &ancestor)
        node = node->parent_;
    return node != nullptr;
}

void Node::detach() {
    owner_ = nullptr;
    parent_ = nullptr;
    std::vector<Node*>().swap(children_);
}

} // namespace mkl
