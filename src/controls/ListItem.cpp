#include "controls/ListItem.h"

#include "controls/ListView.h"

namespace mkl {

QString ListItem::SubItems(Long column) const {
    if (column < 1) throwError(err::InvalidArgument);
    const auto at = static_cast<size_t>(column) - 1;
    return at < subItems_.size() ? QString::fromStdString(subItems_[at]) : QString();
}

void ListItem::setSubItems(Long column, const QString& text) {
    if (column < 1) throwError(err::InvalidArgument);
    const auto at = static_cast<size_t>(column) - 1;
    if (at >= subItems_.size()) subItems_.resize(at + 1);
    subItems_[at] = text.toStdString();
    changed();
}

void ListItem::setSelected(bool selected) {
    if (owner_ && selected != selected_) owner_->list_.select(*this, selected);
}

Long ListItem::Index() const {
    return owner_ ? owner_->sorted().indexOf(*this) : 0;
}

void ListItem::EnsureVisible() {
    if (owner_) owner_->list_.scrollToItem(*this);
}

void ListItem::rekey(std::string key) {
    if (owner_)
        owner_->items_.rekey(*this, std::move(key));
    else
        assignKey(std::move(key));
}

void ListItem::changed() {
    if (owner_) owner_->list_.model_.itemChanged(*this);
}

QString ListItem::columnText(Long column) const {
    return column == 0 ? Text() : SubItems(column);
}

void ListItem::detach() {
    owner_ = nullptr;
    selected_ = false;
}

} // namespace mkl
