#include "controls/ListItemCollection.h"

#include "controls/ListView.h"

namespace mkl {

ListItemCollection::~ListItemCollection() {
    for (const Ref<ListItem>& item : items_)
        item->detach();
}

void ListItemCollection::Clear() {
    if (Count() == 0) return;
    list_.aboutToClear();
    list_.model_.beginClear();
    const std::vector<Ref<ListItem>> removed = items_.takeAll();
    for (const Ref<ListItem>& item : removed)
        item->detach();
    list_.model_.endClear();
}

Ref<ListItem> ListItemCollection::Add(const Variant& index, const QString& key, const QString& text) {
    const Long place = index.isNull() ? Count() + 1 : index.toLong();
    if (place < 1 || place > Count() + 1) throwError(err::ElementNotFound, {QString::number(place)});
    const Ref<ListItem> item(new ListItem(key, text));
    items_.insertKey(*item);
    // In a hidden list the order can wait until somebody looks.
    const bool inOrder = list_.Sorted() && list_.model_.listening();
    const size_t at = inOrder ? sortedPlace(*item) : static_cast<size_t>(place) - 1;
    if (list_.Sorted() && !inOrder) unsorted_ = true;

    list_.model_.beginInsert(static_cast<int>(at));
    item->owner_ = this;
    items_.insertKnown(at, item);
    list_.model_.endInsert();
    return item;
}

void ListItemCollection::Remove(const Variant& index) {
    const Ref<ListItem> item = Item(index);
    list_.aboutToRemove(*item);
    list_.model_.beginRemove(*item);
    items_.remove(*item);
    item->detach();
    list_.model_.endRemove();
}

Ref<ListItem> ListItemCollection::Item(const Variant& index) const {
    return &(index.isText() ? items_ : sorted()).item(index);
}

QByteArray ListItemCollection::sortText(const ListItem& item) const {
    const QString text = item.columnText(list_.SortKey());
    return list_.textOrder_ ? list_.textOrder_(text) : text.toCaseFolded().toUtf8();
}

const ItemStore<ListItem>& ListItemCollection::sorted() const {
    if (!std::exchange(unsorted_, false) || areNumbersInOrder()) return items_;
    items_.reorder([this](std::vector<Ref<ListItem>>& order) {
        std::vector<std::pair<QByteArray, Ref<ListItem>>> rows;
        rows.reserve(order.size());
        for (Ref<ListItem>& item : order)
            rows.emplace_back(sortText(*item), std::move(item));
        std::stable_sort(rows.begin(), rows.end(),
                         [](const auto& left, const auto& right) { return left.first < right.first; });
        for (size_t at = 0; at < rows.size(); ++at)
            order[at] = std::move(rows[at].second);
    });
    return items_;
}

// Rows often come in the order of their numbers, and digits alone are in order as their bytes are.
bool ListItemCollection::areNumbersInOrder() const {
    if (list_.SortKey() != 0) return false;
    std::string_view former;
    for (const Ref<ListItem>& item : items_) {
        const std::string_view text = item->bytes();
        const bool isNumber = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
        if (!isNumber || text < former) return false;
        former = text;
    }
    return true;
}

size_t ListItemCollection::sortedPlace(const ListItem& item) const {
    const QByteArray own = sortText(item);
    const auto behind =
        std::upper_bound(items_.begin(), items_.end(), own, [this](const QByteArray& text, const Ref<ListItem>& other) {
            return text < sortText(*other);
        });
    return static_cast<size_t>(behind - items_.begin());
}

} // namespace mkl
