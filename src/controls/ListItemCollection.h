#pragma once
#include "controls/ItemStore.h"
#include "controls/ListItem.h"

namespace mkl {

class ListView;

/// The rows of a ListView in the order in which they show.
class ListItemCollection {
public:
    explicit ListItemCollection(ListView& list)
        : list_(list) {}
    ~ListItemCollection();
    ListItemCollection(const ListItemCollection&) = delete;
    ListItemCollection& operator=(const ListItemCollection&) = delete;

    Long Count() const { return items_.count(); }
    void Clear();

    /// index: the place from 1, Null for the last one; in a sorted list the order decides. Errors: 35601 for a place
    /// that does not exist, 35602 when the key exists.
    Ref<ListItem> Add(const Variant& index = {}, const QString& key = {}, const QString& text = {});
    /// Takes the row of that key or index out; error 35601 when there is none.
    void Remove(const Variant& index);
    /// The row of that key or index; error 35601 when there is none.
    Ref<ListItem> Item(const Variant& index) const;

    /// In the order of the list. Adding and removing ends the walk.
    auto begin() const { return sorted().begin(); }
    auto end() const { return sorted().end(); }

private:
    friend class ListItem;
    friend class ListModel;
    friend class ListView;

    const ItemStore<ListItem>& sorted() const;
    bool areNumbersInOrder() const;
    QByteArray sortText(const ListItem& item) const;
    size_t sortedPlace(const ListItem& item) const;

    ListView& list_;
    mutable ItemStore<ListItem> items_;
    mutable bool unsorted_ = false; // sorted() has to put the items in order
};

} // namespace mkl
