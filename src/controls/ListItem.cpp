#include "controls/ListItem.h"

#include "controls/ListView.h"

namespace mkl {

QString ListItem::SubItems(Long column) const {
    if (column < 1) throwError(err::InvalidArgument);
    if (column == 1) return QString::fromStdString(secondText_);
    const auto at = static_cast<size_t>(column) - 2;
    return furtherTexts_ && at < furtherTexts_->size() ? QString::fromStdString((*furtherTexts_)[at]) : QString();
}

void ListItem::setSubItems(Long column, const QString& text) {
    if (column < 1) throwError(err::InvalidArgument);
    subText(static_cast<size_t>(column)) = utf8(text);
    changed();
}

std::string& ListItem::subText(size_t column) {
    if (column == 1) return secondText_;
    if (!furtherTexts_) furtherTexts_ = std::make_unique<std::vector<std::string>>();
    if (furtherTexts_->size() < column - 1) furtherTexts_->resize(column - 1);
    return (*furtherTexts_)[column - 2];
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
        owner_->items_.rekey(*this, key);
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
